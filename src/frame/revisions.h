// The collection of an item's revisions, common to all file systems that know any.
#pragma once

#include "frame/comobject.h"

#include <tarnwell/revisions.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace tarnwell
{

struct RevisionRecord
{
    std::u16string id; // the revision's name for the user
    std::u16string description;
    std::u16string author;
    std::u16string uri;             // opens this revision through the same file system
    std::uint64_t modifiedTime = 0; // FILETIME values
    std::uint64_t revisionTime = 0;
};

// The revisions of an item, the latest first. A record may be made only when it is asked for: most
// hosts show few of a long history.
class RevisionList
{
public:
    // Makes the record of an index. Any thread may call it, at any time.
    using Maker = std::function<RevisionRecord(std::size_t index)>;

    RevisionList() = default;
    RevisionList(std::vector<RevisionRecord> records); // NOLINT(google-explicit-constructor)
    RevisionList(std::size_t size, Maker make) : size_(size), make_(std::move(make)) {}

    std::size_t size() const
    {
        return size_;
    }
    bool empty() const
    {
        return size_ == 0;
    }
    RevisionRecord operator[](std::size_t index) const
    {
        return make_(index);
    }

private:
    std::size_t size_ = 0;
    Maker make_;
};

// A new collection of `revisions` for a GetRevisions of the class `classId`. If it can't be made,
// that is published.
HRESULT MakeRevisions(RevisionList revisions, const GUID& classId, IRevisions** out);

class COtherRevisionObject : public IRevision, public ErrorInfoFor<IRevision>
{
public:
    using Interfaces = InterfaceList<IRevision, ::ISupportErrorInfo>;

    HRESULT STDMETHODCALLTYPE GetRevisionId(BSTR* id) override;
    HRESULT STDMETHODCALLTYPE GetDescription(BSTR* description) override;
    HRESULT STDMETHODCALLTYPE GetAuthor(BSTR* author) override;
    HRESULT STDMETHODCALLTYPE GetModifiedTime(std::uint64_t* fileTime) override;
    HRESULT STDMETHODCALLTYPE GetRevisionTime(std::uint64_t* fileTime) override;
    HRESULT STDMETHODCALLTYPE GetUri(BSTR* uri) override;

    // Called once, before the object is handed out.
    void Fill(RevisionRecord record)
    {
        record_ = std::move(record);
    }

protected:
    ~COtherRevisionObject() = default;

private:
    RevisionRecord record_;
};

class COtherRevisionsObject : public IRevisions, public ErrorInfoFor<IRevisions>
{
public:
    using Interfaces = InterfaceList<IRevisions, ::ISupportErrorInfo>;

    HRESULT STDMETHODCALLTYPE GetCount(std::uint32_t* count) override;
    HRESULT STDMETHODCALLTYPE GetItem(std::int32_t index, IRevision** revision) override;

    // Called once, before the object is handed out.
    void Fill(RevisionList revisions)
    {
        revisions_ = std::move(revisions);
    }

protected:
    ~COtherRevisionsObject() = default;

private:
    RevisionList revisions_;
};

} // namespace tarnwell
