// What the server said last, and the failures that carry it. The reply belongs to the thread's last
// call, so it is read before any handle is closed.
#pragma once

#include "frame/messages.h"
#include "platform/win32.h"

#include <string>

namespace tarnwell
{

// Without white space around it; empty if there is none.
std::u16string ReadLastResponse();

// Whether a call failed with `error` because a server that goes on serving said no.
bool WasRefused(DWORD error);

// Whether a refused creation means that the folder is there already. Servers have no code of their
// own for it, so this goes by the words that they use.
bool ResponseSaysExists();

// Throws a failed call: its message, and the last line of the server's reply behind it.
[[noreturn]] void ThrowInternetError(DWORD error, const std::u16string& text);
[[noreturn]] void ThrowInternetError(DWORD error, MessageId id, Inserts inserts = {});
// The same for the call that has just failed.
[[noreturn]] void ThrowLastInternetError(MessageId id, const std::u16string& insert = {});

} // namespace tarnwell
