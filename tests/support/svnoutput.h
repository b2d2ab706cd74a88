// What the real Subversion client printed.
#pragma once

#include <string_view>

namespace tarnwell::test
{

// svn --xml list file:///r/trunk
inline constexpr std::string_view listOutput = R"(<?xml version="1.0" encoding="UTF-8"?>
<lists>
<list
   path="file:///r/trunk">
<entry
   kind="file">
<name>50%.txt</name>
<size>5000000000</size>
<commit
   revision="2">
<author>root</author>
<date>2026-11-21T08:54:34.911943Z</date>
</commit>
</entry>
<entry
   kind="file">
<name>a&amp;b &lt;c&gt; "d".txt</name>
<size>1</size>
<commit
   revision="4">
<author>Jörg &lt;j&amp;k&gt;</author>
<date>2026-11-21T08:54:35.209799Z</date>
</commit>
</entry>
<entry
   kind="dir">
<name>my dir</name>
<commit
   revision="2">
<author>root</author>
<date>2026-11-21T08:54:34.911943Z</date>
</commit>
</entry>
<entry
   kind="file">
<name>日本.txt</name>
<size>0</size>
<commit
   revision="3">
<date>2026-11-21T08:54:34.911943Z</date>
</commit>
</entry>
</list>
</lists>
)";

// The same of a folder without items.
inline constexpr std::string_view emptyListOutput = R"(<?xml version="1.0" encoding="UTF-8"?>
<lists>
<list
   path="http://127.0.0.1:8080/r/my%20dir">
</list>
</lists>
)";

// And of a file, which is locked.
inline constexpr std::string_view fileListOutput = R"(<?xml version="1.0" encoding="UTF-8"?>
<lists>
<list
   path="http://127.0.0.1:8080/r/a.txt">
<entry
   kind="file">
<name>a.txt</name>
<size>12</size>
<commit
   revision="7">
<author>root</author>
<date>2026-11-21T08:54:34.911943Z</date>
</commit>
<lock>
<token>opaquelocktoken:4d8d5d0a-9e8a-4d53-8f0c-8b0f3f0f6a11</token>
<owner>root</owner>
<created>2026-11-21T09:00:00.000000Z</created>
</lock>
</entry>
</list>
</lists>
)";

// svn --xml info file:///r/trunk/zero
inline constexpr std::string_view infoOutput = R"(<?xml version="1.0" encoding="UTF-8"?>
<info>
<entry
   size="0"
   path="zero"
   revision="4"
   kind="file">
<url>file:///r/trunk/zero</url>
<relative-url>^/trunk/zero</relative-url>
<repository>
<root>file:///r</root>
<uuid>b25946f2-c47c-4ab3-9765-c255eed8003e</uuid>
</repository>
<commit
   revision="2">
<author>root</author>
<date>2026-11-21T08:54:34.911943Z</date>
</commit>
</entry>
</info>
)";

// svn log -v --xml file:///r/trunk/a.txt
inline constexpr std::string_view logOutput = R"(<?xml version="1.0" encoding="UTF-8"?>
<log>
<logentry
   revision="4">
<author>Jörg &lt;j&amp;k&gt;</author>
<date>2026-11-21T08:54:35.209799Z</date>
<paths>
<path
   text-mods="false"
   kind="file"
   action="D"
   prop-mods="false">/trunk/a.txt</path>
</paths>
<msg></msg>
</logentry>
<logentry
   revision="3">
<author>root</author>
<date>2026-11-21T08:54:35.031892Z</date>
<paths>
<path
   action="M"
   prop-mods="false"
   text-mods="true"
   kind="file">/trunk/a.txt</path>
</paths>
<msg>second 日</msg>
</logentry>
<logentry
   revision="2">
<author>root</author>
<date>2026-11-21T08:54:34.911943Z</date>
<paths>
<path
   text-mods="true"
   kind="file"
   action="A"
   prop-mods="false">/trunk/a&amp;b &lt;c&gt; "d".txt</path>
</paths>
<msg>
line one
  line two &amp; &lt;tag&gt; ]]&gt;
	tabbed  
</msg>
</logentry>
</log>
)";

} // namespace tarnwell::test
