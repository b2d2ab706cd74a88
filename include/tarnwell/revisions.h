/// @file
/// Revisions: the earlier (and other) versions of one item.
///
/// Both objects are copies of what was found; they may be read from any thread, also from several
/// at once, and outlive the file system that made them. A null out pointer is E_POINTER, with a
/// text, in every method here.
#pragma once

#include <tarnwell/interfaceid.h>

namespace tarnwell
{

/// One entry of a list.
///
/// Where there is a working copy, the first entry stands for it. It has the label "Working Copy",
/// in the user's language: as its description, or as its identifier for Perforce. Its author and
/// identifier are otherwise empty, its times 0 (but for local files), and its address is a local
/// path.
struct IRevision : ::IUnknown
{
    /// The revision's name for the user: a number, a hash or a position.
    /// @param[out] id  The caller's to free.
    /// @return S_OK; E_OUTOFMEMORY, bare.
    virtual HRESULT STDMETHODCALLTYPE GetRevisionId(BSTR* id) = 0;

    /// The message that the revision was recorded with; it may have several lines.
    /// @param[out] description  The caller's to free.
    /// @return S_OK; E_OUTOFMEMORY, bare.
    virtual HRESULT STDMETHODCALLTYPE GetDescription(BSTR* description) = 0;

    /// Who recorded it, as the file system tells it.
    /// @param[out] author  The caller's to free.
    /// @return S_OK; E_OUTOFMEMORY, bare.
    virtual HRESULT STDMETHODCALLTYPE GetAuthor(BSTR* author) = 0;

    /// The time of the content.
    /// @param[out] fileTime  In 100-nanosecond intervals since 1 January 1601 UTC; 0 if unknown.
    /// @return S_OK.
    virtual HRESULT STDMETHODCALLTYPE GetModifiedTime(std::uint64_t* fileTime) = 0;

    /// The time at which the revision was recorded.
    /// @param[out] fileTime  In 100-nanosecond intervals since 1 January 1601 UTC; 0 if unknown.
    /// @return S_OK.
    virtual HRESULT STDMETHODCALLTYPE GetRevisionTime(std::uint64_t* fileTime) = 0;

    /// The address that opens this revision, through `GetFile` of the file system that made the
    /// list. The working copy's is the exception: a local path, for the local file system.
    /// @param[out] uri  The caller's to free.
    /// @return S_OK; E_OUTOFMEMORY, bare.
    virtual HRESULT STDMETHODCALLTYPE GetUri(BSTR* uri) = 0;

protected:
    ~IRevision() = default;
};

/// A fixed list, the latest revision first; where there is a working copy, it comes before that.
struct IRevisions : ::IUnknown
{
    /// How many entries there are.
    /// @param[out] count  0 if there are none, or if finding them failed: the file systems hide
    ///                    failures here.
    /// @return S_OK.
    virtual HRESULT STDMETHODCALLTYPE GetCount(std::uint32_t* count) = 0;

    /// One entry, as a new object each time.
    /// @param      index     From 0.
    /// @param[out] revision  The caller's to release; null on failure.
    /// @return S_OK; E_INVALIDARG, bare, for an index out of range; E_OUTOFMEMORY with a text.
    virtual HRESULT STDMETHODCALLTYPE GetItem(std::int32_t index, IRevision** revision) = 0;

protected:
    ~IRevisions() = default;
};

} // namespace tarnwell

TARNWELL_INTERFACE_ID(IRevision, 674B8130)
TARNWELL_INTERFACE_ID(IRevisions, 674B8131)
