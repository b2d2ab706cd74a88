// Revisions: the earlier (and other) versions of one item.
//
// Both objects are copies of what was found; they may be read from any thread and outlive the
// file system that made them.
#pragma once

#include <tarnwell/interfaceid.h>

namespace tarnwell
{

struct IRevision : ::IUnknown
{
    // The revision's name for the user: a number, a hash or a position.
    virtual HRESULT STDMETHODCALLTYPE GetRevisionId(BSTR* id) = 0;

    // The message that the revision was recorded with.
    virtual HRESULT STDMETHODCALLTYPE GetDescription(BSTR* description) = 0;

    // Who recorded it, as the file system tells it.
    virtual HRESULT STDMETHODCALLTYPE GetAuthor(BSTR* author) = 0;

    // The time of the content, and the time at which the revision was recorded; 0 if unknown.
    virtual HRESULT STDMETHODCALLTYPE GetModifiedTime(std::uint64_t* fileTime) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetRevisionTime(std::uint64_t* fileTime) = 0;

    // The address that opens this revision through the same file system's `GetFile`. The entry
    // of the working copy ("Working Copy") is the exception: its address is a local path, for
    // the local file system.
    virtual HRESULT STDMETHODCALLTYPE GetUri(BSTR* uri) = 0;

protected:
    ~IRevision() = default;
};

// A fixed list, the latest revision first; where there is a working copy, it comes before that.
struct IRevisions : ::IUnknown
{
    virtual HRESULT STDMETHODCALLTYPE GetCount(std::uint32_t* count) = 0;

    // A new object for entry `index`, counted from 0. E_INVALIDARG, bare, for an index out of
    // range.
    virtual HRESULT STDMETHODCALLTYPE GetItem(std::int32_t index, IRevision** revision) = 0;

protected:
    ~IRevisions() = default;
};

TARNWELL_INTERFACE_ID(IRevision, 0x674B8130);
TARNWELL_INTERFACE_ID(IRevisions, 0x674B8131);

} // namespace tarnwell
