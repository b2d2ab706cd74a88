// The classes of the file systems of working copies, and the revisions that they hand out.
#include "module/contractrows.h"
#include "module/localtest.h"

namespace tarnwell::test
{

namespace
{

struct System
{
    const char* name;
    const char* fileName;
    const GUID& classId;
    const char16_t* address; // of a file
};

constexpr System git{"GITFileSystem", "GITFile", CLSID_GITFileSystem, u"git://x/a.txt"};
constexpr System mercurial{"HGFileSystem", "HGFile", CLSID_HGFileSystem, u"hg://x/a.txt"};

template <const System& system> ComPtr<IFileSystem> Make()
{
    return TheModule().CreateFileSystem(system.classId);
}

template <const System& system> ComPtr<::IUnknown> File(const TempFolder&)
{
    ComPtr<IFile> file;
    Make<system>()->GetFile(Ole(system.address), VARIANT_FALSE, file.Out());
    return file.template As<::IUnknown>();
}

// Of a folder, which has no history, so that no client and no repository is needed.
template <const System& system> ComPtr<::IUnknown> NoRevisions(const TempFolder& folder)
{
    ComPtr<IRevisions> revisions;
    Make<system>().template As<IFileSystemRevisions>()->GetRevisions(Ole(folder.Text()), 0,
                                                                     revisions.Out());
    return revisions.As<::IUnknown>();
}

template <const System& system> ClassContract FileSystemContract()
{
    return {
        system.name,
        [](const TempFolder&) { return Make<system>().template As<::IUnknown>(); },
        {IID_IFileSystemRevisions, IID_IFileSystemInit, IID_IFileSystem,
         IidOf<::ISupportErrorInfo>()},
        {IID_IFileSystem, IID_IFileSystemInit, IID_IFileSystemRevisions},
        {
            NullOf<IFileSystem>("GetFolder", Null::Bare,
                                [](IFileSystem* s) {
                                    return s->GetFolder(Ole(system.address), VARIANT_FALSE,
                                                        nullptr);
                                }),
            NullOf<IFileSystem>("GetFile", Null::Bare,
                                [](IFileSystem* s) {
                                    return s->GetFile(Ole(system.address), VARIANT_FALSE, nullptr);
                                }),
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
                                       return s->GetFolder(Ole(system.address), VARIANT_FALSE, out);
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
            return TheModule().CreateInstance(system.classId, outer, iid, out);
        },
    };
}

template <const System& system> ClassContract FileContract()
{
    return {
        system.fileName,
        File<system>,
        {IID_IFileSystemItem, IID_IFileSystemItemComparableUrl, IID_IFile,
         IidOf<::ISupportErrorInfo>()},
        {IID_IFileSystemItem, IID_IFile},
        AddressFileNulls({
            NullOf<IFile>("Open", Null::Bare,
                          [](IFile* f) { return f->Open(readAccess, openExisting, nullptr); }),
        }),
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
            ClearedBy<IFile>("Open", reinterpret_cast<IFileStream*>(1),
                             [](IFile* f, IFileStream** out) { return f->Open(0, 0, out); }),
        },
    };
}

template <const System& system> ClassContract RevisionsContract()
{
    return {
        "OtherRevisions",
        NoRevisions<system>,
        {IID_IRevisions, IidOf<::ISupportErrorInfo>()},
        {IID_IRevisions},
        RevisionsNulls(),
        {
            ClearedBy<IRevisions>(
                "GetItem", reinterpret_cast<IRevision*>(1),
                [](IRevisions* r, IRevision** out) { return r->GetItem(0, out); }),
            ClearedBy<IRevisions>(
                "GetItem", reinterpret_cast<IRevision*>(1),
                [](IRevisions* r, IRevision** out) { return r->GetItem(-1, out); }),
        },
    };
}

template <const System& system> auto Contracts()
{
    return testing::Values(FileSystemContract<system>(), FileContract<system>(),
                           RevisionsContract<system>());
}

INSTANTIATE_TEST_SUITE_P(Git, Contract, Contracts<git>(), ContractName);
INSTANTIATE_TEST_SUITE_P(Mercurial, Contract, Contracts<mercurial>(), ContractName);
INSTANTIATE_TEST_SUITE_P(WorkingCopies, CreationContract,
                         testing::Values(FileSystemContract<git>(),
                                         FileSystemContract<mercurial>()),
                         ContractName);

} // namespace

} // namespace tarnwell::test
