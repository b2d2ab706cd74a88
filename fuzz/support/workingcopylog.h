// What the revisions that are read out of a client's log promise.
#pragma once

#include "frame/revisions.h"
#include "platform/win32.h"

#include <string>
#include <string_view>

namespace tarnwell::fuzz
{

// What reads the log of the file at `path`.
using LogReader = RevisionList (*)(const std::u16string& path, HANDLE file);

// Reads the log `bytes` for a client whose addresses have this scheme.
void CheckLog(std::string_view bytes, LogReader read, std::u16string_view scheme);

} // namespace tarnwell::fuzz
