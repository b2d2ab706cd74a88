// Trees of Mercurial repositories: names that other systems can't have, and clients that tell less.
#include "module/hghistorytest.h"
#include "support/posix/standinclient.h"

#include <tarnwell/text.h>

namespace tarnwell::test
{
namespace
{

using testing::ElementsAre;

TEST_F(HgHistories, ABackslashIsPartOfAName)
{
    for (const char16_t* const name :
         {u"a/b", u"a\\b", u"c\\d e+/x", u"c\\d e+/sub/y", u"c/d e+/x"})
    {
        std::filesystem::create_directories(std::filesystem::path(repository / name).parent_path());
        WriteBytes(repository / name, EncodeName(name).value());
    }
    Record("all");
    const auto tree = TreeAt();
    std::size_t files = 0;
    for (const TreeEntry& entry : ListOf(tree, {}, true))
    {
        if (entry.kind != TreeFile)
            continue;
        ++files;
        EXPECT_EQ(ContentOf(tree, entry.name), EncodeName(entry.name));
        EXPECT_EQ(entry.size, entry.name.size());
        TreeSink sink;
        EXPECT_EQ(tree->Find(Ole(entry.name), &sink), S_OK);
        EXPECT_EQ(sink.entries.at(0).size, entry.size);
        EXPECT_THAT(Descriptions(Address(entry.name)), ElementsAre(u"all"));
    }
    EXPECT_EQ(files, 5U);
    std::vector<std::u16string> names;
    for (const TreeEntry& entry : ListOf(tree, u"c\\d e+"))
        names.push_back(entry.name);
    EXPECT_THAT(names, ElementsAre(u"c\\d e+/sub", u"c\\d e+/x"));
    names.clear();
    for (const TreeEntry& entry : ListOf(tree, u"c\\d e+", true))
        names.push_back(entry.name);
    EXPECT_THAT(names, ElementsAre(u"c\\d e+/sub", u"c\\d e+/sub/y", u"c\\d e+/x"));
    EXPECT_EQ(PathsOf(Address(u"a\\b")), std::vector<std::u16string>{u"all: a\\b"});
}

TEST_F(HgHistories, ASizeThatIsNotToldIsABadAnswer)
{
    repository.Commit(u"a.txt", "content", "first");
    const TempFolder folder;
    WriteBytes(folder / u"nosizes.py",
               "from mercurial import commands, extensions\n"
               "def uisetup(ui):\n"
               "    extensions.wrapcommand(commands.table, b'files', lambda *a, **o: 0)\n");
    const StandInClient client("hg", "exec \"$REAL\" --config extensions.nosizes='" +
                                         EncodeName(folder / u"nosizes.py").value() + "' \"$@\"");
    const auto tree = TreeAt();
    TreeSink sink;
    EXPECT_EQ(tree->Find(Ole(u"a.txt"), &sink), HistoryBadAnswer);
    EXPECT_EQ(tree->List(Ole(u""), VARIANT_FALSE, &sink), HistoryBadAnswer);
    EXPECT_EQ(tree->List(Ole(u""), VARIANT_TRUE, &sink), HistoryBadAnswer);
    EXPECT_TRUE(sink.entries.empty());
}

} // namespace
} // namespace tarnwell::test
