// Trees of snapshots with links in them, and what permissions say.
#include "local/filesystem.h"
#include "platform/wide.h"
#include "support/errorinfo.h"
#include "support/ordinaryuser.h"
#include "support/snapshotserver.h"
#include "support/snapshotshare.h"
#include "support/tempfolder.h"
#include "support/treesink.h"

#include <tarnwell/pointers.h>
#include <tarnwell/text.h>

#include <gmock/gmock.h>

#include <sys/stat.h>
#include <unistd.h>

namespace tarnwell::test
{
namespace
{

class LocalTreesPosix : public testing::Test
{
protected:
    LocalTreesPosix()
    {
        server.Hold({token});
        EXPECT_EQ(MakeInstance<CWin32FileSystemObject>(nullptr, IID_IFileSystem, system.OutVoid()),
                  S_OK);
    }
    std::string PathOf(const std::u16string& inside) const
    {
        return EncodeName(share.PathOf(token + u"\\" + inside)).value();
    }
    HRESULT Open(const std::u16string& path, ComPtr<ITree>& tree)
    {
        return system.As<IFileSystemTrees>()->OpenTree(Wide(path), nullptr, nullptr, tree.Out());
    }

    const std::u16string token = u"@GMT-2024.05.01-10.30.00";
    SnapshotShare share;
    SnapshotServer server;
    ComPtr<IFileSystem> system;
};

TEST_F(LocalTreesPosix, LinksAreShownAndNotFollowed)
{
    const TempFolder outside;
    WriteBytes(outside / u"secret.txt", "secret");
    share.Put(token + u"\\tree/a.txt", "a");
    const std::string target = outside.Path().string();
    ASSERT_EQ(symlink(target.c_str(), PathOf(u"tree/folder").c_str()), 0);
    ASSERT_EQ(symlink((target + "/secret.txt").c_str(), PathOf(u"tree/file").c_str()), 0);
    ASSERT_EQ(symlink("tree", PathOf(u"top").c_str()), 0);

    ComPtr<ITree> tree;
    ASSERT_EQ(Open(u"C:\\tree", tree), S_OK);
    TreeSink all;
    EXPECT_EQ(tree->List(nullptr, VARIANT_TRUE, &all), S_OK);
    EXPECT_EQ(all.entries.size(), 3U);
    for (const TreeEntry& entry : all.entries)
    {
        EXPECT_EQ(entry.kind, std::uint32_t{entry.name == u"a.txt" ? TreeFile : TreeLink});
        EXPECT_EQ(entry.size, entry.name == u"a.txt" ? 1U : 0U);
    }
    for (const char16_t* const name : {u"folder/secret.txt", u"file/x"})
    {
        TreeSink sink;
        EXPECT_EQ(tree->Find(Wide(std::u16string(name)), &sink), HistoryNoPath);
    }
    for (const char16_t* const name : {u"folder", u"file"})
    {
        TreeSink sink;
        EXPECT_EQ(tree->List(Wide(std::u16string(name)), VARIANT_TRUE, &sink), HistoryWrongKind);
        ComPtr<IFileStream> stream;
        EXPECT_EQ(tree->Open(Wide(std::u16string(name)), nullptr, stream.Out()), HistoryWrongKind);
    }
}

TEST_F(LocalTreesPosix, WhatIsForbiddenFails)
{
    share.Put(token + u"\\tree/sub/a.txt", "a");
    ASSERT_EQ(chmod(PathOf(u"tree/sub").c_str(), 0), 0);
    const OrdinaryUser user;
    if (!user.Possible())
        GTEST_SKIP() << "nothing is forbidden to this user";
    ComPtr<ITree> tree;
    ASSERT_EQ(Open(u"C:\\tree", tree), S_OK);
    TreeSink sink;
    ClearError();
    EXPECT_EQ(tree->List(nullptr, VARIANT_TRUE, &sink), E_ACCESSDENIED);
    EXPECT_TRUE(TakeError());
}

} // namespace
} // namespace tarnwell::test
