// The named data streams of local files.
#pragma once

#include "frame/publish.h"
#include "platform/win32.h"

#include <string>
#include <vector>

namespace tarnwell
{

// Appends one record to `list` for each named data stream of the file at `path`: `record`, the
// file's own, with the stream's size and the name "file:stream". Fails only if the file can't be
// opened, which is published for `reporter`; what can't be read further has the streams that were
// found. Platforms without named streams find none.
HRESULT EnumerateDataStreams(const std::u16string& path, const WIN32_FIND_DATAW& record,
                             std::vector<WIN32_FIND_DATAW>& list, const Reporter& reporter);

} // namespace tarnwell
