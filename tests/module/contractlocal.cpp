// The classes of the local file system.
#include "module/contract.h"
#include "module/localtest.h"

#include <memory>

namespace tarnwell::test
{

namespace
{

ComPtr<IFileSystem> System()
{
    return TheModule().CreateFileSystem(CLSID_Win32FileSystem);
}

ComPtr<IFile> File(const TempFolder& folder)
{
    ComPtr<IFile> file;
    System()->GetFile(Ole(folder / u"a.txt"), VARIANT_TRUE, file.Out());
    return file;
}

ComPtr<IFolder> Folder(const TempFolder& folder)
{
    ComPtr<IFolder> found;
    System()->GetFolder(Ole(folder.Text()), VARIANT_TRUE, found.Out());
    return found;
}

std::vector<NullCall> ItemNulls()
{
    return {
        NullOf<IFileSystemItem>("GetModifiedTime", Null::Message,
                                [](IFileSystemItem* i) { return i->GetModifiedTime(nullptr); }),
        NullOf<IFileSystemItem>("GetAttributes", Null::Message,
                                [](IFileSystemItem* i) { return i->GetAttributes(nullptr); }),
        NullOf<IFileSystemItem>("GetName", Null::Message,
                                [](IFileSystemItem* i) { return i->GetName(nullptr); }),
        NullOf<IFileSystemItem>("GetParentPath", Null::Message,
                                [](IFileSystemItem* i) { return i->GetParentPath(nullptr); }),
        NullOf<IFileSystemItem>("GetPath", Null::Message,
                                [](IFileSystemItem* i) { return i->GetPath(nullptr); }),
    };
}

ClassContract FileSystemContract()
{
    const std::u16string missing = u"missing/missing";
    return {
        "Win32FileSystem",
        [](const TempFolder&) { return System().As<::IUnknown>(); },
        {IID_IFileSystemInit, IID_IFileSystem, IID_IFileSystemCopyEx, IID_IFileSystemRevisions,
         IidOf<::ISupportErrorInfo>()},
        {IID_IFileSystem, IID_IFileSystemInit, IID_IFileSystemCopyEx, IID_IFileSystemRevisions},
        {
            NullOf<IFileSystem>(
                "GetFolder", Null::Message,
                [](IFileSystem* s) { return s->GetFolder(Ole(u"."), VARIANT_TRUE, nullptr); }),
            NullOf<IFileSystem>(
                "GetFile", Null::Message,
                [](IFileSystem* s) { return s->GetFile(Ole(u"."), VARIANT_TRUE, nullptr); }),
            NullOf<IFileSystem>(
                "CreateTempFile", Null::Message,
                [](IFileSystem* s) { return s->CreateTempFile(Ole(u"a"), nullptr); }),
            NullOf<IFileSystem>(
                "GetOperationMask", Null::Message,
                [](IFileSystem* s) { return s->GetOperationMask(0, nullptr, nullptr); }),
            NullOf<IFileSystem>(
                "CombinePath", Null::Message,
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
                                   [missing](IFileSystem* s, IFolder** out) {
                                       return s->GetFolder(Ole(missing), VARIANT_TRUE, out);
                                   }),
            ClearedBy<IFileSystem>("GetFile", reinterpret_cast<IFile*>(1),
                                   [missing](IFileSystem* s, IFile** out) {
                                       return s->GetFile(Ole(missing), VARIANT_TRUE, out);
                                   }),
        },
        [](::IUnknown* outer, const GUID& iid, void** out) {
            return TheModule().CreateInstance(CLSID_Win32FileSystem, outer, iid, out);
        },
    };
}

ClassContract FileContract()
{
    std::vector<NullCall> nulls = ItemNulls();
    nulls.push_back(NullOf<IFile>("GetSizeLow", Null::Message,
                                  [](IFile* f) { return f->GetSizeLow(nullptr); }));
    nulls.push_back(NullOf<IFile>("GetSizeHigh", Null::Message,
                                  [](IFile* f) { return f->GetSizeHigh(nullptr); }));
    nulls.push_back(NullOf<IFile>("Open", Null::Message, [](IFile* f) {
        return f->Open(readAccess, openExisting, nullptr);
    }));
    return {
        "Win32File",
        [](const TempFolder& folder) { return File(folder).As<::IUnknown>(); },
        // The icon is implemented and not reachable; the settable time is reachable and claims
        // no error information.
        {IID_IFileSystemItem, IID_IFileSystemItemExt, IID_IFile, IidOf<::ISupportErrorInfo>()},
        {IID_IFileSystemItem, IID_IFileSystemItemIcon, IID_IFile},
        nulls,
        {
            ClearedBy<IFile>("Open", reinterpret_cast<IFileStream*>(1),
                             [](IFile* f, IFileStream** out) { return f->Open(0, 0, out); }),
            ClearedBy<IFile>(
                "Open", reinterpret_cast<IFileStream*>(1),
                [](IFile* f, IFileStream** out) { return f->Open(writeAccess, createNew, out); }),
        },
    };
}

ClassContract FolderContract()
{
    std::vector<NullCall> nulls = ItemNulls();
    nulls.push_back(NullOf<IFolder>("GetContents", Null::Bare,
                                    [](IFolder* f) { return f->GetContents(nullptr); }));
    return {
        "Win32Folder",
        [](const TempFolder& folder) { return Folder(folder).As<::IUnknown>(); },
        {IID_IFileSystemItem, IID_IFolder, IidOf<::ISupportErrorInfo>()},
        {IID_IFileSystemItem, IID_IFolder},
        nulls,
        {},
    };
}

ClassContract ContentsContract()
{
    return {
        "Win32FolderContents",
        [](const TempFolder& folder) {
            ComPtr<IFolderContents> contents;
            Folder(folder)->GetContents(contents.Out());
            return contents.As<::IUnknown>();
        },
        {IID_IFolderContents, IidOf<::ISupportErrorInfo>()},
        {IID_IFolderContents},
        {
            NullOf<IFolderContents>("GetCount", Null::Message,
                                    [](IFolderContents* c) { return c->GetCount(nullptr); }),
            NullOf<IFolderContents>("GetItem", Null::Message,
                                    [](IFolderContents* c) { return c->GetItem(0, nullptr); }),
        },
        {
            ClearedBy<IFolderContents>(
                "GetItem", reinterpret_cast<IFileSystemItem*>(1),
                [](IFolderContents* c, IFileSystemItem** out) { return c->GetItem(1, out); }),
        },
    };
}

ClassContract StreamContract()
{
    return {
        "FileStream",
        [](const TempFolder& folder) {
            ComPtr<IFileStream> stream;
            File(folder)->Open(readAccess, openExisting, stream.Out());
            return stream.As<::IUnknown>();
        },
        {IID_IFileStream, IidOf<::ISequentialStream>(), IidOf<::ISupportErrorInfo>(),
         IID_ILib7zInStream, IID_ILib7zSequentialInStream},
        {IID_IFileStream, IidOf<::ISequentialStream>()},
        {
            NullOf<ILib7zInStream>("Read", Null::Message,
                                   [](ILib7zInStream* s) { return s->Read(nullptr, 0, nullptr); }),
        },
        {
            ClearedBy<ILib7zInStream>(
                "Seek", std::uint64_t{99},
                [](ILib7zInStream* s, std::uint64_t* out) { return s->Seek(-1, 0, out); }),
        },
    };
}

INSTANTIATE_TEST_SUITE_P(Local, Contract,
                         testing::Values(FileSystemContract(), FileContract(), FolderContract(),
                                         ContentsContract(), StreamContract()),
                         ContractName);
INSTANTIATE_TEST_SUITE_P(Local, CreationContract, testing::Values(FileSystemContract()),
                         ContractName);

// A folder that can't be read any more when its contents are asked for.
TEST(ContractLocal, ContentsThatFailAreCleared)
{
    auto folder = std::make_unique<TempFolder>();
    const auto found = Folder(*folder);
    folder.reset();
    auto* contents = reinterpret_cast<IFolderContents*>(1);
    EXPECT_LT(found->GetContents(&contents), 0);
    EXPECT_EQ(contents, nullptr);
}

} // namespace

} // namespace tarnwell::test
