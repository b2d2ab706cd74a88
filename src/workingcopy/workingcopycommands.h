// What Git and Mercurial have in common when their clients are asked.
#pragma once

#include "frame/handle.h"
#include "runner/client.h"

#include <memory>
#include <string>

namespace tarnwell
{

// What the client printed, from its start. Throws if it can't be run, or wrote anything to its
// error stream. `address` is for failures' texts.
std::shared_ptr<OsHandle> CaptureOutput(const ClientRow& row, ClientCall call,
                                        const std::u16string& address);

// Whether there is a folder at `path`: folders have no history.
bool IsFolderOnDisk(const std::u16string& path);

} // namespace tarnwell
