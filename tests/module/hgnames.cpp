// Mercurial's names that are no text. Work trees on Windows can't have them; revisions can.
#include "module/hghistorytest.h"

#include <tarnwell/text.h>

namespace tarnwell::test
{
namespace
{

namespace fs = std::filesystem;

using HgNames = HgHistories;

// Names are bytes to the client. Those that aren't UTF-8 come back as they are.
TEST_F(HgNames, NamesThatAreNoTextComeAsTheyAre)
{
    repository.Commit(u"a.txt", "1", "first");
    const std::string latin = "d\xFCr/caf\xE9.txt";
    const std::string japanese = "\x95\x5C.txt"; // whose second byte is a backslash
    std::string patch;
    for (const std::string& name : {latin, japanese})
        patch += "diff --git a/" + name + " b/" + name + "\nnew file mode 100644\n--- /dev/null\n" +
                 "+++ b/" + name + "\n@@ -0,0 +1,1 @@\n+content\n";
    WriteBytes(repository / u".hg/patch", patch);
    repository.Run({"import", "-q", "--bypass", "-u", "Ann", "-m", "added", ".hg/patch"});

    const auto tree = TreeAt("tip");
    EXPECT_THAT(FilesIn(tree),
                testing::UnorderedElementsAre(u"a.txt", DecodeName(latin), DecodeName(japanese)));
    for (const std::string& name : {latin, japanese})
    {
        const std::u16string text = DecodeName(name);
        EXPECT_EQ(ContentOf(tree, text), "content\n");
        // No address on Windows has a backslash in a name.
        if (fs::path::preferred_separator == '\\' && name == japanese)
            continue;
        const auto entries = History(Address(text, "tip"), Wanted(HistoryFollow));
        ASSERT_EQ(entries.size(), 1U);
        EXPECT_EQ(entries[0].description, u"added");
        EXPECT_EQ(entries[0].path, text);
        // The address opens it.
        ComPtr<ITree> alone;
        ASSERT_THAT(OpenTree(entries[0].address, alone), Succeeded());
        EXPECT_EQ(ContentOf(alone, u""), "content\n");
    }
}

} // namespace
} // namespace tarnwell::test
