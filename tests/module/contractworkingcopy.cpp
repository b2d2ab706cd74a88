// The classes of the file systems of working copies, and the revisions that they hand out.
#include "module/contract.h"

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
                                   [](IFileSystem* s, IFolder** out) {
                                       return s->GetFolder(Ole(system.address), VARIANT_FALSE, out);
                                   }),
            ClearedBy<IFileSystem>("GetFile", reinterpret_cast<IFile*>(1),
                                   [](IFileSystem* s, IFile** out)
                                   { return s->GetFile(Ole(u"x://y"), VARIANT_FALSE, out); }),
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
        {
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
            NullOf<IFile>("GetSizeLow", Null::Message,
                          [](IFile* f) { return f->GetSizeLow(nullptr); }),
            NullOf<IFile>("GetSizeHigh", Null::Message,
                          [](IFile* f) { return f->GetSizeHigh(nullptr); }),
            NullOf<IFile>("Open", Null::Bare,
                          [](IFile* f) { return f->Open(readAccess, openExisting, nullptr); }),
        },
        {
            ClearedBy<IFile>("GetSizeLow", std::uint32_t{7},
                             [](IFile* f, std::uint32_t* out) { return f->GetSizeLow(out); }),
            ClearedBy<IFileSystemItem>("GetAttributes", std::uint32_t{7},
                                       [](IFileSystemItem* i, std::uint32_t* out)
                                       { return i->GetAttributes(out); }),
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
        {
            NullOf<IRevisions>("GetCount", Null::Message,
                               [](IRevisions* r) { return r->GetCount(nullptr); }),
            NullOf<IRevisions>("GetItem", Null::Message,
                               [](IRevisions* r) { return r->GetItem(0, nullptr); }),
        },
        {
            ClearedBy<IRevisions>("GetItem", reinterpret_cast<IRevision*>(1),
                                  [](IRevisions* r, IRevision** out)
                                  { return r->GetItem(0, out); }),
            ClearedBy<IRevisions>("GetItem", reinterpret_cast<IRevision*>(1),
                                  [](IRevisions* r, IRevision** out)
                                  { return r->GetItem(-1, out); }),
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

} // namespace

} // namespace tarnwell::test
