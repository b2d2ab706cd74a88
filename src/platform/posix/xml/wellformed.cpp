#include "platform/posix/xml/wellformed.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>

namespace tarnwell::posix
{
namespace
{

using namespace std::string_view_literals;

// In these, "&" is a plain character.
struct Literal
{
    std::string_view begin;
    std::string_view end;
};

constexpr std::array literals{
    Literal{"<!--"sv, "-->"sv},
    Literal{"<![CDATA["sv, "]]>"sv},
    Literal{"<?"sv, "?>"sv},
};

constexpr std::array names{"lt"sv, "gt"sv, "amp"sv, "apos"sv, "quot"sv};

constexpr bool IsControl(char byte)
{
    return static_cast<unsigned char>(byte) < 0x20 && byte != '\t' && byte != '\n' && byte != '\r';
}

constexpr bool IsCharacter(std::uint32_t number)
{
    const bool control = number < 0x20 && number != 0x9 && number != 0xA && number != 0xD;
    const bool surrogate = number >= 0xD800 && number <= 0xDFFF;
    return !control && !surrogate && number != 0xFFFE && number != 0xFFFF && number <= 0x10FFFF;
}

// What stands between "&#" and ";".
bool NamesCharacter(std::string_view digits)
{
    const bool hexadecimal = digits.starts_with('x');
    if (hexadecimal)
        digits.remove_prefix(1);
    std::uint32_t number = 0;
    const char* const end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, number, hexadecimal ? 16 : 10);
    return error == std::errc() && stop == end && IsCharacter(number);
}

// What stands between "&" and ";".
bool IsKnown(std::string_view reference)
{
    if (reference.starts_with('#'))
        return NamesCharacter(reference.substr(1));
    return std::find(names.begin(), names.end(), reference) != names.end();
}

// How many bytes the reference or the literal at the start of `rest` takes, or else the one; 0 for
// what must not stand there.
std::size_t Step(std::string_view rest)
{
    constexpr std::size_t longestReference = 16;
    if (rest.front() == '&')
    {
        const std::size_t end = rest.substr(0, longestReference).find(';');
        return end != std::string_view::npos && IsKnown(rest.substr(1, end - 1)) ? end + 1 : 0;
    }
    for (const Literal& literal : literals)
    {
        if (!rest.starts_with(literal.begin))
            continue;
        const std::size_t end = rest.find(literal.end, literal.begin.size());
        return end == std::string_view::npos ? 0 : end + literal.end.size();
    }
    return 1;
}

} // namespace

bool HasOnlyKnownCharacters(std::string_view document)
{
    if (std::any_of(document.begin(), document.end(), IsControl))
        return false;
    while (!document.empty())
    {
        const auto* const found = std::find_if(
            document.begin(), document.end(), [](char byte) { return byte == '&' || byte == '<'; });
        document.remove_prefix(static_cast<std::size_t>(found - document.begin()));
        if (document.empty())
            break;
        const std::size_t step = Step(document);
        if (step == 0)
            return false;
        document.remove_prefix(step);
    }
    return true;
}

} // namespace tarnwell::posix
