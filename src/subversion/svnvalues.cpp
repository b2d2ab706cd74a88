#include "subversion/svnvalues.h"

#include "runner/numbers.h"

#include <algorithm>
#include <array>
#include <optional>

namespace tarnwell
{

namespace
{

constexpr std::u16string_view digits = u"0123456789";

constexpr std::u16string_view whiteSpace =
    u"\t\n\v\f\r \u0085\u00a0\u1680\u2000\u2001\u2002\u2003\u2004\u2005\u2006\u2007\u2008\u2009"
    u"\u200a\u2028\u2029\u202f\u205f\u3000";

constexpr bool IsDigit(char16_t unit)
{
    return unit >= u'0' && unit <= u'9';
}

// The number whose digits `text` begins with, which are taken away; `largest` where it would be
// larger, and nothing without a digit.
std::optional<std::uint64_t> TakeNumber(std::u16string_view& text, std::uint64_t largest)
{
    // So many fit into all numbers that are read here.
    const std::size_t fitting =
        std::min<std::size_t>(text.size(), std::numeric_limits<std::int32_t>::digits10);
    std::uint64_t value = 0;
    std::size_t count = 0;
    for (; count < fitting && IsDigit(text[count]); ++count)
        value = value * 10 + static_cast<std::uint64_t>(text[count] - u'0');
    for (; count < text.size() && IsDigit(text[count]); ++count)
    {
        const std::uint64_t digit = static_cast<std::uint64_t>(text[count] - u'0');
        const bool fits = value <= largest / 10 && value * 10 <= largest - digit;
        value = fits ? value * 10 + digit : largest;
    }
    text.remove_prefix(count);
    return count == 0 ? std::nullopt : std::optional(value);
}

constexpr char16_t UpperAscii(char16_t unit)
{
    return unit >= u'a' && unit <= u'z' ? static_cast<char16_t>(unit - u'a' + u'A') : unit;
}

// Year, month, day, hour, minute, second, microseconds.
using DateNumbers = std::array<std::uint32_t, 7>;

// The numbers of a date at the very start of `text`, each with what has to follow it. This is
// "([0-9]+)-([0-9]+)-([0-9]+)T([0-9]+):([0-9]+):([0-9]+)\.([0-9]+)Z" regardless of case, by hand:
// a listing has one for each item.
std::optional<DateNumbers> DateAtStart(std::u16string_view text)
{
    constexpr std::u16string_view followers = u"--T::.Z";
    constexpr std::uint32_t largest = std::numeric_limits<std::int32_t>::max();
    DateNumbers numbers{};
    for (std::size_t i = 0; i < numbers.size(); ++i)
    {
        const std::optional<std::uint64_t> number = TakeNumber(text, largest);
        if (!number || text.empty() || UpperAscii(text.front()) != followers[i])
            return std::nullopt;
        text.remove_prefix(1);
        numbers[i] = static_cast<std::uint32_t>(*number);
    }
    return numbers;
}

// A date may begin at any run of digits. Where the start of a run doesn't match, its middle doesn't
// either.
std::optional<DateNumbers> FindDate(std::u16string_view text)
{
    for (;;)
    {
        if (const std::optional<DateNumbers> numbers = DateAtStart(text))
            return numbers;
        text.remove_prefix(std::min(text.find_first_not_of(digits), text.size()));
        text.remove_prefix(std::min(text.find_first_of(digits), text.size()));
        if (text.empty())
            return std::nullopt;
    }
}

} // namespace

std::uint64_t ParseSvnDate(std::u16string_view text)
{
    constexpr std::uint64_t ticksPerMicrosecond = 10;
    const std::optional<DateNumbers> numbers = FindDate(text);
    if (!numbers)
        return 0;
    const auto part = [&](std::size_t i) {
        return static_cast<WORD>((*numbers)[i]);
    };
    const SYSTEMTIME parts{part(0), part(1), 0, part(2), part(3), part(4), part(5), 0};
    const std::optional<std::uint64_t> seconds = FileTimeOf(parts);
    return seconds ? *seconds + (*numbers)[6] * ticksPerMicrosecond : 0;
}

std::uint64_t ParseSvnNumber(std::u16string_view text, std::uint64_t largest)
{
    // Nearly all begin with a digit, and then nothing has to be looked for.
    if (text.empty() || !IsDigit(text.front()))
        text.remove_prefix(std::min(text.find_first_not_of(whiteSpace), text.size()));
    const bool negative = text.starts_with(u'-');
    if (negative || text.starts_with(u'+'))
        text.remove_prefix(1);
    const std::uint64_t number = TakeNumber(text, largest).value_or(0);
    return negative && number < largest ? 0 - number : number;
}

std::u16string_view TrimmedOfWhiteSpace(std::u16string_view text)
{
    text.remove_prefix(std::min(text.find_first_not_of(whiteSpace), text.size()));
    return text.substr(0, text.find_last_not_of(whiteSpace) + 1);
}

} // namespace tarnwell
