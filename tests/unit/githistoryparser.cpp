// What Git prints of a history, in any pieces.
#include "git/githistoryparser.h"

#include "frame/unixtime.h"
#include "git/githistory.h"
#include "git/gitstrict.h"

#include <gmock/gmock.h>

namespace tarnwell::test
{
namespace
{

using namespace std::literals;
using testing::ElementsAre;

const std::string hashA(40, 'a');
const std::string hashB(64, 'b');

std::string CommitText(const std::string& id, const std::string& description)
{
    return id + "\0J\xC3\xB6rg\0"s + "1000000000\0"s + "1000000001\0"s + description + '\0';
}

struct Parsed
{
    std::vector<GitCommit> commits;
    bool isComplete;
};

Parsed ParsedInPieces(const std::string& bytes, std::size_t piece, bool hasNames = false,
                      const std::string& path = "p")
{
    GitHistoryParser parser(hasNames, path);
    Parsed parsed;
    const auto take = [&] {
        while (std::optional<GitCommit> commit = parser.Next())
            parsed.commits.push_back(std::move(*commit));
    };
    for (std::size_t at = 0; at < bytes.size(); at += piece)
    {
        parser.Feed(std::string_view(bytes).substr(at, piece));
        take();
    }
    parser.End();
    take();
    parsed.isComplete = parser.IsComplete();
    return parsed;
}

TEST(GitHistoryParser, ReadsTheSameInPiecesOfAnySize)
{
    const std::string bytes =
        CommitText(hashA, "title\n\nbody\n") + CommitText(hashB, "") + CommitText(hashA, "\n!\n");
    for (std::size_t piece = 1; piece <= bytes.size(); ++piece)
    {
        const Parsed parsed = ParsedInPieces(bytes, piece);
        ASSERT_EQ(parsed.commits.size(), 3U);
        EXPECT_TRUE(parsed.isComplete);
        EXPECT_EQ(parsed.commits[0].id, hashA);
        EXPECT_EQ(parsed.commits[0].author, "J\xC3\xB6rg");
        EXPECT_EQ(parsed.commits[0].description, "title\n\nbody");
        EXPECT_EQ(parsed.commits[0].authorTime, 126444736000000000U);
        EXPECT_EQ(parsed.commits[0].commitTime, 126444736010000000U);
        EXPECT_EQ(parsed.commits[0].path, "p");
        EXPECT_EQ(parsed.commits[1].id, hashB);
        EXPECT_EQ(parsed.commits[1].description, "");
        EXPECT_EQ(parsed.commits[2].description, "\n!");
    }
}

TEST(GitHistoryParser, FollowsNames)
{
    const std::string bytes = CommitText(hashA, "3") + "\nR100\0b\0c\0"s + CommitText(hashA, "2") +
                              CommitText(hashB, "merge") + "\nM\0b\0"s + CommitText(hashA, "1") +
                              "\nR070\0a\nR\0b\0"s + CommitText(hashA, "0") + "\nA\0a\nR\0"s;
    for (std::size_t piece = 1; piece <= bytes.size(); ++piece)
    {
        const Parsed parsed = ParsedInPieces(bytes, piece, true, "c");
        std::vector<std::string> paths;
        for (const GitCommit& commit : parsed.commits)
            paths.push_back(commit.path);
        EXPECT_THAT(paths, ElementsAre("c", "b", "b", "b", "a\nR"));
        EXPECT_TRUE(parsed.isComplete);
    }
}

TEST(GitHistoryParser, AnAnswerThatBreaksOffIsIncomplete)
{
    const std::string bytes = CommitText(hashA, "title");
    for (std::size_t size = 1; size < bytes.size(); ++size)
        EXPECT_FALSE(ParsedInPieces(bytes.substr(0, size), 7).isComplete) << size;
    EXPECT_FALSE(ParsedInPieces("x" + bytes, 7).isComplete);
    EXPECT_FALSE(ParsedInPieces(bytes + "\nR100\0b\0"s, 7, true).isComplete);
    EXPECT_TRUE(ParsedInPieces("", 1).isComplete);
}

TEST(GitHistoryParser, ReadsNoCommitBeyondItsBound)
{
    const std::string commit = CommitText(hashA, std::string(100, 'x'));
    const std::string change = "\nR100\0b\0p\0"s;
    const std::size_t size = commit.size() + change.size();
    for (const std::size_t most : {size - 1, size})
    {
        for (const std::size_t piece : {std::size_t{1}, size, 2 * size})
        {
            GitHistoryParser parser(true, "p", most);
            std::size_t found = 0;
            const std::string bytes = commit + change + commit;
            for (std::size_t at = 0; at < bytes.size(); at += piece)
            {
                parser.Feed(std::string_view(bytes).substr(at, piece));
                while (parser.Next())
                    ++found;
            }
            parser.End();
            while (parser.Next())
                ++found;
            EXPECT_EQ(found, most == size ? 2U : 0U) << piece;
            EXPECT_EQ(parser.IsComplete(), most == size) << piece;
        }
    }
}

// As names can be many, each is read once.
TEST(GitHistoryParser, ReadsManyNamesByBytes)
{
    std::string bytes = CommitText(hashA, "");
    for (int i = 0; i < 200'000; ++i)
        bytes += "M\0b\0"s;
    EXPECT_EQ(ParsedInPieces(bytes, 1, true).commits.size(), 1U);
}

TEST(GitHistoryParser, NamesDontLeaveTheRepository)
{
    const std::string bytes = CommitText(hashA, "renamed");
    EXPECT_TRUE(ParsedInPieces(bytes + "\nR100\0..b/c\0p\0"s, 7, true).isComplete);
    for (const std::string& name : {"../b"s, "b/../../c"s, "/b"s, ""s})
        EXPECT_FALSE(ParsedInPieces(bytes + "\nR100\0"s + name + "\0p\0"s, 7, true).isComplete)
            << name;
}

TEST(GitHistoryParser, TimesThatAreNone)
{
    EXPECT_EQ(FileTimeOfSeconds("0"), 116444736000000000U);
    EXPECT_EQ(FileTimeOfSeconds("-1"), 116444735990000000U);
    EXPECT_EQ(FileTimeOfSeconds("4294967296"), 159394408960000000U);
    for (const char* const text :
         {"", "x", "1x", " 1", "-11644473601", "99999999999999999999", "910692730086"})
        EXPECT_EQ(FileTimeOfSeconds(text), 0U) << text;
    EXPECT_EQ(SecondsOf(116444736000000000U), 0);
    EXPECT_EQ(SecondsOf(0), -11644473600);
}

TEST(GitStrict, FailuresAreKnownByTheBeginningsOfLines)
{
    const std::pair<std::u16string_view, HRESULT> rows[] = {
        {u"fatal: not a git repository (or any of the parent directories): .git",
         HistoryNoRepository},
        {u"fatal: detected dubious ownership in repository at '/r'", E_ACCESSDENIED},
        {u"fatal: cannot open '.git/HEAD': Permission denied\n", E_ACCESSDENIED},
        {u"error: x\r\nfatal: bad revision 'fatal: not a git repository^{commit}'\r\n",
         HistoryNoRevision},
        {u"fatal: ambiguous argument 'x'", HistoryNoRevision},
        {u"fatal: bad config line 3 in file .git/config", HistoryBadSettings},
        {u"fatal: bad boolean config value 'x' for 'core.bare'", HistoryBadSettings},
        {u"fatal: unknown repository extension found:", HistoryBadSettings},
        {u"fatal: Expected git repo version <= 1, found 9", HistoryBadSettings},
        {u"fatal: transport 'https' not allowed", HistoryIncomplete},
        {u"fatal: could not fetch 1234 from promisor remote", HistoryIncomplete},
        {u"fatal: path 'Permission denied' is none", HistoryClientFailed},
        {u"warning: fatal: bad revision", HistoryClientFailed},
        {u"", HistoryClientFailed},
    };
    for (const auto& [words, status] : rows)
        EXPECT_EQ(GitFailureOf(words).status, status) << testing::PrintToString(words);
}

TEST(GitStrict, PathsAndRevisionsAreOneArgumentEach)
{
    const Place place{u"/r", u"a\" --all *"};
    const std::u16string arguments = GitHistoryArguments(place, u"v\"1", HistoryOptions{});
    EXPECT_TRUE(arguments.ends_with(u"--end-of-options \"v\\\"1^{commit}\" -- \"a\\\" --all *\""));
}

} // namespace
} // namespace tarnwell::test
