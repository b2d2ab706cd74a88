// The classes of the Subversion file system, but for those that only a client's answer makes.
#include "module/contract.h"

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
            NullOf<IFileSystem>("GetFolder", Null::Bare,
                                [](IFileSystem* s)
                                { return s->GetFolder(Ole(address), VARIANT_FALSE, nullptr); }),
            NullOf<IFileSystem>("GetFile", Null::Bare,
                                [](IFileSystem* s)
                                { return s->GetFile(Ole(address), VARIANT_FALSE, nullptr); }),
            NullOf<IFileSystem>("GetOperationMask", Null::Bare,
                                [](IFileSystem* s)
                                { return s->GetOperationMask(0, nullptr, nullptr); }),
            NullOf<IFileSystem>("CombinePath", Null::Bare,
                                [](IFileSystem* s)
                                { return s->CombinePath(Ole(u"a"), Ole(u"b"), nullptr); }),
            NullOf<IFileSystemRevisions>("HasRevisions", Null::Message,
                                         [](IFileSystemRevisions* s)
                                         { return s->HasRevisions(Ole(u"a"), 0, nullptr); }),
            NullOf<IFileSystemRevisions>("GetRevisions", Null::Message,
                                         [](IFileSystemRevisions* s)
                                         { return s->GetRevisions(Ole(u"a"), 0, nullptr); }),
        },
        {
            ClearedBy<IFileSystem>("GetFolder", reinterpret_cast<IFolder*>(1),
                                   [](IFileSystem* s, IFolder** out)
                                   { return s->GetFolder(Ole(u"x://y"), VARIANT_FALSE, out); }),
            ClearedBy<IFileSystem>("GetFile", reinterpret_cast<IFile*>(1),
                                   [](IFileSystem* s, IFile** out)
                                   { return s->GetFile(Ole(u"x://y"), VARIANT_FALSE, out); }),
        },
    };
}

// Of both kinds of item.
std::vector<NullCall> ItemNulls()
{
    return {
        NullOf<IFileSystemItem>("GetModifiedTime", Null::Bare,
                                [](IFileSystemItem* i) { return i->GetModifiedTime(nullptr); }),
        NullOf<IFileSystemItem>("GetAttributes", Null::Bare,
                                [](IFileSystemItem* i) { return i->GetAttributes(nullptr); }),
        NullOf<IFileSystemItem>("GetName", Null::Bare,
                                [](IFileSystemItem* i) { return i->GetName(nullptr); }),
        NullOf<IFileSystemItem>("GetParentPath", Null::Bare,
                                [](IFileSystemItem* i) { return i->GetParentPath(nullptr); }),
        NullOf<IFileSystemItem>("GetPath", Null::Bare,
                                [](IFileSystemItem* i) { return i->GetPath(nullptr); }),
        NullOf<IFileSystemItemComparableUrl>("GetComparableName", Null::Bare,
                                             [](IFileSystemItemComparableUrl* i)
                                             { return i->GetComparableName(nullptr); }),
        NullOf<IFileSystemItemComparableUrl>("GetComparableUrl", Null::Bare,
                                             [](IFileSystemItemComparableUrl* i)
                                             { return i->GetComparableUrl(nullptr); }),
    };
}

// Without a host object there are no credentials, so that no client is run.
ClassContract FileContract()
{
    ClassContract contract{
        "SVNFile",
        File,
        {IID_IFileSystemItem, IID_IFileSystemItemComparableUrl, IID_IFile,
         IidOf<::ISupportErrorInfo>()},
        {IID_IFileSystemItem, IID_IFile},
        ItemNulls(),
        {
            ClearedBy<IFile>("GetSizeLow", std::uint32_t{7},
                             [](IFile* f, std::uint32_t* out) { return f->GetSizeLow(out); }),
            ClearedBy<IFile>("GetSizeHigh", std::uint32_t{7},
                             [](IFile* f, std::uint32_t* out) { return f->GetSizeHigh(out); }),
            ClearedBy<IFileSystemItem>("GetAttributes", std::uint32_t{7},
                                       [](IFileSystemItem* i, std::uint32_t* out)
                                       { return i->GetAttributes(out); }),
            ClearedBy<IFile>("Open", reinterpret_cast<IFileStream*>(1),
                             [](IFile* f, IFileStream** out)
                             { return f->Open(readAccess, openExisting, out); }),
        },
    };
    contract.nulls.push_back(NullOf<IFile>("GetSizeLow", Null::Message,
                                           [](IFile* f) { return f->GetSizeLow(nullptr); }));
    contract.nulls.push_back(NullOf<IFile>("GetSizeHigh", Null::Message,
                                           [](IFile* f) { return f->GetSizeHigh(nullptr); }));
    return contract;
}

ClassContract FolderContract()
{
    ClassContract contract{
        "SVNFolder",
        Folder,
        {IID_IFileSystemItem, IID_IFileSystemItemComparableUrl, IID_IFolder,
         IidOf<::ISupportErrorInfo>()},
        {IID_IFileSystemItem, IID_IFolder},
        ItemNulls(),
        {
            ClearedBy<IFolder>("GetContents", reinterpret_cast<IFolderContents*>(1),
                               [](IFolder* f, IFolderContents** out)
                               { return f->GetContents(out); }),
        },
    };
    contract.nulls.push_back(NullOf<IFolder>("GetContents", Null::Bare,
                                             [](IFolder* f) { return f->GetContents(nullptr); }));
    return contract;
}

INSTANTIATE_TEST_SUITE_P(Subversion, Contract,
                         testing::Values(FileSystemContract(), FileContract(), FolderContract()),
                         ContractName);

} // namespace

} // namespace tarnwell::test
