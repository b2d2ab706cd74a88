#include "platform/posix/internet/listinglines.h"
#include "platform/posix/internet/words.h"

#include <charconv>
#include <utility>

namespace tarnwell::posix
{
namespace
{

struct Day
{
    int year;
    int month;
    int day;
};

// Of two digits, those below 70 are of this century.
int WholeYear(int year, std::size_t digits)
{
    constexpr int firstOfLastCentury = 70;
    if (digits > 2)
        return year;
    return year + (year < firstOfLastCentury ? 2000 : 1900);
}

// "01-31-20", "01/31/2020", "2020-01-31", "31.01.2020".
std::optional<Day> DayOfYear(std::string_view word)
{
    const std::size_t first = word.find_first_of("-/.");
    if (first == std::string_view::npos)
        return std::nullopt;
    const std::size_t second = word.find(word[first], first + 1);
    if (second == std::string_view::npos)
        return std::nullopt;
    constexpr std::size_t yearDigits = 4;
    const std::string_view last = word.substr(second + 1);
    const std::optional<int> a = Number(word.substr(0, first), yearDigits);
    const std::optional<int> b = Number(word.substr(first + 1, second - first - 1), 2);
    const std::optional<int> c = Number(last, yearDigits);
    if (!a || !b || !c)
        return std::nullopt;
    if (first == yearDigits)
        return Day{*a, *b, *c};
    const int year = WholeYear(*c, last.size());
    // Where the month can't come first, the day does.
    constexpr int months = 12;
    const bool isDayFirst = word[first] == '.' || *a > months;
    return isDayFirst ? Day{year, *b, *a} : Day{year, *a, *b};
}

// What stands behind the clock of twelve hours: nothing, "AM", "p" ... 'A', 'P', or 0 if it is
// none.
std::optional<char> HalfOf(std::string_view text)
{
    if (text.empty())
        return '\0';
    const char half = static_cast<char>(text[0] & ~0x20);
    const bool isHalf = (half == 'A' || half == 'P') &&
                        (text.size() == 1 || (text.size() == 2 && (text[1] & ~0x20) == 'M'));
    return isHalf ? std::optional(half) : std::nullopt;
}

void ApplyHalf(Clock& clock, char half)
{
    constexpr int noon = 12;
    if (half == 'A' && clock.hour == noon)
        clock.hour = 0;
    else if (half == 'P' && clock.hour < noon)
        clock.hour += noon;
}

// With what may stand behind it, also as a word of its own; `end` receives where that ends.
std::optional<Clock> ClockAt(std::string_view line, const Word& word, std::size_t& end)
{
    const std::size_t letters =
        std::min(word.text.find_first_not_of("0123456789:"), word.text.size());
    std::optional<Clock> clock = ClockOf(word.text.substr(0, letters));
    const std::optional<char> half = HalfOf(word.text.substr(letters));
    if (!clock || !half)
        return std::nullopt;
    end = word.end;
    if (*half != '\0')
    {
        ApplyHalf(*clock, *half);
        return clock;
    }
    const Word next = WordAt(line, word.end);
    if (const std::optional<char> own = HalfOf(next.text); own && *own != '\0')
    {
        ApplyHalf(*clock, *own);
        end = next.end;
    }
    return clock;
}

// Digits, perhaps in groups of three. Nothing if it is no size.
std::optional<std::uint64_t> GroupedSize(std::string_view word)
{
    std::string digits;
    for (std::size_t i = 0; i < word.size(); ++i)
    {
        constexpr std::size_t group = 3;
        const bool isSeparator = word[i] == ',' || word[i] == '.';
        if (isSeparator && i > 0 && (word.size() - i) % (group + 1) == 0)
            continue;
        if (word[i] < '0' || word[i] > '9')
            return std::nullopt;
        digits += word[i];
    }
    std::uint64_t size = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), size);
    if (error == std::errc::result_out_of_range)
        return 0;
    return error == std::errc() ? std::optional(size) : std::nullopt;
}

// Kind or size, and name.
std::optional<ListedEntry> EntryAt(std::string_view line, const Word& word)
{
    ListedEntry entry;
    entry.isFolder = word.text == "<DIR>";
    entry.isLink =
        word.text == "<JUNCTION>" || word.text == "<SYMLINK>" || word.text == "<SYMLINKD>";
    if (entry.isFolder || entry.isLink)
    {
        entry.name = line.substr(WordAt(line, word.end).begin);
        return entry;
    }
    const std::optional<std::uint64_t> size = GroupedSize(word.text);
    if (!size || word.end >= line.size())
        return std::nullopt;
    entry.size = *size;
    entry.name = line.substr(word.end + 1);
    return entry;
}

} // namespace

std::optional<ListedEntry> ParseDosLine(std::string_view line)
{
    const Word date = WordAt(line, 0);
    const std::optional<Day> day = DayOfYear(date.text);
    if (!day)
        return std::nullopt;
    std::size_t end = 0;
    const std::optional<Clock> clock = ClockAt(line, WordAt(line, date.end), end);
    if (!clock)
        return std::nullopt;
    const std::optional<Moment> time = MomentOf(day->year, day->month, day->day, *clock);
    std::optional<ListedEntry> entry = EntryAt(line, WordAt(line, end));
    if (!time || !entry)
        return std::nullopt;
    entry->time = time;
    return entry;
}

} // namespace tarnwell::posix
