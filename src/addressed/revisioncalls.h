// The revision calls of file systems that hide every failure: a missing client, an item without
// history and a broken repository all read as "no revisions".
#pragma once

#include "frame/boundary.h"
#include "frame/revisions.h"

#include <tarnwell/filesystem.h>

namespace tarnwell
{

// What `read` gives; an empty list if it throws, whatever that is.
template <class Read> std::vector<RevisionRecord> RevisionsOrNone(Read&& read) noexcept
{
    try
    {
        return read();
    }
    catch (...)
    {
        return {};
    }
}

template <class Read>
HRESULT HasRevisionsHidingFailures(const GUID& classId, VARIANT_BOOL* has, Read&& read) noexcept
{
    return AtBoundary(Reporter{classId, IID_IFileSystemRevisions}, NullPointer::Published, has,
                      [&] {
                          *has = RevisionsOrNone(read).empty() ? VARIANT_FALSE : VARIANT_TRUE;
                          return S_OK;
                      });
}

template <class Read>
HRESULT GetRevisionsHidingFailures(const GUID& classId, IRevisions** revisions,
                                   Read&& read) noexcept
{
    return AtBoundary(Reporter{classId, IID_IFileSystemRevisions}, NullPointer::Published,
                      revisions,
                      [&] { return MakeRevisions(RevisionsOrNone(read), classId, revisions); });
}

} // namespace tarnwell
