// What Git prints of objects and trees, in any pieces.
#include "git/gittreeparser.h"

#include <gmock/gmock.h>

namespace tarnwell::test
{
namespace
{

using namespace std::literals;

const std::string idText(40, 'a');

TEST(GitTreeParser, ReadsTheLineOfAnObject)
{
    const std::string text = idText + " blob 18446744073709551615";
    const auto line = ReadGitObjectLine(text);
    ASSERT_TRUE(line);
    EXPECT_EQ(line->id, idText);
    EXPECT_EQ(line->type, "blob");
    EXPECT_EQ(line->size, UINT64_MAX);
    for (const std::string& bad :
         {"HEAD missing"s, "abcd ambiguous"s, ""s, idText + " blob"s, idText + " blob x"s,
          idText + " blob 18446744073709551616"s, idText + " blob -1"s, "x" + idText + " blob 1"s})
        EXPECT_FALSE(ReadGitObjectLine(bad)) << bad;
}

TEST(GitTreeParser, ReadsTrees)
{
    const std::string id(20, '\xAA');
    const auto entries = ReadGitTree("40000 sub\0"s + id + "100755 a b\0"s + id, 20);
    ASSERT_TRUE(entries);
    ASSERT_EQ(entries->size(), 2U);
    EXPECT_EQ((*entries)[0].mode, gitFolderMode);
    EXPECT_EQ((*entries)[1].name, "a b");
    EXPECT_EQ((*entries)[1].id, idText);
    EXPECT_TRUE(ReadGitTree("", 20)->empty());
    for (const std::string& bad :
         {"40000 sub\0"s, "40000 sub\0"s + id.substr(1), "sub\0"s + id, "40000 ..\0"s + id,
          "40000 a/b\0"s + id, "40000 \0"s + id, "9 a\0"s + id, "40000 .\0"s + id})
        EXPECT_FALSE(ReadGitTree(bad, 20));
}

// As the client reads them: the kind counts, and with files whether the owner may execute them.
TEST(GitTreeParser, ReadsOddModes)
{
    const std::string id(20, '\xAA');
    const std::pair<std::string, std::uint32_t> rows[] = {
        {"40755", gitFolderMode},      {"040000", gitFolderMode},    {"40001", gitFolderMode},
        {"100664", gitFileMode},       {"100600", gitFileMode},      {"100655", gitFileMode},
        {"100700", gitProgramMode},    {"100775", gitProgramMode},   {"120755", gitLinkMode},
        {"160755", gitRepositoryMode}, {"10644", gitRepositoryMode}, {"0", gitRepositoryMode},
    };
    for (const auto& [text, mode] : rows)
    {
        const auto entries = ReadGitTree(text + " a\0"s + id, 20);
        ASSERT_TRUE(entries) << text;
        EXPECT_EQ((*entries)[0].mode, mode) << text;
        GitListingParser parser;
        parser.Feed(text + " x "s + idText + " 0\ta\0"s);
        EXPECT_EQ(parser.Next().value().mode, mode) << text;
    }
}

TEST(GitTreeParser, ReadsCommits)
{
    const std::string object = "tree " + idText + "\nauthor A <x> 1 +0000\ncommitter B > <y> " +
                               "1000000000 +0200\n\ntree x\ncommitter C <z> 5 +0000\n";
    const auto facts = ReadGitCommit(object);
    ASSERT_TRUE(facts);
    EXPECT_EQ(facts->tree, idText);
    EXPECT_EQ(facts->time, 126444736000000000U);
    const std::string another(40, 'f');
    EXPECT_EQ(ReadGitCommit("tree " + idText + "\ntree " + another + "\n")->tree, idText);
    EXPECT_FALSE(ReadGitCommit("\ntree " + idText + "\n"));
    EXPECT_FALSE(ReadGitCommit("tree x\n"));
    EXPECT_EQ(ReadGitCommit("tree " + idText + "\ncommitter\n")->time, 0U);
}

TEST(GitTreeParser, ReadsListingsInPiecesOfAnySize)
{
    const std::string bytes = "040000 tree "s + idText + "       -\tsub\0"s + "100644 blob "s +
                              idText + "      12\tsub/a\tb\n.txt\0"s;
    for (std::size_t piece = 1; piece <= bytes.size(); ++piece)
    {
        GitListingParser parser;
        std::vector<GitEntry> entries;
        for (std::size_t at = 0; at < bytes.size(); at += piece)
        {
            parser.Feed(std::string_view(bytes).substr(at, piece));
            while (auto entry = parser.Next())
                entries.push_back(*entry);
        }
        ASSERT_EQ(entries.size(), 2U);
        EXPECT_TRUE(parser.IsComplete());
        EXPECT_EQ(entries[0].mode, gitFolderMode);
        EXPECT_EQ(entries[0].size, 0U);
        EXPECT_EQ(entries[1].name, "sub/a\tb\n.txt");
        EXPECT_EQ(entries[1].size, 12U);
    }
}

TEST(GitTreeParser, ReadsNoEntryBeyondItsBound)
{
    const std::string bytes = "100644 blob "s + idText + " 12\t"s + std::string(100, 'a') + '\0';
    for (const std::size_t most : {bytes.size() - 1, bytes.size()})
    {
        GitListingParser parser(most);
        parser.Feed(bytes);
        EXPECT_EQ(parser.Next().has_value(), most == bytes.size());
        EXPECT_EQ(parser.IsComplete(), most == bytes.size());
    }
}

TEST(GitTreeParser, WhatIsNoEntryIsIncomplete)
{
    for (const std::string& bad :
         {"040000 tree "s + idText + "       -\t..\0"s, "040000 tree x       -\tsub\0"s,
          "040000 tree "s + idText + "\tsub\0"s, "100644 blob "s + idText + " x\ta\0"s,
          "100644 blob "s + idText + " 1\ta"s, "100644 blob "s + idText + " 1\ta//b\0"s,
          std::string(1, '\0')})
    {
        GitListingParser parser;
        parser.Feed(bad);
        EXPECT_FALSE(parser.Next());
        EXPECT_FALSE(parser.IsComplete());
    }
}

} // namespace
} // namespace tarnwell::test
