// What Subversion prints of a history, and the way of an item through it.
#include "subversion/svnhistoryparser.h"

#include "subversion/svnhistory.h"
#include "subversion/svnstrict.h"
#include "support/svnoutput.h"

#include <gmock/gmock.h>

namespace tarnwell::test
{
namespace
{

using testing::IsEmpty;

struct SvnParsed
{
    std::vector<SvnRevision> revisions;
    bool isComplete = false;
};

SvnParsed SvnParsedInPieces(std::string_view bytes, std::size_t piece)
{
    SvnHistoryParser parser;
    SvnParsed parsed;
    for (std::size_t at = 0; at < bytes.size(); at += piece)
    {
        parser.Feed(bytes.substr(at, piece));
        while (std::optional<SvnRevision> revision = parser.Next())
            parsed.revisions.push_back(std::move(*revision));
    }
    parsed.isComplete = parser.IsComplete();
    return parsed;
}

SvnParsed SvnParsedEntries(const std::string& entries)
{
    const std::string bytes =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?><log>" + entries + "</log>";
    return SvnParsedInPieces(bytes, bytes.size());
}

SvnRevision SvnWithChanges(std::vector<SvnChange> changes)
{
    SvnRevision revision;
    revision.number = "5";
    revision.changes = std::move(changes);
    return revision;
}

TEST(SvnHistoryParser, ReadsWhatTheClientPrints)
{
    for (const std::size_t piece : {std::size_t{1}, std::size_t{13}, logOutput.size()})
    {
        const SvnParsed parsed = SvnParsedInPieces(logOutput, piece);
        ASSERT_EQ(parsed.revisions.size(), 3U);
        EXPECT_TRUE(parsed.isComplete);
        EXPECT_EQ(parsed.revisions[0].number, "4");
        EXPECT_EQ(parsed.revisions[0].author, "J\xC3\xB6rg <j&k>");
        EXPECT_EQ(parsed.revisions[0].description, "");
        ASSERT_EQ(parsed.revisions[0].changes.size(), 1U);
        EXPECT_EQ(parsed.revisions[0].changes[0].action, 'D');
        EXPECT_EQ(parsed.revisions[0].changes[0].path, "/trunk/a.txt");
        EXPECT_GT(parsed.revisions[0].time, parsed.revisions[1].time);
        EXPECT_EQ(parsed.revisions[2].description,
                  "\nline one\n  line two & <tag> ]]>\n\ttabbed  ");
    }
}

TEST(SvnHistoryParser, WhatMayNotBeSeenIsEmpty)
{
    const SvnParsed parsed = SvnParsedEntries("<logentry revision=\"7\"></logentry>");
    ASSERT_EQ(parsed.revisions.size(), 1U);
    EXPECT_TRUE(parsed.isComplete);
    EXPECT_EQ(parsed.revisions[0].author + parsed.revisions[0].description, "");
    EXPECT_EQ(parsed.revisions[0].time, 0U);
}

TEST(SvnHistoryParser, WhatIsNoRevisionIsNotRead)
{
    for (const char* const entry :
         {"<logentry/>", "<logentry revision=\"x\"/>", "<logentry revision=\"-1\"/>",
          "<logentry revision=\"1\"><paths><path action=\"A\">trunk</path></paths></logentry>",
          "<logentry revision=\"1\"><paths><path>/trunk</path></paths></logentry>",
          "<logentry revision=\"1\"><paths><path action=\"A\" copyfrom-path=\".elsewhere/a\" "
          "copyfrom-rev=\"1\">/trunk</path></paths></logentry>",
          "<logentry revision=\"1\"><paths><path action=\"A\" copyfrom-path=\"/../a\" "
          "copyfrom-rev=\"1\">/trunk</path></paths></logentry>",
          "<logentry revision=\"1\"><paths><path action=\"A\" copyfrom-path=\"//elsewhere/a\" "
          "copyfrom-rev=\"1\">/trunk</path></paths></logentry>",
          "<logentry revision=\"1\"><paths><path action=\"A\" copyfrom-path=\"/\" "
          "copyfrom-rev=\"1\">/</path></paths></logentry>",
          "<logentry revision=\"1\"><paths><path action=\"A\" copyfrom-path=\"/\" "
          "copyfrom-rev=\"1\">/trunk/</path></paths></logentry>",
          "<logentry revision=\"1234567890123456789\"/>"})
    {
        const SvnParsed parsed =
            SvnParsedEntries(entry + std::string("<logentry revision=\"1\"/>"));
        EXPECT_THAT(parsed.revisions, IsEmpty()) << entry;
        EXPECT_FALSE(parsed.isComplete) << entry;
    }
}

TEST(SvnHistoryParser, AnItemComesFromWhereTheNearestCopyDoes)
{
    const SvnRevision copied = SvnWithChanges({{'A', "/b", "/trunk"},
                                               {'R', "/b/sub/a.txt", "/old/x.txt"},
                                               {'A', "/b/sub/new.txt", ""},
                                               {'M', "/b/c.txt", ""}});
    EXPECT_EQ(SvnPathBefore(copied, "/b"), "/trunk");
    EXPECT_EQ(SvnPathBefore(copied, "/b/c.txt"), "/trunk/c.txt");
    EXPECT_EQ(SvnPathBefore(copied, "/b/sub/a.txt"), "/old/x.txt");
    EXPECT_EQ(SvnPathBefore(copied, "/b/sub/new.txt"), "/b/sub/new.txt");
    EXPECT_EQ(SvnPathBefore(copied, "/bb/c.txt"), "/bb/c.txt");
    EXPECT_EQ(SvnPathBefore(copied, "/"), "/");
    EXPECT_EQ(SvnPathBefore(SvnWithChanges({{'A', "/b", "/"}}), "/b/c"), "/c");
}

TEST(SvnHistoryParser, AnItemIsRemovedWithItsFolder)
{
    const SvnRevision removed =
        SvnWithChanges({{'D', "/a/b", ""}, {'R', "/r", ""}, {'M', "/m", ""}});
    EXPECT_TRUE(RemovesPath(removed, "/a/b"));
    EXPECT_TRUE(RemovesPath(removed, "/a/b/c"));
    EXPECT_TRUE(RemovesPath(removed, "/r/x"));
    EXPECT_FALSE(RemovesPath(removed, "/a/bc"));
    EXPECT_FALSE(RemovesPath(removed, "/a"));
    EXPECT_FALSE(RemovesPath(removed, "/m"));
}

TEST(SvnStrict, RevisionsAreNumbersWordsAndDates)
{
    for (const char16_t* const text : {u"1", u"r12", u"HEAD", u"head", u"{2024-01-01}",
                                       u"{2024-01-01T10:00:00.000Z}", u"{2024-01-01 10:00 +0100}"})
        EXPECT_TRUE(IsSvnRevision(text));
    for (const char16_t* const text :
         {u"", u"r", u"-1", u"1:2", u"x", u"{}", u"{x}", u"{2024}:1", u"BASE", u"1 2", u"HEAD@1",
          u"1234567890123456789", u"{2024-01-01", u"1\n"})
        EXPECT_FALSE(IsSvnRevision(text));
    for (const char16_t* const text : {u"BASE", u"committed", u"Prev"})
        EXPECT_TRUE(IsWorkingCopyRevision(text));
    EXPECT_FALSE(IsWorkingCopyRevision(u"HEAD"));
}

TEST(SvnStrict, AnItemIsOneArgumentWithItsRevision)
{
    EXPECT_EQ(SvnTarget(u"file:///r/a@b \"c\"", u"5"), u"-- \"file:///r/a@b \\\"c\\\"@5\"");
    EXPECT_EQ(SvnTarget(u"/w/-x", u""), u"-- \"/w/-x@\"");
}

TEST(SvnStrict, HistoriesAreAskedForNoMoreThanIsNeeded)
{
    HistoryOptions options{};
    EXPECT_EQ(SvnHistoryArguments(options), u"log --xml --stop-on-copy ");
    options.skip = 5;
    EXPECT_EQ(SvnHistoryArguments(options), u"log --xml --stop-on-copy ");
    options.count = 20;
    EXPECT_EQ(SvnHistoryArguments(options), u"log --xml --stop-on-copy -l 25 ");
    options.flags = HistoryFollow;
    options.count = UINT32_MAX;
    EXPECT_EQ(SvnHistoryArguments(options), u"log --xml -v -l 2147483647 ");
    options.until = 1;
    EXPECT_EQ(SvnHistoryArguments(options), u"log --xml -v ");
}

struct SvnWords
{
    const char16_t* words;
    HRESULT status;
};

// As the client prints them.
TEST(SvnStrict, FailuresAreKnownByTheirNumbers)
{
    for (const SvnWords& row : {
             SvnWords{
                 u"svn: E170013: Unable to connect to a repository at URL 'svn://127.0.0.1:1/r'\n"
                 u"svn: E000111: Can't connect to host '127.0.0.1': Connection refused\n",
                 HistoryServerSilent},
             SvnWords{
                 u"svn: E170013: Unable to connect to a repository at URL 'svn://h.invalid/r'\n"
                 u"svn: E670003: Unknown hostname 'h.invalid'\n",
                 HistoryServerSilent},
             SvnWords{u"svn: E170013: Unable to connect to a repository at URL 'svn://h/r'\n"
                      u"svn: E730061: Can't connect to host 'h': No connection could be made\n",
                      HistoryServerSilent},
             SvnWords{u"svn: E175012: Connection timed out\n", HistoryServerSilent},
             SvnWords{u"svn: E170013: Unable to connect to a repository at URL 'file:///x'\n"
                      u"svn: E180001: Unable to open repository 'file:///x'\n",
                      HistoryNoRepository},
             SvnWords{u"svn: E155007: '/tmp/x' is not a working copy\n", HistoryNoRepository},
             SvnWords{u"svn: E160006: No such revision 99\n", HistoryNoRevision},
             SvnWords{u"svn: E160013: File not found: revision 3, path '/none'\n", HistoryNoPath},
             SvnWords{u"svn: warning: W170000: URL 'file:///r/none' non-existent in revision 4\n\n"
                      u"svn: E200009: Could not display info for all targets because some targets "
                      u"don't exist\n",
                      HistoryNoPath},
             SvnWords{u"svn: warning: W195007: URL 'file:///r/trunk' refers to a directory\n",
                      HistoryWrongKind},
             SvnWords{u"svn: E170013: Unable to connect to a repository at URL 'svn://h/r'\n"
                      u"svn: E170001: Authentication error from server: Password incorrect\n",
                      E_ACCESSDENIED},
             SvnWords{u"svn: E170001: Authorization failed\n", E_ACCESSDENIED},
             SvnWords{u"svn: E175013: Access to '/forbidden' forbidden\n", E_ACCESSDENIED},
             SvnWords{
                 u"svn: E200002: Error while parsing config file: /home/a/.subversion/config:\n"
                 u"svn: E200002: line 1: Section header must end with ']'\n",
                 HistoryBadSettings},
             SvnWords{u"svn: E200014: Checksum mismatch\n", HistoryClientFailed},
             SvnWords{u"", HistoryClientFailed},
         })
        EXPECT_EQ(SvnFailureOf(row.words).status, row.status)
            << testing::PrintToString(std::u16string(row.words));
}

} // namespace
} // namespace tarnwell::test
