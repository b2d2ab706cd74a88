// What becomes of what the Perforce client prints.
#include "module/perforcetest.h"
#include "support/p4output.h"

namespace tarnwell::test
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class PerforceOutput : public PerforceClientTest
{
protected:
    PerforceOutput() : PerforceClientTest("only the stand-in prints what it is told to") {}
};

TEST_F(PerforceOutput, WhatRealServersPrintLosesNoItem)
{
    depot_.Print("fstat", fstatOutput);
    depot_.Print("dirs", dirsOutput);
    const auto items = List(folder_);
    ASSERT_THAT(items, SizeIs(7));
    EXPECT_EQ(items[0].path, u"p4:////depot/dir/a.txt#3");
    EXPECT_EQ(items[1].path, u"p4:////depot/dir/big file%40home.bin#1");
    EXPECT_EQ(items[1].size, 2147483647U);
    EXPECT_EQ(items[2].path, u"p4:////depot/dir/moved.txt#7") << "moved away, and without a size";
    EXPECT_EQ(items[5].path, u"p4:////depot/other dir%23");
    depot_.Print("filelog", filelogOutput);
    depot_.Print("have", haveOutput);
    const auto list = Revisions(address_);
    ASSERT_THAT(list, SizeIs(6));
    EXPECT_EQ(list[0].id, u"Working Copy");
    EXPECT_EQ(list[0].uri, u"C:\\ws\\dir\\a.txt");
    EXPECT_EQ(list[1].uri, u"p4:////depot/dir/a.txt#5");
    EXPECT_EQ(list[3].description.substr(0, 15), u"12: first line.");
    EXPECT_EQ(list[5].time, 0U);
}

TEST_F(PerforceOutput, FieldsOfOtherUsersDoNotMatter)
{
    for (const char* const tag : {"... otherOpen0 bob@ws", "... otherAction0 edit", "... ... x y",
                                  "... otherOpen 1", "isMapped", "shelved ", "headRev"})
        depot_.Tell("tag\t" + std::string(tag));
    const auto items = List(folder_);
    ASSERT_THAT(items, SizeIs(1));
    EXPECT_EQ(items[0].path, address_ + u"#1");
    EXPECT_EQ(items[0].size, 3U);
}

TEST_F(PerforceOutput, DescriptionsMayLookLikeAnything)
{
    depot_.Submit("a.txt", "two",
                  "... depotFile //x\n\n... #9 change 9 edit on 2009/06/01 12:00:00 by e@w (text)");
    depot_.Tell("note\t... ... copy from //depot/x#1");
    const auto list = Revisions(address_);
    ASSERT_THAT(list, SizeIs(2));
    EXPECT_EQ(list[0].id, u"2");
    EXPECT_EQ(list[0].description,
              u"2: ... depotFile //x... #9 change 9 edit on 2009/06/01 12:00:00 by e@w (text)");
    EXPECT_EQ(list[1].description, u"1: m");
}

TEST_F(PerforceOutput, SeveralHundredThousandLinesAreRead)
{
    constexpr std::size_t count = 50'000;
    std::string text;
    for (std::size_t i = 0; i < count; ++i)
        text += "... depotFile //depot/base/" + std::to_string(i) +
                "\n... headAction edit\n... headRev 2\n... ... otherOpen 1\n... fileSize 7\n\n";
    depot_.Print("fstat", text);
    ComPtr<IFolderContents> contents;
    ASSERT_EQ(Folder(folder_)->GetContents(contents.Out()), S_OK);
    std::uint32_t found = 0;
    contents->GetCount(&found);
    EXPECT_EQ(found, count);
}

TEST_F(PerforceOutput, AHaveThatNeverStopsTalkingEnds)
{
    std::string text = "//depot/base/a.txt#1 - /ws/a.txt\n";
    for (int i = 0; i < 100'000; ++i)
        text += "//depot/base/b.txt#1 - /ws/b.txt\n";
    depot_.Print("have", text);
    const auto list = Revisions(address_);
    ASSERT_THAT(list, SizeIs(2));
    EXPECT_EQ(list[0].uri, u"/ws/a.txt");
}

TEST_F(PerforceOutput, WithoutRevisionsThereIsTheWorkingCopy)
{
    depot_.Print("filelog", "//depot/base/a.txt\n");
    depot_.Print("have", "//depot/base/a.txt#1 - /ws/a.txt\n");
    const auto list = Revisions(address_);
    ASSERT_THAT(list, SizeIs(1));
    EXPECT_EQ(list[0].id, u"Working Copy");
    EXPECT_TRUE(HasRevisions(address_));
}

TEST_F(PerforceOutput, AnEmptyReportAsksForTheRootsFile)
{
    depot_.Print("filelog", "");
    EXPECT_THAT(Revisions(address_), IsEmpty());
    EXPECT_EQ(depot_.TakeRuns().at(1), "have|//");
    EXPECT_THAT(Revisions(u"p4://u@server///depot/base/a.txt"), IsEmpty());
    EXPECT_EQ(depot_.TakeRuns().at(1), "-u|u|-p|server|have|//");
}

TEST_F(PerforceOutput, NamesThatCannotBeAddressesLoseOnlyThemselves)
{
    depot_.Print("fstat", "... depotFile //depot/a\rb\n\n... depotFile //depot/c\n\n");
    ComPtr<IFolderContents> contents;
    ASSERT_EQ(Folder(folder_)->GetContents(contents.Out()), S_OK);
    ComPtr<IFileSystemItem> item;
    EXPECT_EQ(contents->GetItem(0, item.Out()), E_INVALIDARG);
    EXPECT_EQ(contents->GetItem(1, item.Out()), S_OK);
}

TEST_F(PerforceOutput, NamesAreACharacterForEachByte)
{
    depot_.Print("fstat", "... depotFile //depot/\xC3\xA4\xFF\n... headRev 1\n\n");
    depot_.Print("dirs", "//depot/\xE6\x97\xA5\n");
    const auto items = List(folder_);
    ASSERT_THAT(items, SizeIs(2));
    EXPECT_EQ(items[0].path, u"p4:////depot/\u00c3\u00a4\u00ff#1");
    EXPECT_EQ(items[1].path, u"p4:////depot/\u00e6\u0097\u00a5");
}

TEST_F(PerforceOutput, OfSeveralAnswersTheFirstCounts)
{
    depot_.Print("fstat", "... depotFile //depot/base/a.txt\n... fileSize 1\n\n"
                          "... depotFile //depot/base/b.txt\n... fileSize 2\n\n");
    EXPECT_EQ(FileFacts(address_).size, 1U);
}

TEST_F(PerforceOutput, NumbersHave32Bits)
{
    depot_.Print("fstat", "... depotFile //depot/a\n... headRev 99999999999\n"
                          "... fileSize 2147483648\n... headTime 99999999999\n\n");
    const auto items = List(folder_);
    ASSERT_THAT(items, SizeIs(1));
    EXPECT_EQ(items[0].path, u"p4:////depot/a#2147483647");
    EXPECT_EQ(items[0].size, 2147483647U);
    EXPECT_EQ(items[0].time, 116444736000000000U + 2147483647U * std::uint64_t{10000000});
}

TEST_F(PerforceOutput, ThePathOfAWorkingCopyIsACharacterForEachByte)
{
    depot_.Print("have", "//depot/base/a.txt#1 - /ws/\xC3\xA4 - #b/a.txt\n");
    const auto list = Revisions(address_);
    ASSERT_THAT(list, SizeIs(2));
    EXPECT_EQ(list[0].uri, u"/ws/\u00c3\u00a4 - #b/a.txt");
}

TEST_F(PerforceOutput, AFirstLineThatTellsNoPathIsNoWorkingCopy)
{
    depot_.Print("have", "something else\n//depot/base/a.txt#1 - /ws/a.txt\n");
    EXPECT_THAT(Revisions(address_), SizeIs(1));
}

TEST_F(PerforceOutput, AFolderHandsItsLabelToItsFolders)
{
    depot_.Print("dirs", "//depot/base/sub\n");
    const auto items = List(folder_ + u"@rel 1.0");
    ASSERT_FALSE(items.empty());
    EXPECT_EQ(items.back().path, folder_ + u"/sub@rel 1.0");
}

} // namespace
} // namespace tarnwell::test
