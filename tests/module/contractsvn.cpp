// The classes of the Subversion file system, but for those that only a client's answer makes.
#include "module/contractrows.h"
#include "module/localtest.h"

namespace tarnwell::test
{

namespace
{

const std::u16string address = u"svn://host/r/a.txt";

ComPtr<IFileSystem> System()
{
    return TheModule().CreateFileSystem(CLSID_SVNFileSystem);
}

ComPtr<::IUnknown> File(const TempFolder&)
{
    ComPtr<IFile> file;
    System()->GetFile(Ole(address), VARIANT_FALSE, file.Out());
    return file.As<::IUnknown>();
}

ComPtr<::IUnknown> Folder(const TempFolder&)
{
    ComPtr<IFolder> folder;
    System()->GetFolder(Ole(address), VARIANT_FALSE, folder.Out());
    return folder.As<::IUnknown>();
}

ClassContract FileSystemContract()
{
    return {
        "SVNFileSystem",
        [](const TempFolder&) { return System().As<::IUnknown>(); },
        {IID_IFileSystemRevisions, IID_IFileSystemInit, IID_IFileSystem,
         IidOf<::ISupportErrorInfo>()},
        {IID_IFileSystem, IID_IFileSystemInit, IID_IFileSystemRevisions},
        {
            NullOf<IFileSystem>(
                "GetFolder", Null::Bare,
                [](IFileSystem* s) { return s->GetFolder(Ole(address), VARIANT_FALSE, nullptr); }),
            NullOf<IFileSystem>(
                "GetFile", Null::Bare,
                [](IFileSystem* s) { return s->GetFile(Ole(address), VARIANT_FALSE, nullptr); }),
            NullOf<IFileSystem>(
                "GetOperationMask", Null::Bare,
                [](IFileSystem* s) { return s->GetOperationMask(0, nullptr, nullptr); }),
            NullOf<IFileSystem>(
                "CombinePath", Null::Bare,
                [](IFileSystem* s) { return s->CombinePath(Ole(u"a"), Ole(u"b"), nullptr); }),
            NullOf<IFileSystemRevisions>(
                "HasRevisions", Null::Message,
                [](IFileSystemRevisions* s) { return s->HasRevisions(Ole(u"a"), 0, nullptr); }),
            NullOf<IFileSystemRevisions>(
                "GetRevisions", Null::Message,
                [](IFileSystemRevisions* s) { return s->GetRevisions(Ole(u"a"), 0, nullptr); }),
        },
        {
            ClearedBy<IFileSystem>("GetFolder", reinterpret_cast<IFolder*>(1),
                                   [](IFileSystem* s, IFolder** out) {
                                       return s->GetFolder(Ole(u"x://y"), VARIANT_FALSE, out);
                                   }),
            ClearedBy<IFileSystem>("GetFile", reinterpret_cast<IFile*>(1),
                                   [](IFileSystem* s, IFile** out) {
                                       return s->GetFile(Ole(u"x://y"), VARIANT_FALSE, out);
                                   }),
            ClearedBy<IFileSystem>(
                "CreateTempFile", reinterpret_cast<BSTR>(1),
                [](IFileSystem* s, BSTR* out) { return s->CreateTempFile(Ole(u"a"), out); }),
        },
        [](::IUnknown* outer, const GUID& iid, void** out) {
            return TheModule().CreateInstance(CLSID_SVNFileSystem, outer, iid, out);
        },
    };
}

// Without a host object there are no credentials, so that no client is run.
ClassContract FileContract()
{
    return {
        "SVNFile",
        File,
        {IID_IFileSystemItem, IID_IFileSystemItemComparableUrl, IID_IFile,
         IidOf<::ISupportErrorInfo>()},
        {IID_IFileSystemItem, IID_IFile},
        AddressFileNulls({}),
        {
            ClearedBy<IFile>("GetSizeLow", std::uint32_t{7},
                             [](IFile* f, std::uint32_t* out) { return f->GetSizeLow(out); }),
            ClearedBy<IFile>("GetSizeHigh", std::uint32_t{7},
                             [](IFile* f, std::uint32_t* out) { return f->GetSizeHigh(out); }),
            ClearedBy<IFileSystemItem>(
                "GetModifiedTime", std::uint64_t{7},
                [](IFileSystemItem* i, std::uint64_t* out) { return i->GetModifiedTime(out); }),
            ClearedBy<IFileSystemItem>(
                "GetAttributes", std::uint32_t{7},
                [](IFileSystemItem* i, std::uint32_t* out) { return i->GetAttributes(out); }),
            ClearedBy<IFile>(
                "Open", reinterpret_cast<IFileStream*>(1),
                [](IFile* f, IFileStream** out) { return f->Open(readAccess, openExisting, out); }),
        },
    };
}

ClassContract FolderContract()
{
    return {
        "SVNFolder",
        Folder,
        {IID_IFileSystemItem, IID_IFileSystemItemComparableUrl, IID_IFolder,
         IidOf<::ISupportErrorInfo>()},
        {IID_IFileSystemItem, IID_IFolder},
        AddressItemNulls({
            NullOf<IFolder>("GetContents", Null::Bare,
                            [](IFolder* f) { return f->GetContents(nullptr); }),
        }),
        {
            ClearedBy<IFolder>(
                "GetContents", reinterpret_cast<IFolderContents*>(1),
                [](IFolder* f, IFolderContents** out) { return f->GetContents(out); }),
        },
    };
}

INSTANTIATE_TEST_SUITE_P(Subversion, Contract,
                         testing::Values(FileSystemContract(), FileContract(), FolderContract()),
                         ContractName);
INSTANTIATE_TEST_SUITE_P(Subversion, CreationContract, testing::Values(FileSystemContract()),
                         ContractName);

} // namespace

} // namespace tarnwell::test
