#include "frame/revisions.h"

#include "frame/boundary.h"
#include "frame/text.h"

#include <tarnwell/classes.h>
#include <tarnwell/filesystem.h>

#include <memory>

namespace tarnwell
{

namespace
{

constexpr Reporter revisionReporter{CLSID_OtherRevision, IID_IRevision};
constexpr Reporter revisionsReporter{CLSID_OtherRevisions, IID_IRevisions};

HRESULT GiveText(const std::u16string& text, BSTR* out)
{
    return AtBoundary(revisionReporter, NullPointer::Published, out,
                      [&] { return ToHost(text, out); });
}

HRESULT GiveTime(std::uint64_t time, std::uint64_t* out)
{
    return AtBoundary(revisionReporter, NullPointer::Published, out, [&] {
        *out = time;
        return S_OK;
    });
}

// A new object of `T`, filled with a copy of `content` and asked for `I`.
template <class T, class I, class Content> HRESULT MakeFilled(Content content, I** out)
{
    ComPtr<ComObject<T>> object;
    const HRESULT status = MakeObject<T>(object);
    if (FAILED(status))
        return status;
    object->Fill(std::move(content));
    return object->QueryInterface(IidOf<I>(), reinterpret_cast<void**>(out));
}

} // namespace

RevisionList::RevisionList(std::vector<RevisionRecord> records)
    : size_(records.size()),
      make_([kept = std::make_shared<const std::vector<RevisionRecord>>(std::move(records))](
                std::size_t index) { return (*kept)[index]; })
{
}

HRESULT COtherRevisionObject::GetRevisionId(BSTR* id)
{
    return GiveText(record_.id, id);
}

HRESULT COtherRevisionObject::GetDescription(BSTR* description)
{
    return GiveText(record_.description, description);
}

HRESULT COtherRevisionObject::GetAuthor(BSTR* author)
{
    return GiveText(record_.author, author);
}

HRESULT COtherRevisionObject::GetModifiedTime(std::uint64_t* fileTime)
{
    return GiveTime(record_.modifiedTime, fileTime);
}

HRESULT COtherRevisionObject::GetRevisionTime(std::uint64_t* fileTime)
{
    return GiveTime(record_.revisionTime, fileTime);
}

HRESULT COtherRevisionObject::GetUri(BSTR* uri)
{
    return GiveText(record_.uri, uri);
}

HRESULT COtherRevisionsObject::GetCount(std::uint32_t* count)
{
    return AtBoundary(revisionsReporter, NullPointer::Published, count, [&] {
        *count = static_cast<std::uint32_t>(revisions_.size());
        return S_OK;
    });
}

HRESULT COtherRevisionsObject::GetItem(std::int32_t index, IRevision** revision)
{
    return AtBoundary(revisionsReporter, NullPointer::Published, revision, [&] {
        if (index < 0 || static_cast<std::size_t>(index) >= revisions_.size())
            return E_INVALIDARG;
        const HRESULT status =
            MakeFilled<COtherRevisionObject>(revisions_[static_cast<std::size_t>(index)], revision);
        if (SUCCEEDED(status))
            return status;
        return PublishFailure(revisionsReporter, MessageId::SupportObjectFailed, status);
    });
}

HRESULT MakeRevisions(RevisionList revisions, const GUID& classId, IRevisions** out)
{
    const HRESULT status = MakeFilled<COtherRevisionsObject>(std::move(revisions), out);
    if (SUCCEEDED(status))
        return status;
    return PublishFailure({classId, IID_IFileSystemRevisions}, MessageId::SupportObjectFailed,
                          status);
}

} // namespace tarnwell
