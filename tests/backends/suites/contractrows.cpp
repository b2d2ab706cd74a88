#include "backends/suites/contractrows.h"

namespace tarnwell::test
{
namespace
{

// Rows for methods of interface `I`.
template <class I, class F> NullCall NullOf(const char* method, Null leaves, F call)
{
    return {method, leaves, [call](::IUnknown* object) {
                const auto view = ComPtr<::IUnknown>::Share(object).As<I>();
                return view ? call(view.Get()) : E_NOINTERFACE;
            }};
}

// For those that take nothing but where their value goes.
template <class I, class Value>
NullCall NullOf(const char* method, Null leaves, HRESULT (STDMETHODCALLTYPE I::*getter)(Value*))
{
    return NullOf<I>(method, leaves, [getter](I* object) { return (object->*getter)(nullptr); });
}

// `call` gets the interface and the address of a `Value` that holds `set`.
template <class I, class Value, class F>
FailingCall ClearedBy(const char* method, Value set, F call)
{
    return {method, [set, call](::IUnknown* object) {
                Value value = set;
                const auto view = ComPtr<::IUnknown>::Share(object).As<I>();
                return view && call(view.Get(), &value) < 0 && value == Value{};
            }};
}

template <class I, class Value>
FailingCall ClearedBy(const char* method, HRESULT (STDMETHODCALLTYPE I::*getter)(Value*))
{
    Value set{};
    if constexpr (std::is_pointer_v<Value>)
        set = reinterpret_cast<Value>(1);
    else
        set = 7;
    return ClearedBy<I>(method, set,
                        [getter](I* object, Value* out) { return (object->*getter)(out); });
}

template <class I> I* NoObject()
{
    return reinterpret_cast<I*>(1);
}

// Refused or missing in every file system.
const std::u16string nowhere = u"x://y/z";

Null Leaves(const Backend& backend)
{
    return backend.family == Family::Local ? Null::Message : Null::Bare;
}

ClassContract OfFileSystem(const Backend& backend)
{
    const Null leaves = Leaves(backend);
    ClassContract contract{
        {IID_IFileSystemInit, IID_IFileSystem, IidOf<::ISupportErrorInfo>()},
        // Claimed also where there are no revisions.
        {IID_IFileSystem, IID_IFileSystemInit, IID_IFileSystemRevisions},
        {
            NullOf<IFileSystem>(
                "GetFolder", leaves,
                [](IFileSystem* s) { return s->GetFolder(Ole(nowhere), VARIANT_FALSE, nullptr); }),
            NullOf<IFileSystem>(
                "GetFile", leaves,
                [](IFileSystem* s) { return s->GetFile(Ole(nowhere), VARIANT_FALSE, nullptr); }),
            NullOf<IFileSystem>(
                "GetOperationMask", leaves,
                [](IFileSystem* s) { return s->GetOperationMask(0, nullptr, nullptr); }),
            NullOf<IFileSystem>(
                "CombinePath", leaves,
                [](IFileSystem* s) { return s->CombinePath(Ole(u"a"), Ole(u"b"), nullptr); }),
        },
        {
            ClearedBy<IFileSystem>("GetFolder", NoObject<IFolder>(),
                                   [](IFileSystem* s, IFolder** out) {
                                       return s->GetFolder(Ole(nowhere), VARIANT_TRUE, out);
                                   }),
            ClearedBy<IFileSystem>("GetFile", NoObject<IFile>(),
                                   [](IFileSystem* s, IFile** out) {
                                       return s->GetFile(Ole(nowhere), VARIANT_TRUE, out);
                                   }),
            ClearedBy<IFileSystem>(
                "CreateTempFile", reinterpret_cast<BSTR>(1),
                [](IFileSystem* s, BSTR* out) { return s->CreateTempFile(Ole(nowhere), out); }),
        },
    };
    if (backend.revisions)
    {
        contract.nulls.push_back(NullOf<IFileSystemRevisions>(
            "HasRevisions", Null::Message,
            [](IFileSystemRevisions* s) { return s->HasRevisions(Ole(u"a"), 0, nullptr); }));
        contract.nulls.push_back(NullOf<IFileSystemRevisions>(
            "GetRevisions", Null::Message,
            [](IFileSystemRevisions* s) { return s->GetRevisions(Ole(u"a"), 0, nullptr); }));
    }
    if (backend.family == Family::Local)
    {
        contract.interfaces = {IID_IFileSystemInit, IID_IFileSystem, IID_IFileSystemCopyEx,
                               IID_IFileSystemRevisions, IidOf<::ISupportErrorInfo>()};
        contract.errorInfo.push_back(IID_IFileSystemCopyEx);
        contract.nulls.push_back(
            NullOf<IFileSystem>("CreateTempFile", Null::Message, [](IFileSystem* s) {
                return s->CreateTempFile(Ole(u"a"), nullptr);
            }));
    }
    else if (backend.revisions)
    {
        contract.interfaces.insert(contract.interfaces.begin(), IID_IFileSystemRevisions);
    }
    return contract;
}

std::vector<NullCall> ItemNulls(const Backend& backend)
{
    const Null leaves = Leaves(backend);
    std::vector<NullCall> nulls = {
        NullOf("GetModifiedTime", leaves, &IFileSystemItem::GetModifiedTime),
        NullOf("GetAttributes", leaves, &IFileSystemItem::GetAttributes),
        NullOf("GetName", leaves, &IFileSystemItem::GetName),
        NullOf("GetParentPath", leaves, &IFileSystemItem::GetParentPath),
        NullOf("GetPath", leaves, &IFileSystemItem::GetPath),
    };
    if (backend.family == Family::Addressed)
    {
        nulls.push_back(
            NullOf("GetComparableName", leaves, &IFileSystemItemComparableUrl::GetComparableName));
        nulls.push_back(
            NullOf("GetComparableUrl", leaves, &IFileSystemItemComparableUrl::GetComparableUrl));
    }
    return nulls;
}

Null OpenLeaves(const Backend& backend)
{
    switch (backend.openIntoNothing)
    {
    case OpenIntoNothing::FailsWithText:
        return Null::Message;
    case OpenIntoNothing::Succeeds:
        return Null::Success;
    case OpenIntoNothing::FailsBare:
        break;
    }
    return Null::Bare;
}

ClassContract OfFile(const Backend& backend)
{
    ClassContract contract{
        {IID_IFileSystemItem, IID_IFileSystemItemComparableUrl, IID_IFile,
         IidOf<::ISupportErrorInfo>()},
        {IID_IFileSystemItem, IID_IFile},
        ItemNulls(backend),
        {ClearedBy<IFile>("Open", NoObject<IFileStream>(),
                          [](IFile* f, IFileStream** out) { return f->Open(0, 0, out); })},
        {ClearedBy<IFile>(
            "Open", NoObject<IFileStream>(),
            [](IFile* f, IFileStream** out) { return f->Open(readAccess, openExisting, out); })},
    };
    contract.nulls.push_back(NullOf("GetSizeLow", Null::Message, &IFile::GetSizeLow));
    contract.nulls.push_back(NullOf("GetSizeHigh", Null::Message, &IFile::GetSizeHigh));
    contract.nulls.push_back(NullOf<IFile>("Open", OpenLeaves(backend), [](IFile* f) {
        return f->Open(readAccess, openExisting, nullptr);
    }));
    if (backend.family == Family::Local)
    {
        // The icon is implemented and not reachable; the settable time is reachable and claims no
        // error information.
        contract.interfaces[1] = IID_IFileSystemItemExt;
        contract.errorInfo.push_back(IID_IFileSystemItemIcon);
        return contract;
    }
    for (const FailingCall& row : {ClearedBy("GetSizeLow", &IFile::GetSizeLow),
                                   ClearedBy("GetSizeHigh", &IFile::GetSizeHigh),
                                   ClearedBy("GetModifiedTime", &IFileSystemItem::GetModifiedTime),
                                   ClearedBy("GetAttributes", &IFileSystemItem::GetAttributes)})
        contract.failuresOfMissing.push_back(row);
    return contract;
}

ClassContract OfFolder(const Backend& backend)
{
    ClassContract contract{
        {IID_IFileSystemItem, IID_IFolder, IidOf<::ISupportErrorInfo>()},
        {IID_IFileSystemItem, IID_IFolder},
        ItemNulls(backend),
        {},
    };
    contract.nulls.push_back(NullOf("GetContents", Null::Bare, &IFolder::GetContents));
    if (backend.missingFoldersFail)
        contract.failuresOfMissing.push_back(ClearedBy("GetContents", &IFolder::GetContents));
    if (backend.family == Family::Addressed)
        contract.interfaces.insert(contract.interfaces.begin() + 1,
                                   IID_IFileSystemItemComparableUrl);
    return contract;
}

ClassContract OfContents(const Backend& backend)
{
    return {
        {IID_IFolderContents, IidOf<::ISupportErrorInfo>()},
        {IID_IFolderContents},
        {NullOf("GetCount", Leaves(backend), &IFolderContents::GetCount),
         NullOf<IFolderContents>("GetItem", Leaves(backend),
                                 [](IFolderContents* c) { return c->GetItem(0, nullptr); })},
        {ClearedBy<IFolderContents>(
            "GetItem", NoObject<IFileSystemItem>(),
            [](IFolderContents* c, IFileSystemItem** out) { return c->GetItem(-1, out); })},
    };
}

ClassContract OfStream(const Backend& backend)
{
    ClassContract contract{
        {IID_IFileStream, IidOf<::ISequentialStream>(), IidOf<::ISupportErrorInfo>()},
        {IID_IFileStream, IidOf<::ISequentialStream>()},
        {},
        {},
    };
    if (backend.family == Family::Local)
    {
        contract.interfaces.push_back(IID_ILib7zInStream);
        contract.interfaces.push_back(IID_ILib7zSequentialInStream);
        contract.nulls.push_back(NullOf<ILib7zInStream>(
            "Read", Null::Message, [](auto* s) { return s->Read(nullptr, 0, nullptr); }));
        contract.failures.push_back(ClearedBy<ILib7zInStream>(
            "Seek", std::uint64_t{99},
            [](ILib7zInStream* s, std::uint64_t* out) { return s->Seek(-1, 0, out); }));
    }
    else
    {
        if (!backend.writes)
            contract.nulls.push_back(NullOf<::ISequentialStream>(
                "Write", Null::Bare, [](auto* s) { return s->Write("", 0, nullptr); }));
        contract.failures.push_back(ClearedBy<::ISequentialStream>(
            "Write", ULONG{7}, [](auto* s, ULONG* written) { return s->Write("x", 1, written); }));
    }
    return contract;
}

ClassContract OfRevisions()
{
    return {
        {IID_IRevisions, IidOf<::ISupportErrorInfo>()},
        {IID_IRevisions},
        {NullOf("GetCount", Null::Message, &IRevisions::GetCount),
         NullOf<IRevisions>("GetItem", Null::Message,
                            [](IRevisions* r) { return r->GetItem(0, nullptr); }),
         NullOf<IRevisions>("GetItem out of range", Null::Message,
                            [](IRevisions* r) { return r->GetItem(-1, nullptr); })},
        {ClearedBy<IRevisions>("GetItem", NoObject<IRevision>(),
                               [](IRevisions* r, IRevision** out) { return r->GetItem(99, out); }),
         ClearedBy<IRevisions>("GetItem", NoObject<IRevision>(),
                               [](IRevisions* r, IRevision** out) { return r->GetItem(-1, out); })},
    };
}

ClassContract OfRevision()
{
    return {
        {IID_IRevision, IidOf<::ISupportErrorInfo>()},
        {IID_IRevision},
        {NullOf("GetRevisionId", Null::Message, &IRevision::GetRevisionId),
         NullOf("GetDescription", Null::Message, &IRevision::GetDescription),
         NullOf("GetAuthor", Null::Message, &IRevision::GetAuthor),
         NullOf("GetModifiedTime", Null::Message, &IRevision::GetModifiedTime),
         NullOf("GetRevisionTime", Null::Message, &IRevision::GetRevisionTime),
         NullOf("GetUri", Null::Message, &IRevision::GetUri)},
        {},
    };
}

} // namespace

std::string NameOf(Kind kind)
{
    constexpr const char* names[] = {"FileSystem", "File",      "Folder",  "Contents",
                                     "Stream",     "Revisions", "Revision"};
    return names[static_cast<std::size_t>(kind)];
}

std::vector<Kind> KindsOf(const Backend& backend)
{
    std::vector<Kind> kinds = {Kind::FileSystem, Kind::File, Kind::Stream};
    if (backend.folders)
        kinds.insert(kinds.end(), {Kind::Folder, Kind::Contents});
    if (backend.revisions)
        kinds.push_back(Kind::Revisions);
    if (backend.history)
        kinds.push_back(Kind::Revision);
    return kinds;
}

ClassContract ContractOf(const Backend& backend, Kind kind)
{
    switch (kind)
    {
    case Kind::FileSystem:
        return OfFileSystem(backend);
    case Kind::File:
        return OfFile(backend);
    case Kind::Folder:
        return OfFolder(backend);
    case Kind::Contents:
        return OfContents(backend);
    case Kind::Stream:
        return OfStream(backend);
    case Kind::Revisions:
        return OfRevisions();
    case Kind::Revision:
        return OfRevision();
    }
    return {};
}

} // namespace tarnwell::test
