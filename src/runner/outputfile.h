// The temporary file that a client's output goes to, and runs with one.
#pragma once

#include "frame/handle.h"
#include "runner/client.h"

#include <functional>
#include <memory>
#include <string>

namespace tarnwell
{

// A new file that the client can inherit. It vanishes with its last handle, also if the host dies.
// `address` is for the text of a failure, `source` names the file system in it.
std::shared_ptr<OsHandle> MakeOutputFile(const std::u16string& address, const char16_t* source);

// Back to the start, to read what the client wrote. False, with the last error set, if it stays at
// the end, where there is nothing to read.
bool Rewind(const OsHandle& file);

// All bytes of the file. One that can't be read looks as if it ended there.
std::string ReadOutput(HANDLE file);

// Throws if what the client left on its error stream, or its exit code, is a failure.
using OutcomeCheck = std::function<void(const ClientOutcome& outcome)>;

// Runs the client with its output in `file`, which stands at its start afterwards. Throws what
// `check` throws, and if the file can't be read from its start.
void RunIntoFile(const ClientRow& row, ClientCall call, const OsHandle& file,
                 const OutcomeCheck& check);

} // namespace tarnwell
