// Copies of files from server to server, or within one, through this machine.
#pragma once

#include "addressed/uri.h"
#include "frame/hostuser.h"

#include <tarnwell/host.h>
#include <tarnwell/streams.h>

#include <cstdint>
#include <optional>

namespace tarnwell
{

// Throws if it fails, or, with E_ABORT, if `progress` says no between two blocks; then a part of
// the file stays at `destination`. A null `progress` is never asked.
void FtpCopyUri(const HostUIUser& host, const Uri& source, const Uri& destination,
                ICopyProgress* progress);

// The same with open streams, which it closes at the end. `total` is what the source holds, in
// bytes, if that is known.
void CopyStream(IFileStream* source, IFileStream* destination, ICopyProgress* progress,
                std::optional<std::uint64_t> total = std::nullopt);

} // namespace tarnwell
