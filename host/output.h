// What the program prints: UTF-8, kept back until there is enough of it.
#pragma once

#include "style.h"

#include <string>
#include <string_view>

namespace tarnwell::host
{

// Both throw Failure if the output can't be written. Bytes are never changed.
void Print(std::u16string_view text, Style style = Style::Plain);
void PrintBytes(std::string_view bytes);

// To be called before the program ends.
void FlushOutput();

// At once, behind what was printed before. Where standard error is closed nobody is told.
void PrintError(std::u16string_view text, Style style = Style::Plain);

enum class LineFeeds
{
    Kept,
    Masked,
};

// Each control character as "?": a terminal would obey it. All that is printed as text goes through
// this where it reaches one, with its line feeds kept.
std::u16string Masked(std::u16string_view text, LineFeeds lineFeeds);

// A name for the user's eyes: on a terminal, line feeds in it are masked as well.
std::u16string Shown(std::u16string_view name);

} // namespace tarnwell::host
