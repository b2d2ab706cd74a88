// The order of the interfaces' methods is what hosts are compiled against: it never changes.
#include <tarnwell/tarnwell.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>

namespace tarnwell::test
{

namespace
{

// The place of a virtual method in its object's table, as this project's compilers keep it in a
// pointer to the method: the offset in bytes, with a flag in the lowest bit.
template <class Method> std::size_t SlotOf(Method method)
{
    struct
    {
        std::size_t pointer;
        std::ptrdiff_t adjustment;
    } parts;
    static_assert(sizeof parts == sizeof method);
    std::memcpy(&parts, &method, sizeof parts);
    return (parts.pointer & ~std::size_t{1}) / sizeof(void*);
}

// What comes behind all methods of `I`.
template <class I> struct Behind : I
{
    virtual void Next() = 0;
};

constexpr std::size_t unknownMethods = 3;

// `methods` are all of the interface in their order, less those of IUnknown.
template <class I, class... Methods> void ExpectOrder(Methods... methods)
{
    std::size_t slot = unknownMethods;
    const auto expectNext = [&slot](std::size_t found) {
        EXPECT_EQ(found, slot++);
    };
    (..., expectNext(SlotOf(methods)));
    EXPECT_EQ(SlotOf(&Behind<I>::Next), slot) << "there is a method that isn't listed";
}

TEST(Slots, OfIUnknown)
{
    using I = ::IUnknown;
    EXPECT_EQ(
        SlotOf(static_cast<HRESULT (STDMETHODCALLTYPE I::*)(REFIID, void**)>(&I::QueryInterface)),
        0U);
    EXPECT_EQ(SlotOf(&I::AddRef), 1U);
    EXPECT_EQ(SlotOf(&I::Release), 2U);
}

TEST(Slots, OfFileSystems)
{
    ExpectOrder<IFileSystemInit>(&IFileSystemInit::SetHost);
    ExpectOrder<IFileSystem>(&IFileSystem::GetFolder, &IFileSystem::GetFile, &IFileSystem::CopyItem,
                             &IFileSystem::CreateTempFile, &IFileSystem::DeleteItems,
                             &IFileSystem::GetOperationMask, &IFileSystem::CombinePath);
    ExpectOrder<IFileSystemCopyEx>(&IFileSystemCopyEx::CopyItemEx);
    ExpectOrder<IFileSystemRevisions>(&IFileSystemRevisions::HasRevisions,
                                      &IFileSystemRevisions::GetRevisions);
}

TEST(Slots, OfItems)
{
    using Item = IFileSystemItem;
    ExpectOrder<Item>(&Item::GetModifiedTime, &Item::GetAttributes, &Item::SetAttributes,
                      &Item::GetName, &Item::GetParentPath, &Item::GetPath, &Item::Delete);
    ExpectOrder<IFileSystemItemExt>(&IFileSystemItemExt::SetModifiedTime);
    ExpectOrder<IFileSystemItemIcon>(&IFileSystemItemIcon::GetIcon);
    ExpectOrder<IFileSystemItemComparableUrl>(&IFileSystemItemComparableUrl::GetComparableName,
                                              &IFileSystemItemComparableUrl::GetComparableUrl);
    ExpectOrder<IFile>(&IFile::GetSizeLow, &IFile::GetSizeHigh, &IFile::Open);
    ExpectOrder<IFolder>(&IFolder::GetContents, &IFolder::Create);
    ExpectOrder<IFolderContents>(&IFolderContents::GetCount, &IFolderContents::GetItem);
}

TEST(Slots, OfStreams)
{
    ExpectOrder<IFileStream>(&IFileStream::Close);
    ExpectOrder<ILib7zSequentialInStream>(&ILib7zSequentialInStream::Read);
    ExpectOrder<ILib7zInStream>(&ILib7zInStream::Read, &ILib7zInStream::Seek);
}

TEST(Slots, OfRevisions)
{
    ExpectOrder<IRevision>(&IRevision::GetRevisionId, &IRevision::GetDescription,
                           &IRevision::GetAuthor, &IRevision::GetModifiedTime,
                           &IRevision::GetRevisionTime, &IRevision::GetUri);
    ExpectOrder<IRevisions>(&IRevisions::GetCount, &IRevisions::GetItem);
}

TEST(Slots, OfHistories)
{
    ExpectOrder<IFileSystemHistory>(&IFileSystemHistory::ReadHistory);
    ExpectOrder<IHistorySink>(&IHistorySink::QueryContinue, &IHistorySink::Take);
}

TEST(Slots, OfTrees)
{
    ExpectOrder<IFileSystemTrees>(&IFileSystemTrees::OpenTree);
    ExpectOrder<ITree>(&ITree::GetRevisionId, &ITree::GetRevisionTime, &ITree::Find, &ITree::List,
                       &ITree::Open);
    ExpectOrder<ITreeSink>(&ITreeSink::QueryContinue, &ITreeSink::Take);
    ExpectOrder<ITreeWorkFiles>(&ITreeWorkFiles::GetRecordedId);
}

// What stands where in the structures, likewise.
TEST(Slots, OfStructures)
{
    EXPECT_EQ(offsetof(HistoryOptions, size), 0U);
    EXPECT_EQ(offsetof(HistoryOptions, flags), 4U);
    EXPECT_EQ(offsetof(HistoryOptions, skip), 8U);
    EXPECT_EQ(offsetof(HistoryOptions, count), 12U);
    EXPECT_EQ(offsetof(HistoryOptions, since), 16U);
    EXPECT_EQ(offsetof(HistoryOptions, until), 24U);
    EXPECT_EQ(sizeof(HistoryOptions), 32U);
    EXPECT_EQ(offsetof(HistoryRevision, id), 0U);
    EXPECT_EQ(offsetof(HistoryRevision, author), 8U);
    EXPECT_EQ(offsetof(HistoryRevision, description), 16U);
    EXPECT_EQ(offsetof(HistoryRevision, address), 24U);
    EXPECT_EQ(offsetof(HistoryRevision, path), 32U);
    EXPECT_EQ(offsetof(HistoryRevision, modifiedTime), 40U);
    EXPECT_EQ(offsetof(HistoryRevision, revisionTime), 48U);
    EXPECT_EQ(sizeof(HistoryRevision), 56U);
    EXPECT_EQ(offsetof(TreeItem, name), 0U);
    EXPECT_EQ(offsetof(TreeItem, contentId), 8U);
    EXPECT_EQ(offsetof(TreeItem, kind), 16U);
    EXPECT_EQ(offsetof(TreeItem, flags), 20U);
    EXPECT_EQ(offsetof(TreeItem, size), 24U);
    EXPECT_EQ(offsetof(TreeItem, modifiedTime), 32U);
    EXPECT_EQ(sizeof(TreeItem), 40U);
}

TEST(Slots, OfTheHost)
{
    ExpectOrder<IHostWindow>(&IHostWindow::GetWindow);
    ExpectOrder<IHostSettings>(&IHostSettings::ReservedFirst, &IHostSettings::ReservedSecond,
                               &IHostSettings::GetBooleanSetting);
    ExpectOrder<IHostCredentials>(&IHostCredentials::GetCredentials,
                                  &IHostCredentials::ForgetCredentials,
                                  &IHostCredentials::ReportMissingCredentials);
    ExpectOrder<ICopyProgress>(&ICopyProgress::QueryContinue);
    ExpectOrder<ICopyAmounts>(&ICopyAmounts::Report);
    ExpectOrder<IItemList>(&IItemList::GetCount, &IItemList::GetItem);
}

// The system's own on Windows, ours elsewhere.
TEST(Slots, OfTheComponentLayer)
{
    ExpectOrder<::IClassFactory>(&::IClassFactory::CreateInstance, &::IClassFactory::LockServer);
    ExpectOrder<::ISequentialStream>(&::ISequentialStream::Read, &::ISequentialStream::Write);
    ExpectOrder<::ISupportErrorInfo>(&::ISupportErrorInfo::InterfaceSupportsErrorInfo);
    ExpectOrder<::IErrorInfo>(&::IErrorInfo::GetGUID, &::IErrorInfo::GetSource,
                              &::IErrorInfo::GetDescription, &::IErrorInfo::GetHelpFile,
                              &::IErrorInfo::GetHelpContext);
    ExpectOrder<::ICreateErrorInfo>(&::ICreateErrorInfo::SetGUID, &::ICreateErrorInfo::SetSource,
                                    &::ICreateErrorInfo::SetDescription,
                                    &::ICreateErrorInfo::SetHelpFile,
                                    &::ICreateErrorInfo::SetHelpContext);
}

} // namespace

} // namespace tarnwell::test
