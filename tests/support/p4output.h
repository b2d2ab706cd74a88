// What the Perforce client prints, written after its published reference and reports of its users.
// Lines end in a line feed here.
#pragma once

#include <string_view>

namespace tarnwell::test
{

// p4 fstat -s -l //depot/dir/*
inline constexpr std::string_view fstatOutput = R"(... depotFile //depot/dir/a.txt
... headAction edit
... headType text+ko
... headTime 1243857600
... headRev 3
... headChange 12
... headModTime 1243857540
... fileSize 5
... digest 5D41402ABC4B2A76B9719D911017C592
... ... otherOpen0 bob@bobs-ws
... ... otherAction0 edit
... ... otherChange0 default
... ... otherOpen1 eve@eves-ws
... ... otherAction1 edit
... ... otherChange1 17
... ... ... deeper yet
... ... otherOpen 2

... fileSize 2147483648
... headRev 1
... isMapped 
... isMapped
... attr-what ever
... headTime 1243857601
... depotFile //depot/dir/big file%40home.bin
... headAction add
... headType binary+F

... depotFile //depot/dir/gone.txt
... headAction delete
... headType utf16
... headTime 1243857602
... headRev 2
... headChange 13

... depotFile //depot/dir/moved.txt
... headAction move/delete
... headType text
... headTime 1243857603
... headRev 7
... headChange 14
... headModTime 0

... depotFile //depot/dir/unsized.txt
... headAction branch
... headType apple
... headTime 1243857604
... headRev 1
... fileSize qd

)";

// p4 dirs //depot/*
inline constexpr std::string_view dirsOutput = R"(//depot/dir
/x
//depot/other dir%23
//depot/zzz - no such file(s).
)";

// p4 filelog -l -t //depot/dir/a.txt
inline constexpr std::string_view filelogOutput = R"(//depot/dir/a.txt
... #5 change 20 move/delete on 2010/01/02 03:04:05 by ann@ws (text+ko)

	moved away

... ... moved into //depot/other/a.txt#1
... #4 change 15 delete on 2009/12/31 23:59:59 by ann@ws (text)

	... #9 change 99 edit on 2009/06/01 12:00:00 by eve@ws (text)

... #3 change 12 edit on 2009/06/01 12:00:00 by ann@ws (text+ko)

	first	line
	... depotFile //not/a/field

	second
	... #9 change 99 edit on 2009/06/01 12:00:00 by eve@ws (text)

... ... copy from //depot/x/a.txt#1,#2
... ... branch into //depot/y/a.txt#1
... #2 change 11 integrate on 2009/05/31 00:00:00 by bob@bobs-ws (binary+F)


... #1 change 10 add on 2009/13/29 00:00:00 by ann@ws (utf16) 'not the format of -l'
)";

// p4 have //depot/dir/a.txt
inline constexpr std::string_view haveOutput = "//depot/dir/a.txt#3 - C:\\ws\\dir\\a.txt\n";

} // namespace tarnwell::test
