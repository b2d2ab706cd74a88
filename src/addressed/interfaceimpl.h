// Failures of the layer that the URI-addressed file systems share.
#pragma once

#include "addressed/uri.h"
#include "platform/win32.h"

namespace tarnwell
{

// Message 133 for an item that isn't there or is of the other kind, with the facts about it.
[[noreturn]] void ThrowNotFound(const Uri& uri, bool wantFolder, bool existed, bool isDirectory);

// Throws a failed attempt to make an object: message 114 with the system's text.
void ThrowIfNotMade(HRESULT status);

} // namespace tarnwell
