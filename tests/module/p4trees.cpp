// Perforce's trees, on the stand-in for its client: what the suites over all file systems don't
// know of.
#include "module/p4historytest.h"
#include "support/fakeprogress.h"
#include "support/perforce/records.h"

#include <tarnwell/text.h>

namespace tarnwell::test
{
namespace
{

using testing::ElementsAre;
using testing::HasSubstr;
using testing::UnorderedElementsAre;

using P4Trees = P4Histories;

TEST_F(P4Trees, StayAsTheyWereWhateverIsSubmittedMeanwhile)
{
    const auto tree = Tree(folder_);
    EXPECT_EQ(IdOf(tree), u"1");
    depot_.Submit("a.txt", "two");
    depot_.Submit("b.txt", "new");
    EXPECT_EQ(ContentOf(tree, u"a.txt"), "one");
    EXPECT_THAT(NamesOf(ListOf(tree, u"", true)), ElementsAre(u"a.txt"));
    EXPECT_EQ(IdOf(Tree(folder_)), u"3");
}

TEST_F(P4Trees, AskInWordsThatNothingCanBeIn)
{
    depot_.TakeRuns();
    const auto tree = Tree(folder_ + u"/");
    const std::string start = "-G|-z|tag|-x|-|";
    EXPECT_THAT(depot_.TakeRuns(), ElementsAre(start + "changes|-s|submitted|-m|1|<//...",
                                               start + "dirs|<//depot/base@1"));
    EXPECT_EQ(ContentOf(tree, u"a.txt"), "one");
    const std::string facts =
        start + "fstat|-Ol|-T|depotFile,headAction,headType,fileSize,digest|<";
    EXPECT_THAT(depot_.TakeRuns(), ElementsAre(facts + "//depot/base/a.txt@1",
                                               start + "print|-q|<//depot/base/a.txt@1"));
    ListOf(tree, u"", false);
    EXPECT_THAT(depot_.TakeRuns(),
                ElementsAre(facts + "//depot/base/*@1", start + "dirs|<//depot/base/*@1"));
    ListOf(tree, u"", true);
    EXPECT_THAT(depot_.TakeRuns(), ElementsAre(facts + "//depot/base/...@1"));
}

TEST_F(P4Trees, OfLabelsAreTheRevisionsThatTheyHave)
{
    depot_.Tell("labelled\tchosen\t1");
    depot_.Submit("a.txt", "two");
    depot_.Submit("b.txt", "not labelled");
    const auto tree = Tree(folder_, u"chosen");
    EXPECT_THAT(NamesOf(ListOf(tree, u"", true)), ElementsAre(u"a.txt"));
    EXPECT_EQ(ContentOf(tree, u"a.txt"), "one");
    EXPECT_EQ(IdOf(tree), u"1") << "the latest change in it";
    EXPECT_EQ(TreeStatus(folder_, u"nosuch"), HistoryNoRevision);
}

TEST_F(P4Trees, RevisionsOfFilesChangesDaysAndWhatOneHas)
{
    depot_.Sync("a.txt");
    depot_.Submit("a.txt", "two");
    depot_.Submit("b.txt", "of another");
    EXPECT_EQ(ContentOf(Tree(address_ + u"#1")), "one");
    EXPECT_EQ(IdOf(Tree(address_ + u"#1")), u"1");
    EXPECT_EQ(ContentOf(Tree(address_ + u"@2")), "two");
    EXPECT_EQ(ContentOf(Tree(address_, u"have")), "one");
    EXPECT_EQ(ContentOf(Tree(address_, u"2024/03/05:10:15:31")), "one");
    EXPECT_EQ(IdOf(Tree(address_, u"2024/03/05:10:15:32")), u"2");
    EXPECT_THAT(NamesOf(ListOf(Tree(folder_ + u"@=3"), u"", true)), ElementsAre(u"b.txt"));
    EXPECT_EQ(TreeStatus(address_, u"#9"), HistoryNoRevision);
    EXPECT_EQ(TreeStatus(address_, u"9"), HistoryNoRevision);
    EXPECT_EQ(TreeStatus(folder_ + u"/none", u"#1"), HistoryNoPath);
    EXPECT_EQ(TreeStatus(folder_ + u"/b.txt", u"1"), HistoryNoPath);
}

TEST_F(P4Trees, OfAllDepots)
{
    depot_.AddRevision("//other/c.txt", "1\t7\tadd\t1709700000\tbob@ws2\ttext", "c");
    for (const char16_t* const all : {u"p4:////", u"p4://"})
    {
        const auto tree = Tree(all);
        EXPECT_EQ(IdOf(tree), u"7");
        EXPECT_THAT(NamesOf(ListOf(tree, u"", false)), UnorderedElementsAre(u"depot", u"other"));
        EXPECT_THAT(NamesOf(ListOf(tree, u"", true)),
                    UnorderedElementsAre(u"depot", u"depot/base", u"depot/base/a.txt", u"other",
                                         u"other/c.txt"));
        EXPECT_EQ(ContentOf(tree, u"other/c.txt"), "c");
    }
}

// Byte for byte as it was recorded.
TEST_F(P4Trees, KeywordsAreNotReplaced)
{
    depot_.SubmitAs("text+k", "k.txt", "$Id$ and more");
    depot_.SubmitAs("kxtext", "old.txt", "$Id$");
    const auto tree = Tree(folder_);
    depot_.TakeRuns();
    EXPECT_EQ(ContentOf(tree, u"k.txt"), "$Id$ and more");
    EXPECT_THAT(depot_.TakeRuns()[1], HasSubstr("|print|-q|-k|"));
    EXPECT_EQ(ContentOf(tree, u"old.txt"), "$Id$");
    TreeSink sink;
    EXPECT_EQ(tree->Find(Ole(std::u16string(u"old.txt")), &sink), S_OK);
    EXPECT_EQ(sink.entries.at(0).flags, TreeItemExecutable | TreeItemKeywords | TreeItemLineEnds);
}

TEST_F(P4Trees, ALinksPathHasNoLineFeedAtItsEnd)
{
    depot_.SubmitAs("symlink", "link", "../to\n");
    EXPECT_EQ(ContentOf(Tree(folder_), u"link"), "../to");
    depot_.SubmitAs("symlink", "long", std::string(100'000, 'x'));
    ComPtr<IFileStream> stream;
    EXPECT_EQ(Tree(folder_)->Open(Ole(std::u16string(u"long")), nullptr, stream.Out()),
              HistoryBadAnswer);
}

TEST_F(P4Trees, ContentsTellHowMuchThereIs)
{
    const auto tree = Tree(folder_);
    FakeAmounts host;
    ComPtr<IFileStream> stream;
    EXPECT_EQ(tree->Open(Ole(std::u16string(u"a.txt")), &host, stream.Out()), S_OK);
    const std::uint64_t size = ReadAll(stream).size();
    EXPECT_GT(size, 0U);
    EXPECT_EQ(host.Told().back(), (FakeAmounts::Amount{size, size}));
}

TEST_F(P4Trees, ContentsThatCantBeHadFail)
{
    const auto tree = Tree(folder_);
    depot_.PrintBytes("print", "");
    ComPtr<IFileStream> stream;
    EXPECT_EQ(tree->Open(Ole(std::u16string(u"a.txt")), nullptr, stream.Out()), HistoryBadAnswer);
    EXPECT_FALSE(stream);
    Fail("print", "late");
    EXPECT_EQ(tree->Open(Ole(std::u16string(u"a.txt")), nullptr, stream.Out()),
              HistoryClientFailed);
}

TEST_F(P4Trees, ContentsThatEndEarlyBesideAWarningFail)
{
    const auto tree = Tree(folder_);
    const auto open = [&](const std::string& bytes, const std::string& behind) {
        depot_.PrintBytes("print", perforce::Marshalled("text", {{"data", bytes}}) + behind);
        ComPtr<IFileStream> stream;
        return tree->Open(Ole(std::u16string(u"a.txt")), nullptr, stream.Out());
    };
    constexpr int warned = 2;
    const std::string warning = perforce::Complaint(warned, 0, "the archive is damaged\n");
    EXPECT_EQ(open("on", warning), HistoryBadAnswer);
    EXPECT_EQ(open("", {}), HistoryBadAnswer);
    EXPECT_EQ(open("one", warning), S_OK) << "all of it has come";
    EXPECT_EQ(open("on", {}), S_OK) << "a character set may make it shorter";
}

// A server may send what it likes.
TEST_F(P4Trees, NamesThatLeadOutAreNotListed)
{
    const auto tree = Tree(folder_);
    const auto text = [](const std::string& bytes) {
        return "s" + std::string(1, static_cast<char>(bytes.size())) + std::string(3, '\0') + bytes;
    };
    for (const std::string name :
         {"//depot/base/../x", "//depot/other", "//depot/base/", "//depot/base//x"})
    {
        depot_.PrintBytes("fstat", "{" + text("code") + text("stat") + text("depotFile") +
                                       text(name) + text("headAction") + text("add") + "0");
        for (const VARIANT_BOOL recursive : {VARIANT_FALSE, VARIANT_TRUE})
        {
            TreeSink sink;
            EXPECT_EQ(tree->List(nullptr, recursive, &sink), HistoryBadAnswer) << name;
            EXPECT_TRUE(sink.entries.empty());
        }
    }
}

TEST_F(P4Trees, AreCancelledWhileTheServerIsSilent)
{
    const auto tree = Tree(folder_);
    Fail("*", "hang");
    TreeSink sink;
    int questions = 0;
    sink.wantsMore = [&] {
        return ++questions % 5 != 0;
    };
    ComPtr<ITree> none;
    EXPECT_EQ(OpenTree(folder_, none, {}, &sink).status, E_ABORT);
    EXPECT_EQ(tree->List(nullptr, VARIANT_TRUE, &sink), E_ABORT);
    EXPECT_EQ(tree->Find(Ole(std::u16string(u"a.txt")), &sink), E_ABORT);
    ComPtr<IFileStream> stream;
    EXPECT_EQ(tree->Open(Ole(std::u16string(u"a.txt")), &sink, stream.Out()), E_ABORT);
}

TEST_F(P4Trees, PasswordsAreInTheEnvironmentOnly)
{
    depot_.Tell("user\tann\tsecret");
    depot_.TakeRuns();
    const auto tree = Tree(u"p4://ann:secret@server:1666///depot/base");
    EXPECT_EQ(ContentOf(tree, u"a.txt"), "one");
    for (const std::string& run : depot_.TakeRuns())
        EXPECT_EQ(run.find("secret"), std::string::npos) << run;
}

} // namespace
} // namespace tarnwell::test
