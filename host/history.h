// Histories in full, where the file system tells them.
#pragma once

#include "session.h"

namespace tarnwell::host
{

// Whether there are such of the place, and the user wants them.
bool HasHistory(const Session& session, const Place& place);

// Prints the revisions, each as soon as it is found; how many there were. Throws Failure.
std::size_t PrintHistory(const Session& session, const Place& place);

} // namespace tarnwell::host
