// A command line taken apart.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tarnwell::posix
{

// The program and its arguments, by the rules that the C runtime publishes for command lines on
// Windows, where a program gets one text and does this itself. Only blanks and tabs outside of
// quotes separate, so a line feed is part of an argument. There is always a program, maybe empty.
std::vector<std::u16string> SplitCommandLine(std::u16string_view line);

} // namespace tarnwell::posix
