// Perforce's histories told in full, on the stand-in for its client.
#include "module/p4historytest.h"

#include "support/perforce/records.h"

#include <tarnwell/text.h>

#include <fstream>
#include <iterator>

namespace tarnwell::test
{
namespace
{

using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

TEST_F(P4Histories, OfAFileHaveAllFacts)
{
    depot_.Submit("a.txt", "two", "second\n\n\twith a tab");
    const auto entries = History(address_);
    ASSERT_EQ(entries.size(), 2U);
    EXPECT_EQ(entries[0].id, u"2");
    EXPECT_EQ(entries[0].author, u"ann@ws");
    EXPECT_EQ(entries[0].description, u"second\n\n\twith a tab");
    EXPECT_EQ(entries[0].address, address_ + u"#2");
    EXPECT_EQ(entries[0].path, u"depot/base/a.txt");
    EXPECT_EQ(entries[0].time, 133541073320000000U);
    EXPECT_EQ(entries[0].modified, entries[0].time);
    EXPECT_EQ(Content(entries[1].address), "one");
}

TEST_F(P4Histories, OfFoldersAndOfAllDepots)
{
    depot_.Submit("sub/b.txt", "1", "in sub");
    depot_.AddRevision("//other/c.txt", "1\t7\tadd\t1709700000\tbob@ws2\ttext", "1");
    depot_.Tell("desc\telsewhere");
    for (const std::uint32_t flags : {0U, std::uint32_t{HistoryFollow}})
    {
        EXPECT_THAT(Descriptions(folder_, Wanted(flags)), ElementsAre(u"in sub", u"m"));
        EXPECT_THAT(Descriptions(folder_ + u"/", Wanted(flags)), ElementsAre(u"in sub", u"m"));
        EXPECT_THAT(Descriptions(folder_ + u"/sub", Wanted(flags)), ElementsAre(u"in sub"));
        for (const char16_t* const all : {u"p4:////", u"p4://"})
            EXPECT_THAT(Descriptions(all, Wanted(flags)),
                        ElementsAre(u"elsewhere", u"in sub", u"m"));
    }
    const auto entries = History(folder_);
    EXPECT_EQ(entries[0].id, u"2");
    EXPECT_EQ(entries[0].address, folder_ + u"@2");
    EXPECT_EQ(entries[0].path, u"depot/base");
    EXPECT_EQ(History(u"p4:////")[0].path, u"");
}

// Names of items never are names of others, whatever they begin with.
TEST_F(P4Histories, OfAFolderDoNotHaveThoseBesideIt)
{
    depot_.Submit("sub/b.txt", "1", "inside");
    depot_.Submit("sub2/b.txt", "1", "beside");
    EXPECT_THAT(Descriptions(folder_ + u"/sub"), ElementsAre(u"inside"));
}

TEST_F(P4Histories, AskTheClientInWordsThatNothingCanBeIn)
{
    EXPECT_THAT(RunsOf(address_), ElementsAre("-G|-z|tag|-x|-|filelog|-l|<//depot/base/a.txt"));
    EXPECT_THAT(RunsOf(address_, Wanted(HistoryFollow, 2, 3)),
                ElementsAre("-G|-z|tag|-x|-|filelog|-i|-l|-m|5|<//depot/base/a.txt"));
    EXPECT_THAT(RunsOf(folder_ + u"/", Wanted(0, 0, 7)),
                ElementsAre("-G|-z|tag|-x|-|changes|-s|submitted|-l|-m|7|<//depot/base/..."));
    EXPECT_THAT(RunsOf(folder_ + u"/", Wanted(0, UINT32_MAX, UINT32_MAX))[0],
                HasSubstr("|-m|2147483647|"));
    EXPECT_THAT(RunsOf(u"p4://ann@server:1666///depot/base/a.txt#1"),
                ElementsAre("-G|-z|tag|-u|ann|-p|server:1666|-x|-|filelog|-l|"
                            "<//depot/base/a.txt#1"));
    // What is newer than wanted isn't counted by the client.
    HistoryOptions options = Wanted(0, 0, 1);
    options.until = 133541073310000000U;
    EXPECT_THAT(RunsOf(address_, options)[0], Not(HasSubstr("-m")));
}

TEST_F(P4Histories, FollowAFileThroughItsNames)
{
    depot_.AddRevision("//depot/base/old.txt", "1\t10\tadd\t1709700000\tann@ws\ttext", "1");
    depot_.Tell("desc\tmade");
    depot_.AddRevision("//depot/base/old.txt", "2\t11\tmove/delete\t1709700100\tann@ws\ttext", "");
    depot_.Tell("desc\trenamed");
    depot_.AddRevision("//depot/base/new%40.txt", "1\t11\tmove/add\t1709700100\tann@ws\ttext", "1");
    depot_.Tell("desc\trenamed");
    depot_.Tell("from\t//depot/base/old.txt\t1");
    depot_.AddRevision("//depot/base/branch.txt", "1\t12\tbranch\t1709700200\tann@ws\ttext", "1");
    depot_.Tell("desc\tbranched");
    depot_.Tell("from\t//depot/base/new%40.txt\t1");

    const std::u16string moved = folder_ + u"/new%40.txt";
    EXPECT_THAT(Descriptions(moved), ElementsAre(u"renamed"));
    const auto entries = History(moved, Wanted(HistoryFollow));
    ASSERT_EQ(entries.size(), 2U);
    EXPECT_EQ(entries[0].path, u"depot/base/new@.txt");
    EXPECT_EQ(entries[0].address, moved + u"#1");
    EXPECT_EQ(entries[1].path, u"depot/base/old.txt");
    EXPECT_EQ(entries[1].description, u"made");
    EXPECT_EQ(entries[1].address, folder_ + u"/old.txt#1");
    EXPECT_THAT(Descriptions(folder_ + u"/branch.txt"), ElementsAre(u"branched"));
    EXPECT_THAT(Descriptions(folder_ + u"/branch.txt", Wanted(HistoryFollow)),
                ElementsAre(u"branched", u"renamed", u"made"));
    EXPECT_THAT(Descriptions(folder_ + u"/branch.txt", Wanted(HistoryFollow, 1, 1)),
                ElementsAre(u"renamed"));
    // A page that ends in an earlier name.
    EXPECT_THAT(Descriptions(folder_ + u"/branch.txt", Wanted(HistoryFollow, 2, 1)),
                ElementsAre(u"made"));
}

TEST_F(P4Histories, OfWhatIsGone)
{
    depot_.Remove("a.txt");
    EXPECT_THAT(Descriptions(address_), ElementsAre(u"removed", u"m"));
    EXPECT_THAT(Descriptions(folder_), ElementsAre(u"removed", u"m"));
}

TEST_F(P4Histories, RevisionsAreNumbersChangesLabelsDaysAndWhatOneHas)
{
    depot_.Submit("b.txt", "1", "of another");
    depot_.Submit("a.txt", "two", "second");
    depot_.Submit("a.txt", "three", "third");
    depot_.Tell("label\tv1.0\t3");
    depot_.Tell("labelled\tSet-2\t2");
    for (const char16_t* const revision :
         {u"#2", u"@3", u"3", u"@v1.0", u"v1.0", u"@2024/03/05:10:15:33", u"2024/03/05:10:15:33"})
    {
        EXPECT_THAT(Descriptions(address_, Wanted(), revision), ElementsAre(u"second", u"m"))
            << testing::PrintToString(revision);
    }
    EXPECT_THAT(Descriptions(address_ + u"#2"), ElementsAre(u"second", u"m"));
    EXPECT_THAT(Descriptions(address_ + u"@v1.0"), ElementsAre(u"second", u"m"));
    EXPECT_THAT(Descriptions(address_ + u"@=3"), ElementsAre(u"second"));
    EXPECT_THAT(Descriptions(address_, Wanted(), u"=3"), ElementsAre(u"second"));
    EXPECT_THAT(Descriptions(folder_ + u"@2"), ElementsAre(u"of another", u"m"));
    EXPECT_THAT(Descriptions(address_ + u"#head"), ElementsAre(u"third", u"second", u"m"));
    EXPECT_THAT(Descriptions(address_ + u"#"), ElementsAre(u"third", u"second", u"m"));
    depot_.Sync("a.txt");
    depot_.Submit("a.txt", "four", "fourth");
    EXPECT_THAT(Descriptions(address_, Wanted(), u"have"), ElementsAre(u"third", u"second", u"m"));
}

TEST_F(P4Histories, RevisionsThatArentThereSaySo)
{
    for (const char16_t* const revision :
         {u"#9",    u"@9",    u"9",   u"@nosuch", u"#x",   u"#nosuch", u"1,2",
          u"@1,@2", u"#1,#2", u"@>1", u"a%b",     u"*",    u"a...",    u" a",
          u"a ",    u"@",     u"\n",  u"@a\nb",   u"@a@b", u"a#b",     u"=x"})
        EXPECT_EQ(ReadStatus(address_, revision), HistoryNoRevision)
            << testing::PrintToString(revision);
    EXPECT_EQ(ReadStatus(address_ + u"#9"), HistoryNoRevision);
    EXPECT_EQ(ReadStatus(address_ + u"@nosuch"), HistoryNoRevision);
    EXPECT_EQ(ReadStatus(folder_ + u"@9"), HistoryNoRevision);
    EXPECT_EQ(ReadStatus(folder_, u"@9"), HistoryNoRevision);
}

// A change in which the item wasn't changed is one all the same.
TEST_F(P4Histories, BeginAtChangesOfOtherItems)
{
    depot_.Submit("b.txt", "1", "of another");
    EXPECT_THAT(Descriptions(address_ + u"@2"), ElementsAre(u"m"));
    EXPECT_THAT(RunsOf(address_ + u"@2"),
                ElementsAre(HasSubstr("filelog"), "-G|-z|tag|-x|-|changes|-s|submitted|-m|1|"
                                                  "<//...@2,@2"));
    EXPECT_THAT(RunsOf(address_ + u"@1"), ElementsAre(HasSubstr("filelog")));
}

TEST_F(P4Histories, NamesAreNoPatternsAndNoRevisions)
{
    depot_.Submit("x%40y%23z%25w%2A.txt", "1", "encoded");
    depot_.Submit("xy.txt", "1", "found by a pattern");
    const auto entries = History(folder_ + u"/x%40y%23z%25w%2A.txt");
    ASSERT_EQ(entries.size(), 1U);
    EXPECT_EQ(entries[0].path, u"depot/base/x@y#z%w*.txt");
    EXPECT_EQ(Content(entries[0].address), "1");
    // With a revision all of the address is a name.
    EXPECT_THAT(Descriptions(folder_ + u"/x@y#z%w*.txt", Wanted(), u"#head"),
                ElementsAre(u"encoded"));
    for (const char16_t* const name :
         {u"x*.txt", u"*", u"...", u"x...", u"%%1", u"x\\u0001", u"..", u".", u"sub//x", u"-i"})
        EXPECT_EQ(ReadStatus(folder_ + u"/" + name, u""), HistoryNoPath)
            << testing::PrintToString(name);
    EXPECT_EQ(ReadStatus(u"p4:///depot/base/a.txt"), HistoryNoPath) << "one slash names nothing";
}

// As the prescribed listings have them on Linux: each byte a character.
TEST_F(P4Histories, NamesInUtf8AreTakenAsTheyAreListedAndAsTheyAreTyped)
{
    depot_.Submit("\xC3\xA4.txt", "1", "umlaut");
    for (const char16_t* const name : {u"\u00e4.txt", u"\u00c3\u00a4.txt"})
    {
        const auto entries = History(folder_ + u"/" + name);
        ASSERT_EQ(entries.size(), 1U);
        EXPECT_EQ(entries[0].path, u"depot/base/\u00e4.txt");
    }
}

TEST_F(P4Histories, PasswordsAreInTheEnvironmentOnly)
{
    depot_.Tell("user\tann\tsecret word");
    const std::u16string address = u"p4://ann:secret word@server///depot/base/a.txt";
    EXPECT_THAT(Descriptions(address), ElementsAre(u"m"));
    EXPECT_THAT(RunsOf(address), Each(Not(HasSubstr("secret"))));
#ifdef _WIN32
    EXPECT_THAT(depot_.CommandLine(), Not(HasSubstr("secret")));
#endif
    host_->credentials = {S_OK, u"ann", u"secret word", u"server"};
    EXPECT_THAT(Descriptions(address_), ElementsAre(u"m"));
}

TEST_F(P4Histories, RefusedCredentialsAreToldToTheHost)
{
    depot_.Tell("user\tann\tsecret");
    EXPECT_EQ(ReadStatus(u"p4://ann:wrong@server///depot/base/a.txt"), E_ACCESSDENIED);
    EXPECT_EQ(ReadStatus(u"p4://bob:x@server///depot/base/a.txt"), E_ACCESSDENIED);
    const auto calls = host_->Calls();
    ASSERT_EQ(calls.size(), 2U);
    for (const std::u16string& call : calls)
        EXPECT_TRUE(call.starts_with(u"ForgetCredentials|Perforce: "))
            << testing::PrintToString(call);
}

TEST_F(P4Histories, ServersThatAreProgramsAreRefused)
{
    for (const char16_t* const server : {u"rsh:touch x", u"RSH:x", u" rsh:x", u"jsh:x"})
    {
        const std::u16string address =
            u"p4://ann@" + std::u16string(server) + u"///depot/base/a.txt";
        EXPECT_EQ(ReadStatus(address), E_INVALIDARG) << testing::PrintToString(server);
        host_->credentials = {S_OK, u"ann", u"x", server};
        EXPECT_EQ(ReadStatus(address_), E_INVALIDARG) << testing::PrintToString(server);
    }
    EXPECT_THAT(depot_.TakeRuns(), IsEmpty());
}

// The stand-in refuses to work without what turns them off.
TEST_F(P4Histories, SettingsOfFoldersAndAliasesAreOff)
{
    const EnvironmentValue config("P4CONFIG", ".p4config");
    const EnvironmentValue aliases("P4ALIASES", temporary_.Path().string().c_str());
    const EnvironmentValue debug("P4DEBUG", "rpc=3");
    const EnvironmentValue language("P4LANGUAGE", "jp");
    const EnvironmentValue charset("P4COMMANDCHARSET", "shiftjis");
    EXPECT_THAT(Descriptions(address_), ElementsAre(u"m"));
}

TEST_F(P4Histories, FailuresAreToldApart)
{
    struct Case
    {
        const char* way;
        HRESULT status;
    };
    for (const auto& [way, status] : {Case{"refused", HistoryServerSilent},
                                      {"password", E_ACCESSDENIED},
                                      {"newuser", E_ACCESSDENIED},
                                      {"expired", E_ACCESSDENIED},
                                      {"invalid", E_ACCESSDENIED},
                                      {"workspace", HistoryBadSettings},
                                      {"nofiles", HistoryNoPath},
                                      {"late", HistoryClientFailed},
                                      {"silent", HistoryClientFailed}})
    {
        Fail("*", way);
        HistorySink sink;
        EXPECT_EQ(Read(address_, sink).status, status) << way;
        EXPECT_EQ(Read(folder_ + u"/", sink).status, status) << way;
    }
    Fail("*", "warning");
    EXPECT_THAT(Descriptions(address_), ElementsAre(u"m"));
    EXPECT_THAT(Descriptions(folder_), ElementsAre(u"m"));
}

TEST_F(P4Histories, AnswersThatCantBeReadSaySo)
{
    for (const char* const bytes : {"... depotFile //depot/base/a.txt\n", "{", "{s", "x"})
    {
        depot_.PrintBytes("filelog", bytes);
        EXPECT_EQ(ReadStatus(address_), HistoryBadAnswer) << bytes;
    }
}

TEST_F(P4Histories, WithTheWorkingCopyWhereThereIsOne)
{
    EXPECT_THAT(Descriptions(address_, Wanted(HistoryWorkingCopy)), ElementsAre(u"m"));
    const std::filesystem::path local = depot_.Sync("a.txt");
    const auto entries = History(address_, Wanted(HistoryWorkingCopy));
    ASSERT_EQ(entries.size(), 2U);
    EXPECT_EQ(entries[0].description, u"Working Copy");
    EXPECT_EQ(entries[0].id, u"");
    EXPECT_EQ(std::filesystem::path(entries[0].address), local);
    EXPECT_EQ(entries[0].path, u"depot/base/a.txt");
    EXPECT_THAT(Descriptions(folder_, Wanted(HistoryWorkingCopy)),
                ElementsAre(u"Working Copy", u"m"));
    // A workspace that the server doesn't know hides no history.
    Fail("where", "workspace");
    EXPECT_THAT(Descriptions(address_, Wanted(HistoryWorkingCopy)), ElementsAre(u"m"));
}

// It may be on another machine, which would be told who one is, or a device.
TEST_F(P4Histories, TheWorkingCopyIsLookedForOnThisMachineOnly)
{
    const auto copiesAt = [&](const std::string& path) {
        depot_.PrintBytes(
            "where",
            perforce::Marshalled("stat", {{"depotFile", "//depot/base/a.txt"}, {"path", path}}));
        return History(address_, Wanted(HistoryWorkingCopy)).size() - 1;
    };
    const std::string there = temporary_.Path().string();
    EXPECT_EQ(copiesAt(there), 1U);
#ifdef _WIN32
    EXPECT_EQ(copiesAt("\\\\?\\" + there), 0U);
    EXPECT_EQ(copiesAt("\\\\.\\" + there), 0U);
    EXPECT_EQ(copiesAt("\\\\localhost\\" + there.substr(0, 1) + "$" + there.substr(2)), 0U);
#endif
    EXPECT_EQ(copiesAt("."), 0U);
}

// All revisions of a file are one record.
TEST_F(P4Histories, RevisionsComeWhileTheirRecordIsPrinted)
{
    perforce::Fields fields{{"depotFile", "//depot/base/a.txt"}};
    for (const std::string n : {"0", "1", "2"})
    {
        for (const char* const name : {"rev", "change", "time", "user", "client", "desc"})
            fields.emplace_back(name + n, "7");
    }
    std::string half = perforce::Marshalled("stat", fields);
    half.resize(half.rfind("client2"));
    depot_.PrintBytes("filelog", half);
    Fail("filelog", "hangbehind");
    for (const std::uint32_t flags : {0U, std::uint32_t{HistoryFollow}})
    {
        HistorySink sink;
        sink.wantsMore = [&] {
            return sink.entries.size() < 2;
        };
        EXPECT_EQ(Read(address_, sink, Wanted(flags)).status, E_ABORT);
        EXPECT_EQ(sink.entries.size(), 2U);
        HistorySink enough;
        EXPECT_THAT(Read(address_, enough, Wanted(flags, 1, 1)), Succeeded());
        EXPECT_EQ(enough.entries.size(), 1U);
    }
}

// What the client has printed is taken before it has ended, and a server that says no more doesn't
// hold the host.
TEST_F(P4Histories, AreCancelledWhileTheServerIsSilent)
{
    for (const char* const way : {"hang", "hangbehind"})
    {
        Fail("*", way);
        for (const std::u16string& path : {address_, folder_ + u"/"})
        {
            HistorySink sink;
            sink.wantsMore = [&] {
                return sink.questions < 5;
            };
            EXPECT_EQ(Read(path, sink).status, E_ABORT) << way;
            EXPECT_EQ(sink.entries.size(), way == std::string("hang") ? 0U : 1U);
        }
    }
}

} // namespace
} // namespace tarnwell::test
