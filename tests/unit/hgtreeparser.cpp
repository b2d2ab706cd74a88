// What Mercurial prints of a revision's files, in any pieces, and finding items among them.
#include "mercurial/hgtreeparser.h"

#include <gmock/gmock.h>

namespace tarnwell::test
{
namespace
{

using namespace std::literals;
using testing::ElementsAre;

const std::string id(40, 'a');

std::vector<HgEntry> EntriesIn(const std::string& bytes, std::size_t piece, bool& isComplete)
{
    HgManifestParser parser;
    std::vector<HgEntry> entries;
    for (std::size_t at = 0; at < bytes.size(); at += piece)
    {
        parser.Feed(std::string_view(bytes).substr(at, piece));
        while (std::optional<HgEntry> entry = parser.Next())
            entries.push_back(std::move(*entry));
    }
    isComplete = parser.IsComplete();
    return entries;
}

TEST(HgManifestParser, ReadsFilesInPiecesOfAnySize)
{
    const std::string bytes = id + " \0a b\0"s + id + " *\0sub/p\xFF\0"s + id + " @\0z\n\0"s;
    for (const std::size_t piece : {1U, 3U, 50U, 1000U})
    {
        bool isComplete = false;
        const auto entries = EntriesIn(bytes, piece, isComplete);
        ASSERT_EQ(entries.size(), 3U) << piece;
        EXPECT_TRUE(isComplete);
        EXPECT_EQ(entries[0].path, "a b");
        EXPECT_EQ(entries[0].id, id);
        EXPECT_EQ(entries[0].kind, HgKind::File);
        EXPECT_EQ(entries[1].path, "sub/p\xFF");
        EXPECT_EQ(entries[1].kind, HgKind::Program);
        EXPECT_EQ(entries[2].kind, HgKind::Link);
    }
    for (const std::string& bad :
         {id + "\0a\0"s, id + " x\0a\0"s, id + " \0\0"s, id + " \0..\0"s, id + " \0a/../b\0"s,
          id + " \0/a\0"s, id + " \0a/\0"s, id + " \0./a\0"s, id.substr(1) + " \0a\0"s,
          id + " \0a"s, "abort"s})
    {
        bool isComplete = true;
        EXPECT_TRUE(EntriesIn(bad, 1000, isComplete).empty()) << bad;
        EXPECT_FALSE(isComplete) << bad;
    }
}

TEST(HgSizeParser, ReadsSizes)
{
    HgSizeParser parser;
    parser.Feed("a b\0"
                "18446744073709551615\0c"s);
    const auto size = parser.Next();
    ASSERT_TRUE(size);
    EXPECT_EQ(size->path, "a b");
    EXPECT_EQ(size->size, UINT64_MAX);
    EXPECT_FALSE(parser.Next());
    EXPECT_FALSE(parser.IsComplete());
    parser.Feed("\0"
                "0\0"s);
    EXPECT_EQ(parser.Next()->path, "c");
    EXPECT_TRUE(parser.IsComplete());
    for (const std::string& bad : {"a\0-1\0"s, "a\0\0"s, "a\0x\0"s})
    {
        HgSizeParser other;
        other.Feed(bad);
        EXPECT_FALSE(other.Next());
        EXPECT_FALSE(other.IsComplete());
    }
}

TEST(HgTreeParsers, ReadNothingBeyondTheirBounds)
{
    const std::string file = id + " *\0"s + std::string(100, 'a') + '\0';
    const std::string size = std::string(100, 'a') + "\00012\0"s;
    for (const std::size_t less : {1U, 0U})
    {
        HgManifestParser files(file.size() - less);
        files.Feed(file);
        EXPECT_EQ(files.Next().has_value(), less == 0);
        EXPECT_EQ(files.IsComplete(), less == 0);
        HgSizeParser sizes(size.size() - less);
        sizes.Feed(size);
        EXPECT_EQ(sizes.Next().has_value(), less == 0);
        EXPECT_EQ(sizes.IsComplete(), less == 0);
    }
}

TEST(HgRepositories, AreReadByLines)
{
    const auto found = ReadHgRepositories(id + " a/b c\n\n12 z");
    ASSERT_TRUE(found);
    ASSERT_EQ(found->size(), 2U);
    EXPECT_EQ((*found)[0].path, "a/b c");
    EXPECT_EQ((*found)[0].id, id);
    EXPECT_EQ((*found)[1].id, "12");
    EXPECT_EQ((*found)[1].kind, HgKind::Repository);
    for (const char* const bad : {"x", "x \n", "x ../y\n", "x /y\n"})
        EXPECT_FALSE(ReadHgRepositories(bad)) << bad;
}

HgManifest ManifestOf(const std::vector<std::string>& paths)
{
    std::vector<HgEntry> entries;
    for (const std::string& path : paths)
        entries.push_back({path, id, HgKind::File});
    return HgManifest(std::move(entries));
}

std::vector<std::string> ChildrenOf(const HgManifest& manifest, std::string_view folder)
{
    std::vector<std::string> paths;
    for (const HgEntry& entry : manifest.ChildrenOf(folder))
        paths.push_back(entry.path);
    return paths;
}

TEST(HgManifest, HasFoldersWhereSomethingIsBelow)
{
    const HgManifest manifest = ManifestOf({"z", "sub-x", "sub/b/c", "sub/a", "sub0", "sub/b-/d"});
    EXPECT_EQ(manifest.Find("")->kind, HgKind::Folder);
    EXPECT_EQ(manifest.Find("sub")->kind, HgKind::Folder);
    EXPECT_EQ(manifest.Find("sub/b/c")->kind, HgKind::File);
    EXPECT_EQ(manifest.Find("sub/b")->id, "");
    for (const char* const none : {"su", "sub/", "sub/b/", "sub/b/c/d", "Z", "sub/c", "/z"})
        EXPECT_FALSE(manifest.Find(none)) << none;
    EXPECT_THAT(ChildrenOf(manifest, ""), ElementsAre("sub-x", "sub", "sub0", "z"));
    EXPECT_THAT(ChildrenOf(manifest, "sub"), ElementsAre("sub/a", "sub/b-", "sub/b"));
    EXPECT_THAT(ChildrenOf(manifest, "sub/b"), ElementsAre("sub/b/c"));
    EXPECT_EQ(manifest.Below("sub").end - manifest.Below("sub").begin, 3);
    EXPECT_EQ(HgManifest().Find("")->kind, HgKind::Folder);
    EXPECT_FALSE(HgManifest().Find("a"));
}

} // namespace
} // namespace tarnwell::test
