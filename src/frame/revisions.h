// The collection of an item's revisions, common to all file systems that know any.
#pragma once

#include "frame/comobject.h"

#include <tarnwell/revisions.h>

#include <cstdint>
#include <string>
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

// A new collection of `records` for a GetRevisions of the class `classId`. If it can't be made,
// that is published.
HRESULT MakeRevisions(std::vector<RevisionRecord> records, const GUID& classId, IRevisions** out);

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
    void Fill(const RevisionRecord& record)
    {
        record_ = record;
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
    void Fill(std::vector<RevisionRecord> records)
    {
        records_ = std::move(records);
    }

protected:
    ~COtherRevisionsObject() = default;

private:
    std::vector<RevisionRecord> records_;
};

} // namespace tarnwell
