// The two questions that the clients of working copies are asked.
#pragma once

#include "frame/handle.h"
#include "runner/client.h"

#include <tarnwell/pointers.h>
#include <tarnwell/streams.h>

#include <memory>
#include <string>

namespace tarnwell
{

// A run of a client, with what it is for.
struct WorkingCopyCall
{
    std::u16string program;
    std::u16string arguments;
    std::u16string folder;  // to run in, as it is, also when empty
    std::u16string address; // for failures' texts
};

// What the client printed, from its start. Throws if it can't be run, or wrote anything to its
// error stream.
std::shared_ptr<OsHandle> CaptureOutput(const ClientRow& row, const WorkingCopyCall& call);

// Whether there is a folder at `path`: folders have no history.
bool IsFolderOnDisk(const std::u16string& path);

} // namespace tarnwell
