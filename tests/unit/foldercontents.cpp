// The contents of folders of addresses: a snapshot, and items made from it on demand.
#include "unit/fakebackendtest.h"

#include "frame/messages.h"

namespace tarnwell::test
{
namespace
{

const FSItem fileEntry{u"ftp://host/a", 1, 2, false, false, 0};
const FSItem folderEntry{u"ftp://host/b", 1, 2, true, false, 0};

class FolderContents : public FakeBackendTest
{
};

TEST_F(FolderContents, WithoutMemoryForAnItemSayIt)
{
    const auto contents = Contents({fileEntry, folderEntry});
    Server().memory = false;
    for (const std::int32_t index : {0, 1})
    {
        auto* item = reinterpret_cast<IFileSystemItem*>(1);
        EXPECT_THAT(
            OutcomeOf([&] { return contents->GetItem(index, &item); }),
            Published(E_OUTOFMEMORY, IID_IFolderContents,
                      FormatMessageWithStatus(MessageId::SupportObjectFailed, E_OUTOFMEMORY) +
                          u" [interfaceimpl@N]"));
        EXPECT_EQ(item, nullptr);
    }
}

TEST_F(FolderContents, AreReadAtEachCall)
{
    const auto folder = Folder(u"ftp://host/dir");
    EXPECT_EQ(Server().listings, 0);
    ComPtr<IFolderContents> first;
    ComPtr<IFolderContents> second;
    ASSERT_EQ(folder->GetContents(first.Out()), S_OK);
    Server().listing.push_back(std::make_shared<FSItem>(fileEntry));
    EXPECT_EQ(Got<std::uint32_t>(first, &IFolderContents::GetCount), 0U) << "a snapshot";
    ASSERT_EQ(folder->GetContents(second.Out()), S_OK);
    EXPECT_EQ(Got<std::uint32_t>(second, &IFolderContents::GetCount), 1U);
    EXPECT_EQ(Server().listings, 2);
    EXPECT_EQ(Server().asked, u"ftp://host/dir");
    EXPECT_EQ(Server().lookups, 0);
}

TEST_F(FolderContents, ThatCannotBeReadPassTheFailureOn)
{
    Server().failure.emplace(E_ACCESSDENIED, u"no entry", SourcePosition{u"fake", 3});
    const auto folder = Folder(u"ftp://host/dir");
    auto* contents = reinterpret_cast<IFolderContents*>(1);
    EXPECT_THAT(OutcomeOf([&] { return folder->GetContents(&contents); }),
                Published(E_ACCESSDENIED, IID_IFolder, u"no entry [fake@N]"));
    EXPECT_EQ(contents, nullptr);
}

TEST_F(FolderContents, WithoutMemoryAreNotMade)
{
    const auto folder = Folder(u"ftp://host/dir");
    Server().memory = false;
    ComPtr<IFolderContents> contents;
    EXPECT_THAT(OutcomeOf([&] { return folder->GetContents(contents.Out()); }),
                Published(E_OUTOFMEMORY, IID_IFolder,
                          FormatMessageWithStatus(MessageId::SupportObjectFailed, E_OUTOFMEMORY) +
                              u" [interfaceimpl@N]"));
    EXPECT_FALSE(contents);
}

TEST_F(FolderContents, HandTheHostToTheirItems)
{
    auto contents = Contents({fileEntry});
    EXPECT_EQ(host->References(), 3U);
    ComPtr<IFileSystemItem> item;
    ASSERT_EQ(contents->GetItem(0, item.Out()), S_OK);
    EXPECT_EQ(host->References(), 4U);
    contents.Reset();
    EXPECT_EQ(host->References(), 3U);
}

} // namespace
} // namespace tarnwell::test
