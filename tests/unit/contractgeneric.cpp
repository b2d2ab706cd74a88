// What the classes promise that file systems of addresses are made of, and the revisions.
#include "frame/revisions.h"
#include "module/contractrows.h"
#include "platform/wide.h"
#include "unit/fakebackend.h"

namespace tarnwell::test
{
namespace
{

ComPtr<IFileSystem> System()
{
    Server() = {};
    ComPtr<IFileSystem> system;
    MakeInstance<FakeFileSystem>(nullptr, IID_IFileSystem, system.OutVoid());
    return system;
}

ComPtr<IFolder> Folder()
{
    ComPtr<IFolder> folder;
    System()->GetFolder(Wide(u"ftp://host/a"), VARIANT_FALSE, folder.Out());
    return folder;
}

ComPtr<IRevisions> Revisions()
{
    ComPtr<IRevisions> revisions;
    MakeRevisions({RevisionRecord{}}, CLSID_GITFileSystem, revisions.Out());
    return revisions;
}

ClassContract FileSystemContract()
{
    return {
        "FileSystem",
        [](const TempFolder&) { return System().As<::IUnknown>(); },
        {IID_IFileSystemInit, IID_IFileSystem, IidOf<::ISupportErrorInfo>()},
        // Claimed also where there are no revisions.
        {IID_IFileSystem, IID_IFileSystemInit, IID_IFileSystemRevisions},
        {
            NullOf<IFileSystem>("GetFolder", Null::Bare,
                                [](IFileSystem* s) {
                                    return s->GetFolder(Wide(u"ftp://h/a"), VARIANT_FALSE, nullptr);
                                }),
            NullOf<IFileSystem>("GetFile", Null::Bare,
                                [](IFileSystem* s) {
                                    return s->GetFile(Wide(u"ftp://h/a"), VARIANT_FALSE, nullptr);
                                }),
            NullOf<IFileSystem>(
                "GetOperationMask", Null::Bare,
                [](IFileSystem* s) { return s->GetOperationMask(0, nullptr, nullptr); }),
            NullOf<IFileSystem>(
                "CombinePath", Null::Bare,
                [](IFileSystem* s) { return s->CombinePath(Wide(u"a"), Wide(u"b"), nullptr); }),
        },
        {
            ClearedBy<IFileSystem>("GetFolder", reinterpret_cast<IFolder*>(1),
                                   [](IFileSystem* s, IFolder** out) {
                                       return s->GetFolder(Wide(u"none"), VARIANT_TRUE, out);
                                   }),
            ClearedBy<IFileSystem>("GetFile", reinterpret_cast<IFile*>(1),
                                   [](IFileSystem* s, IFile** out) {
                                       return s->GetFile(Wide(u"none"), VARIANT_TRUE, out);
                                   }),
            ClearedBy<IFileSystem>(
                "CreateTempFile", reinterpret_cast<BSTR>(1),
                [](IFileSystem* s, BSTR* out) { return s->CreateTempFile(Wide(u"a"), out); }),
        },
        MakeInstance<FakeFileSystem>,
    };
}

ClassContract FileContract()
{
    return {
        "File",
        [](const TempFolder&) {
            ComPtr<IFile> file;
            System()->GetFile(Wide(u"ftp://host/a"), VARIANT_FALSE, file.Out());
            return file.As<::IUnknown>();
        },
        {IID_IFileSystemItem, IID_IFileSystemItemComparableUrl, IID_IFile,
         IidOf<::ISupportErrorInfo>()},
        {IID_IFileSystemItem, IID_IFile},
        AddressFileNulls({}),
        {},
    };
}

ClassContract FolderContract()
{
    return {
        "Folder",
        [](const TempFolder&) { return Folder().As<::IUnknown>(); },
        {IID_IFileSystemItem, IID_IFileSystemItemComparableUrl, IID_IFolder,
         IidOf<::ISupportErrorInfo>()},
        {IID_IFileSystemItem, IID_IFolder},
        AddressItemNulls({
            NullOf<IFolder>("GetContents", Null::Bare,
                            [](IFolder* f) { return f->GetContents(nullptr); }),
        }),
        {},
    };
}

ClassContract ContentsContract()
{
    return {
        "FolderContents",
        [](const TempFolder&) {
            ComPtr<IFolderContents> contents;
            Folder()->GetContents(contents.Out());
            return contents.As<::IUnknown>();
        },
        {IID_IFolderContents, IidOf<::ISupportErrorInfo>()},
        {IID_IFolderContents},
        {
            NullOf<IFolderContents>("GetCount", Null::Bare,
                                    [](IFolderContents* c) { return c->GetCount(nullptr); }),
            NullOf<IFolderContents>("GetItem", Null::Bare,
                                    [](IFolderContents* c) { return c->GetItem(0, nullptr); }),
        },
        {
            ClearedBy<IFolderContents>(
                "GetItem", reinterpret_cast<IFileSystemItem*>(1),
                [](IFolderContents* c, IFileSystemItem** out) { return c->GetItem(0, out); }),
        },
    };
}

ClassContract RevisionsContract()
{
    return {
        "OtherRevisions",
        [](const TempFolder&) { return Revisions().As<::IUnknown>(); },
        {IID_IRevisions, IidOf<::ISupportErrorInfo>()},
        {IID_IRevisions},
        RevisionsNulls(),
        {
            ClearedBy<IRevisions>(
                "GetItem", reinterpret_cast<IRevision*>(1),
                [](IRevisions* r, IRevision** out) { return r->GetItem(1, out); }),
        },
    };
}

ClassContract RevisionContract()
{
    return {
        "OtherRevision",
        [](const TempFolder&) {
            ComPtr<IRevision> revision;
            Revisions()->GetItem(0, revision.Out());
            return revision.As<::IUnknown>();
        },
        {IID_IRevision, IidOf<::ISupportErrorInfo>()},
        {IID_IRevision},
        RevisionNulls(),
        {},
    };
}

INSTANTIATE_TEST_SUITE_P(Addresses, Contract,
                         testing::Values(FileSystemContract(), FileContract(), FolderContract(),
                                         ContentsContract()),
                         ContractName);
INSTANTIATE_TEST_SUITE_P(Addresses, CreationContract, testing::Values(FileSystemContract()),
                         ContractName);
INSTANTIATE_TEST_SUITE_P(Revisions, Contract,
                         testing::Values(RevisionsContract(), RevisionContract()), ContractName);

} // namespace
} // namespace tarnwell::test
