#include "columns.h"

#include "text16.h"

#include <algorithm>

namespace tarnwell::host
{

namespace
{

struct Range
{
    char32_t first;
    char32_t last;
};

const Range wide[] = {
    {0x1100, 0x115F}, {0x2E80, 0x303E},   {0x3041, 0x33FF},   {0x3400, 0x4DBF},   {0x4E00, 0x9FFF},
    {0xA000, 0xA4CF}, {0xAC00, 0xD7A3},   {0xF900, 0xFAFF},   {0xFE30, 0xFE6F},   {0xFF00, 0xFF60},
    {0xFFE0, 0xFFE6}, {0x1F300, 0x1F64F}, {0x1F900, 0x1F9FF}, {0x20000, 0x3FFFD},
};

const Range combining[] = {
    {0x0300, 0x036F}, {0x200B, 0x200F}, {0x3099, 0x309A}, {0xFE00, 0xFE0F}, {0xFE20, 0xFE2F},
};

bool IsIn(const auto& ranges, char32_t character)
{
    return std::any_of(std::begin(ranges), std::end(ranges), [=](const Range& range) {
        return character >= range.first && character <= range.last;
    });
}

// Takes the first character away. Halves of a pair that stand alone are characters.
char32_t TakeCharacter(std::u16string_view& text)
{
    const char16_t unit = text[0];
    text.remove_prefix(1);
    if (!IsHighSurrogate(unit) || text.empty() || !IsLowSurrogate(text[0]))
        return unit;
    const char32_t character =
        0x10000 + ((char32_t{unit} - 0xD800) << 10) + (char32_t{text[0]} - 0xDC00);
    text.remove_prefix(1);
    return character;
}

std::size_t ColumnsOfCharacter(char32_t character)
{
    if (IsIn(combining, character))
        return 0;
    return IsIn(wide, character) ? 2 : 1;
}

// These don't begin a line.
bool ClosesSomething(char32_t character)
{
    return std::u32string_view(U"、。」）』・ーゃゅょっャュョッ),.?!").find(character) !=
           std::u32string_view::npos;
}

std::u16string Blanks(std::u16string_view text, std::size_t width)
{
    const std::size_t columns = ColumnsOf(text);
    return std::u16string(width > columns ? width - columns : 0, u' ');
}

} // namespace

std::size_t ColumnsOf(std::u16string_view text)
{
    std::size_t columns = 0;
    while (!text.empty())
        columns += ColumnsOfCharacter(TakeCharacter(text));
    return columns;
}

std::u16string RightAligned(std::u16string_view text, std::size_t width)
{
    return Blanks(text, width).append(text);
}

std::u16string LeftAligned(std::u16string_view text, std::size_t width)
{
    return std::u16string(text) + Blanks(text, width);
}

std::u16string_view NextPiece(std::u16string_view text)
{
    std::u16string_view rest = text;
    const char32_t first = TakeCharacter(rest);
    const bool isBlank = first == U' ';
    const bool isWide = IsIn(wide, first);
    while (!rest.empty())
    {
        std::u16string_view behind = rest;
        const char32_t next = TakeCharacter(behind);
        const bool belongs =
            isWide ? ClosesSomething(next)
                   : (next == U' ') == isBlank && (!IsIn(wide, next) || ClosesSomething(next));
        if (!belongs)
            break;
        rest = behind;
    }
    return text.substr(0, text.size() - rest.size());
}

std::u16string Wrapped(std::u16string_view text, std::size_t width, std::size_t indent)
{
    std::u16string lines;
    std::size_t column = indent;
    std::u16string_view blanks;
    while (!text.empty())
    {
        const std::u16string_view piece = NextPiece(text);
        text.remove_prefix(piece.size());
        if (piece[0] == u' ')
        {
            blanks = piece;
            continue;
        }
        const std::size_t columns = ColumnsOf(piece);
        if (column > indent && column + blanks.size() + columns > width)
        {
            lines += u"\n" + std::u16string(indent, u' ');
            column = indent;
            blanks = {};
        }
        lines.append(blanks).append(piece);
        column += blanks.size() + columns;
        blanks = {};
    }
    return lines;
}

} // namespace tarnwell::host
