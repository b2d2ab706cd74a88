// A folder's listing with the named data streams of its files, which are made up here.
#include "frame/text.h"
#include "local/filesystem.h"
#include "support/errorinfo.h"
#include "support/fakehost.h"
#include "support/tempfolder.h"
#include "unit/fakebackup.h"

#include <gmock/gmock.h>

namespace tarnwell::test
{

namespace
{

using testing::ElementsAre;
using testing::UnorderedElementsAre;

class StreamListing : public testing::Test
{
protected:
    StreamListing()
    {
        WriteBytes(folder_ / u"file.txt", "main");
        EXPECT_EQ(MakeInstance<CWin32FileSystemObject>(nullptr, IID_IFileSystem, system_.OutVoid()),
                  S_OK);
        system_.As<IFileSystemInit>()->SetHost(host_->Unknown());
        host_->setting = VARIANT_TRUE;
    }

    ComPtr<IFolderContents> List()
    {
        ComPtr<IFolder> found;
        ComPtr<IFolderContents> contents;
        EXPECT_EQ(system_->GetFolder(Wide(folder_.Text()), VARIANT_TRUE, found.Out()), S_OK);
        EXPECT_EQ(found->GetContents(contents.Out()), S_OK);
        return contents;
    }
    static ComPtr<IFileSystemItem> ItemAt(const ComPtr<IFolderContents>& contents, int index)
    {
        ComPtr<IFileSystemItem> item;
        EXPECT_EQ(contents->GetItem(index, item.Out()), S_OK);
        return item;
    }
    static std::vector<std::u16string> NamesOf(const ComPtr<IFolderContents>& contents)
    {
        std::uint32_t count = 0;
        EXPECT_EQ(contents->GetCount(&count), S_OK);
        std::vector<std::u16string> names;
        for (std::uint32_t i = 0; i < count; ++i)
        {
            Bstr name;
            EXPECT_EQ(ItemAt(contents, static_cast<int>(i))->GetName(name.Out()), S_OK);
            names.emplace_back(name.View());
        }
        return names;
    }

    TempFolder folder_;
    ComPtr<FakeHost> host_ = FakeHost::Make();
    ComPtr<IFileSystem> system_;
};

TEST_F(StreamListing, StreamsFollowTheirFile)
{
    const FakeBackup backup(
        std::vector<FakeStream>{{4, u":s1:$DATA", 100}, {4, u":s2:$DATA", 0x500000000}});
    const auto contents = List();
    EXPECT_THAT(NamesOf(contents), ElementsAre(u"file.txt", u"file.txt:s1", u"file.txt:s2"));

    const auto stream = ItemAt(contents, 2);
    EXPECT_FALSE(stream.As<IFolder>());
    ASSERT_TRUE(stream.As<IFile>());
    std::uint32_t size = 9;
    EXPECT_EQ(stream.As<IFile>()->GetSizeHigh(&size), S_OK);
    EXPECT_EQ(size, 5U);
    std::uint64_t fileTime = 0;
    std::uint64_t streamTime = 1;
    EXPECT_EQ(ItemAt(contents, 0)->GetModifiedTime(&fileTime), S_OK);
    EXPECT_EQ(stream->GetModifiedTime(&streamTime), S_OK);
    EXPECT_EQ(streamTime, fileTime);
    Bstr path;
    EXPECT_EQ(stream->GetPath(path.Out()), S_OK);
    EXPECT_EQ(path.View(), folder_ / u"file.txt:s2");
}

TEST_F(StreamListing, NobodyWalksUnlessTheHostWantsIt)
{
    const FakeBackup backup(std::vector<FakeStream>{{4, u":s1:$DATA"}});
    host_->setting = VARIANT_FALSE;
    EXPECT_THAT(NamesOf(List()), ElementsAre(u"file.txt"));
    EXPECT_EQ(backup.walks, 0);
}

TEST_F(StreamListing, FoldersAreNotWalked)
{
    std::filesystem::create_directory(folder_ / u"sub");
    const FakeBackup backup(std::vector<FakeStream>{{4, u":s1:$DATA"}});
    EXPECT_THAT(NamesOf(List()), UnorderedElementsAre(u"sub", u"file.txt", u"file.txt:s1"));
    EXPECT_EQ(backup.walks, 1);
}

TEST_F(StreamListing, AFileWithoutStreamsShowsOnce)
{
    const FakeBackup backup{std::string()};
    EXPECT_THAT(NamesOf(List()), ElementsAre(u"file.txt"));
    EXPECT_EQ(backup.walks, 1);
}

} // namespace

} // namespace tarnwell::test
