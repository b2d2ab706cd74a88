// Copies of files from server to server, or within one, through this machine.
#pragma once

#include "addressed/uri.h"
#include "frame/hostuser.h"

#include <tarnwell/host.h>
#include <tarnwell/streams.h>

namespace tarnwell
{

// Throws if it fails, or, with E_ABORT, if `progress` says no between two blocks; then a part of
// the file stays at `destination`. A null `progress` is never asked.
void FtpCopyUri(const HostUIUser& host, const Uri& source, const Uri& destination,
                ICopyProgress* progress);

// The same with open streams, which it closes at the end.
void CopyStream(IFileStream* source, IFileStream* destination, ICopyProgress* progress);

} // namespace tarnwell
