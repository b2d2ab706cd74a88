// What the Perforce client is asked, and with what: on the stand-in for it.
#include "module/perforcetest.h"

#include <tarnwell/text.h>

namespace tarnwell::test
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class PerforceRuns : public PerforceClientTest
{
protected:
    PerforceRuns() : PerforceClientTest("only the stand-in tells how it was called") {}
};

TEST_F(PerforceRuns, AFolderAndAnItemCostTwoRunsEach)
{
    List(folder_);
    EXPECT_THAT(depot_.TakeRuns(),
                ElementsAre("fstat|-s|-l|//depot/base/*", "dirs|//depot/base/*"));
    List(folder_ + u"@12");
    EXPECT_THAT(depot_.TakeRuns(),
                ElementsAre("fstat|-s|-l|//depot/base/*@12", "dirs|//depot/base/*@12"));
    List(folder_ + u"//@12");
    EXPECT_THAT(depot_.TakeRuns(),
                ElementsAre("fstat|-s|-l|//depot/base//*@12", "dirs|//depot/base//*@12"))
        << "only slashes at the very end are left out";
    FileFacts(address_ + u"#1");
    EXPECT_THAT(depot_.TakeRuns(),
                ElementsAre("fstat|-s|-l|//depot/base/a.txt#1", "dirs|//depot/base/a.txt#1"));
    List(u"p4://");
    EXPECT_THAT(depot_.TakeRuns(), ElementsAre("fstat|-s|-l|//*", "dirs|//*"));
}

TEST_F(PerforceRuns, AHistoryCostsTwoRuns)
{
    Revisions(address_ + u"#1");
    EXPECT_THAT(depot_.TakeRuns(),
                ElementsAre("filelog|-l|-t|//depot/base/a.txt", "have|//depot/base/a.txt"));
    Revisions(address_ + u"@12#3");
    EXPECT_THAT(depot_.TakeRuns(),
                ElementsAre("filelog|-l|-t|//depot/base/a.txt@12", "have|//depot/base/a.txt"))
        << "the last mark begins the revision";
    Revisions(u"p4://depot/base/a.txt//");
    EXPECT_THAT(depot_.TakeRuns(),
                ElementsAre("filelog|-l|-t|//depot/base/a.txt", "have|//depot/base/a.txt"));
}

TEST_F(PerforceRuns, ContentGoesIntoATemporaryFile)
{
    EXPECT_EQ(Content(address_ + u"#1"), "one");
    const std::vector<std::string> runs = depot_.TakeRuns();
    ASSERT_THAT(runs, SizeIs(1));
    const std::string target = TargetOf(runs[0]);
    EXPECT_EQ(runs[0], "print|-o|" + target + "|-q|//depot/base/a.txt#1");
    EXPECT_NE(target.find("vrl"), std::string::npos);
    EXPECT_EQ(target.find(EncodeName(temporary_.Text()).value()), 0U);
}

TEST_F(PerforceRuns, WithoutAStreamToFillTheContentIsFetchedForNothing)
{
    EXPECT_EQ(File(address_)->Open(readAccess, openExisting, nullptr), S_OK);
    EXPECT_THAT(depot_.TakeRuns(), SizeIs(1));
    EXPECT_EQ(File(folder_ + u"/none")->Open(readAccess, openExisting, nullptr), Win32Status(2));
}

TEST_F(PerforceRuns, AreGivenTheCredentialsOfTheAddress)
{
    depot_.Tell("port\tserver:1666");
    depot_.Tell("user\tann\tse cret");
    EXPECT_EQ(Content(u"p4://ann:se cret@server:1666///depot/base/a.txt"), "one");
    EXPECT_EQ(TargetOf(depot_.Runs()[0]).empty(), false);
    EXPECT_TRUE(depot_.TakeRuns()[0].starts_with("-u|ann|-P|se cret|-p|server:1666|print|-o|"));
    depot_.Submit("sub/b.txt", "b");
    const auto items = List(u"p4://ann:se cret@server:1666///depot/base");
    ASSERT_THAT(items, SizeIs(2));
    EXPECT_EQ(items[0].path, u"p4://ann:se cret@server:1666///depot/base/a.txt#1");
    EXPECT_EQ(items[1].path, u"p4://ann:se cret@server:1666///depot/base/sub");
    const auto list = Revisions(items[0].path);
    ASSERT_THAT(list, SizeIs(1));
    EXPECT_EQ(list[0].uri, u"p4://ann:se cret@server:1666///depot/base/a.txt#1");
    EXPECT_THAT(host_->Calls(), IsEmpty());
}

TEST_F(PerforceRuns, AreGivenTheCredentialsOfTheHost)
{
    depot_.Tell("port\tserver:1666");
    depot_.Tell("user\tann\tsecret");
    host_->credentials = {S_OK, u"ann", u"secret", u"server:1666"};
    EXPECT_EQ(Content(address_), "one");
    EXPECT_EQ(Content(u"p4://bob:*@other///depot/base/a.txt"), "one");
    EXPECT_THAT(host_->Calls(), ElementsAre(u"GetCredentials|1||", u"GetCredentials|1|other|bob"));
    host_->credentials = {S_OK, u"", u"secret", std::nullopt};
    EXPECT_EQ(FailedOpen(address_).status, E_FAIL) << "a password alone is nobody's";
    EXPECT_TRUE(depot_.Runs().back().starts_with("print|"));
}

TEST_F(PerforceRuns, ItemsOfAServerWithoutAUserLoseIt)
{
    depot_.Tell("port\tserver");
    const auto items = List(u"p4://@server///depot/base");
    EXPECT_EQ(depot_.TakeRuns()[0], "-p|server|fstat|-s|-l|//depot/base/*");
    ASSERT_THAT(items, SizeIs(1));
    EXPECT_EQ(items[0].path, u"p4://server///depot/base/a.txt#1");
}

TEST_F(PerforceRuns, AnAuthorityAsksForThreeSlashes)
{
    EXPECT_THAT(List(u"p4://u@server//depot/base"), IsEmpty());
    EXPECT_EQ(depot_.TakeRuns()[0], "-u|u|-p|server|fstat|-s|-l|///depot/base/*");
}

TEST_F(PerforceRuns, AValueIsOneArgumentWhateverIsInIt)
{
    Fail("*", "silent");
    for (const auto& [path, argument] :
         {std::pair{u"a\"b", "a\"b"}, std::pair{u"a\" -x \"b", "a\" -x \"b"},
          std::pair{u"a\\", "a\\"}, std::pair{u"a\\\" c", "a\\\" c"}, std::pair{u" ", " "}})
    {
        const std::u16string whole = u"p4://u\\:p\"@s\\///depot/" + std::u16string(path);
        const std::string spec = "//depot/" + std::string(argument);
        const std::string options = "-u|u\\|-P|p\"|-p|s\\|";
        EXPECT_EQ(Content(whole), "");
        EXPECT_TRUE(depot_.Runs()[0].ends_with("|-q|" + spec));
        EXPECT_TRUE(depot_.TakeRuns()[0].starts_with(options + "print|-o|"));
        Revisions(whole);
        EXPECT_EQ(depot_.TakeRuns()[0], options + "filelog|-l|-t|" + spec);
        List(whole);
        EXPECT_THAT(depot_.TakeRuns(), ElementsAre(options + "fstat|-s|-l|" + spec + "/*",
                                                   options + "dirs|" + spec + "/*"));
    }
}

// Where the client hasn't encoded it.
TEST_F(PerforceRuns, AMarkInANameBeginsARevision)
{
    Fail("*", "silent");
    Revisions(folder_ + u"/b#c.txt");
    EXPECT_EQ(depot_.TakeRuns().at(0), "filelog|-l|-t|//depot/base/b");
    List(folder_ + u"/b@c");
    EXPECT_THAT(depot_.TakeRuns(),
                ElementsAre("fstat|-s|-l|//depot/base/b/*@c", "dirs|//depot/base/b/*@c"));
    Content(folder_ + u"/b#c.txt");
    EXPECT_TRUE(depot_.TakeRuns().at(0).ends_with("|-q|//depot/base/b#c.txt"));
}

// Only a listing, an item and a history leave slashes at the end out.
TEST_F(PerforceRuns, SlashesAtTheEndStayWhereTheContentAndTheWorkingCopyAreAskedFor)
{
    FailedOpen(address_ + u"//");
    EXPECT_TRUE(depot_.TakeRuns().at(0).ends_with("|-q|//depot/base/a.txt//"));
    depot_.Print("filelog", "//depot/base/a.txt//\n");
    Revisions(address_);
    EXPECT_EQ(depot_.TakeRuns().at(1), "have|//depot/base/a.txt//");
}

TEST_F(PerforceRuns, CredentialsAreAskedForAtEachOfThem)
{
    host_->credentials = {S_OK, u"ann", u"secret", u"server"};
    const auto asked = [&] {
        return static_cast<std::size_t>(std::ranges::count(host_->Calls(), u"GetCredentials|1||"));
    };
    List(folder_);
    EXPECT_EQ(asked(), 2U);
    Content(address_);
    EXPECT_EQ(asked(), 3U);
    Content(address_);
    EXPECT_EQ(asked(), 4U);
    Revisions(address_);
    EXPECT_EQ(asked(), 6U);
    for (const std::string& run : depot_.Runs())
        EXPECT_TRUE(run.starts_with("-u|ann|-P|secret|-p|server|"));
}

TEST_F(PerforceRuns, NamesThatAreTypedReachTheClient)
{
    FailedOpen(folder_ + u"/\u00e4\u65e5.txt");
    EXPECT_TRUE(depot_.TakeRuns().at(0).ends_with("//depot/base/\xC3\xA4\xE6\x97\xA5.txt"));
}

} // namespace
} // namespace tarnwell::test
