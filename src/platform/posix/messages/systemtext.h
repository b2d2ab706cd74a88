// The C library's own words, in the language of the environment.
#pragma once

#include <string>

namespace tarnwell::posix
{

// What ended a process, as in "Killed"; empty for a signal that the library has no words for.
std::u16string SignalText(int signal);

} // namespace tarnwell::posix
