#include "module/contractrows.h"

namespace tarnwell::test
{

std::vector<NullCall> AddressItemNulls(std::vector<NullCall> more)
{
    std::vector<NullCall> rows = {
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
        NullOf<IFileSystemItemComparableUrl>(
            "GetComparableName", Null::Bare,
            [](IFileSystemItemComparableUrl* i) { return i->GetComparableName(nullptr); }),
        NullOf<IFileSystemItemComparableUrl>(
            "GetComparableUrl", Null::Bare,
            [](IFileSystemItemComparableUrl* i) { return i->GetComparableUrl(nullptr); }),
    };
    rows.insert(rows.end(), more.begin(), more.end());
    return rows;
}

std::vector<NullCall> AddressFileNulls(std::vector<NullCall> more)
{
    more.push_back(NullOf<IFile>("GetSizeLow", Null::Message,
                                 [](IFile* f) { return f->GetSizeLow(nullptr); }));
    more.push_back(NullOf<IFile>("GetSizeHigh", Null::Message,
                                 [](IFile* f) { return f->GetSizeHigh(nullptr); }));
    return AddressItemNulls(std::move(more));
}

std::vector<NullCall> RevisionsNulls()
{
    return {
        NullOf<IRevisions>("GetCount", Null::Message,
                           [](IRevisions* r) { return r->GetCount(nullptr); }),
        NullOf<IRevisions>("GetItem", Null::Message,
                           [](IRevisions* r) { return r->GetItem(0, nullptr); }),
        NullOf<IRevisions>("GetItem out of range", Null::Message,
                           [](IRevisions* r) { return r->GetItem(-1, nullptr); }),
    };
}

std::vector<NullCall> RevisionNulls()
{
    return {
        NullOf<IRevision>("GetRevisionId", Null::Message,
                          [](IRevision* r) { return r->GetRevisionId(nullptr); }),
        NullOf<IRevision>("GetDescription", Null::Message,
                          [](IRevision* r) { return r->GetDescription(nullptr); }),
        NullOf<IRevision>("GetAuthor", Null::Message,
                          [](IRevision* r) { return r->GetAuthor(nullptr); }),
        NullOf<IRevision>("GetModifiedTime", Null::Message,
                          [](IRevision* r) { return r->GetModifiedTime(nullptr); }),
        NullOf<IRevision>("GetRevisionTime", Null::Message,
                          [](IRevision* r) { return r->GetRevisionTime(nullptr); }),
        NullOf<IRevision>("GetUri", Null::Message, [](IRevision* r) { return r->GetUri(nullptr); }),
    };
}

} // namespace tarnwell::test
