// Text in the columns of a terminal, where some characters take two.
#pragma once

#include <string>
#include <string_view>

namespace tarnwell::host
{

// How many the text takes. Good for layout only: terminals differ in the rarer characters.
std::size_t ColumnsOf(std::u16string_view text);

// Blanks in front, or behind, up to `width` columns.
std::u16string RightAligned(std::u16string_view text, std::size_t width);
std::u16string LeftAligned(std::u16string_view text, std::size_t width);

// What isn't torn apart at the beginning of the text, which isn't empty: a word up to the next
// blank, a character of two columns with what closes it, or blanks.
std::u16string_view NextPiece(std::u16string_view text);

// The text in lines of up to `width` columns, without a last line feed. It begins in column
// `indent`, and so do its other lines. Words that are longer stay whole; characters of two columns
// are words.
std::u16string Wrapped(std::u16string_view text, std::size_t width, std::size_t indent);

} // namespace tarnwell::host
