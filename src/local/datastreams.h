// The named data streams of local files. Only Windows has them: in the Linux library no file has
// any, and no path is split at a colon. The walk runs there only in tests, with stand-ins.
#pragma once

#include "frame/publish.h"
#include "platform/win32.h"

#include <string>
#include <vector>

namespace tarnwell
{

// Appends one record to `list` for each named data stream of the file at `path`: `record`, the
// file's own, with the stream's size and the name "file:stream". Fails only if the file can't be
// opened, which is published for `reporter`; a walk that breaks off keeps what it has found.
HRESULT EnumerateDataStreams(const std::u16string& path, const WIN32_FIND_DATAW& record,
                             std::vector<WIN32_FIND_DATAW>& list, const Reporter& reporter);

} // namespace tarnwell
