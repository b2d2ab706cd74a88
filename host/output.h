// What the program prints: UTF-8, kept back until there is enough of it.
#pragma once

#include <string>
#include <string_view>

namespace tarnwell::host
{

// Both throw Failure if the output can't be written.
void Print(std::u16string_view text);
void PrintBytes(std::string_view bytes);

// To be called before the program ends.
void FlushOutput();

// At once, behind what was printed before. Where standard error is closed nobody is told.
void PrintError(std::u16string_view text);

// A name for the user's eyes: on a terminal, control characters show as "?".
std::u16string Shown(std::u16string_view name);

} // namespace tarnwell::host
