// The temporary file that a client's output goes to.
#pragma once

#include "frame/handle.h"

#include <memory>
#include <string>

namespace tarnwell
{

// A new file that the client can inherit. It has no other owner than this handle: it vanishes
// with the last one, also if the host dies. `address` is for the failure's text, `source` names
// the file system in it.
std::shared_ptr<OsHandle> MakeOutputFile(const std::u16string& address, const char16_t* source);

// Back to the start, to read what the client wrote. False, with the last error set, if it stays at
// the end, where there is nothing to read.
bool Rewind(const OsHandle& file);

} // namespace tarnwell
