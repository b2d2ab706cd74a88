// Copying a file through its streams, for paths that name a data stream. (On Linux only in tests:
// no path names one there.)
#pragma once

#include "platform/win32.h"

#include <tarnwell/filesystem.h>

#include <string>

namespace tarnwell
{

// `system` finds both ends, of which `source` must exist. A cancel is no failure here: what was
// written stands, and its status. A null `progress` isn't asked. Nothing but the bytes is copied.
HRESULT CopyThroughStreams(IFileSystem& system, const std::u16string& source,
                           const std::u16string& destination, ICopyProgress* progress);

} // namespace tarnwell
