#include "platform/posix/internet/listinglines.h"
#include "platform/posix/internet/words.h"

#include <charconv>

namespace tarnwell::posix
{
namespace
{

// ---- Kind and permissions ----

struct Mode
{
    char kind = '-';
    bool isReadOnly = false;
    // Behind it in the line.
    std::size_t end = 0;
};

bool IsKind(char letter)
{
    constexpr std::string_view kinds = "-dlbcpsDCMnP?";
    return kinds.find(letter) != std::string_view::npos;
}

// "drwxr-xr-x", perhaps with a sign behind that there is more to it.
bool IsPlainMode(std::string_view word)
{
    constexpr std::size_t length = 10;
    constexpr std::string_view letters = "rwxsStTlL-";
    constexpr std::string_view signs = "+.@";
    const std::string_view signOnly = word.substr(std::min(length, word.size()));
    return word.size() >= length && IsKind(word[0]) &&
           word.substr(1, length - 1).find_first_not_of(letters) == std::string_view::npos &&
           (signOnly.empty() ||
            (signOnly.size() == 1 && signs.find(signOnly) != std::string_view::npos));
}

// "d [RWCEAFMS]".
bool IsListOfRights(std::string_view word)
{
    return word.size() >= 2 && word.front() == '[' && word.back() == ']';
}

bool IsAllDigits(std::string_view text)
{
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

// Where the server prints them, inode and blocks come first.
std::optional<Mode> ModeOf(std::string_view line)
{
    Word word = WordAt(line, 0);
    for (int i = 0; i < 2 && IsAllDigits(word.text); ++i)
        word = WordAt(line, word.end);
    if (IsPlainMode(word.text))
        return Mode{word.text[0], word.text.find('w') == std::string_view::npos, word.end};
    const Word rights = WordAt(line, word.end);
    if (word.text.size() == 1 && IsKind(word.text[0]) && IsListOfRights(rights.text))
        return Mode{word.text[0], rights.text.find('W') == std::string_view::npos, rights.end};
    return std::nullopt;
}

// ---- The date ----

struct Date
{
    Moment moment = 0;
    bool isUtc = false;
    // Of the first byte of the name.
    std::size_t end = 0;
};

constexpr std::size_t yearDigits = 4;

std::optional<int> YearOf(std::string_view word)
{
    return word.size() == yearDigits ? Number(word, yearDigits) : std::nullopt;
}

std::optional<Date> At(std::optional<Moment> moment, std::size_t end)
{
    return moment ? std::optional(Date{*moment, false, end}) : std::nullopt;
}

// Two blanks behind a year that has only one in front: the column is one wider than the year.
std::size_t BehindYear(std::string_view line, std::size_t before, const Word& year)
{
    const bool isNarrow = year.begin - before == 1;
    const bool hasTwo = line.substr(year.end).starts_with("  ");
    return year.end + (isNarrow && hasTwo ? 2 : 1);
}

// A month and a day, one way round or the other, and a clock or a year.
std::optional<Date> NamedDate(std::string_view line, const Word& first, Moment now)
{
    const Word second = WordAt(line, first.end);
    std::optional<int> month = MonthOf(first.text);
    std::optional<int> day = DayOf(month ? second.text : first.text);
    if (!month)
        month = day ? MonthOf(second.text) : std::nullopt;
    if (!month || !day)
        return std::nullopt;
    const Word third = WordAt(line, second.end);
    if (const std::optional<int> year = YearOf(third.text))
        return At(MomentOf(*year, *month, *day, {}), BehindYear(line, second.end, third));
    const std::optional<Clock> clock = ClockOf(third.text);
    if (!clock)
        return std::nullopt;
    // With seconds, a year may follow.
    const Word fourth = WordAt(line, third.end);
    const std::optional<int> year = YearOf(fourth.text);
    const bool hasSeconds = third.text.find(':') != third.text.rfind(':');
    if (hasSeconds && year && fourth.begin - third.end == 1 && fourth.end < line.size())
        return At(MomentOf(*year, *month, *day, *clock), fourth.end + 1);
    return At(LatestMoment(*month, *day, *clock, now), third.end + 1);
}

// "+0130", in seconds.
std::optional<int> ZoneOf(std::string_view word)
{
    constexpr std::size_t length = 5;
    if (word.size() != length || (word[0] != '+' && word[0] != '-'))
        return std::nullopt;
    const std::optional<int> digits = Number(word.substr(1), length - 1);
    if (!digits)
        return std::nullopt;
    const int seconds = (*digits / 100) * 3600 + (*digits % 100) * 60;
    return word[0] == '-' ? -seconds : seconds;
}

// "2020-01-31 15:04", with seconds and a zone or not, or without a clock; or "01-31 15:04".
std::optional<Date> NumberedDate(std::string_view line, std::size_t before, const Word& first,
                                 Moment now)
{
    const std::string_view text = first.text;
    constexpr std::size_t length = 10;
    constexpr std::size_t shortLength = 5;
    if ((text.size() != length && text.size() != shortLength) || text[text.size() - 3] != '-')
        return std::nullopt;
    const std::optional<int> month = Number(text.substr(text.size() - 5, 2), 2);
    const std::optional<int> day = Number(text.substr(text.size() - 2), 2);
    const Word second = WordAt(line, first.end);
    const std::optional<Clock> clock = ClockOf(second.text);
    if (!month || !day)
        return std::nullopt;
    if (text.size() == shortLength)
        return clock ? At(LatestMoment(*month, *day, *clock, now), second.end + 1) : std::nullopt;
    const std::optional<int> year = YearOf(text.substr(0, yearDigits));
    if (!year || text[yearDigits] != '-')
        return std::nullopt;
    if (!clock)
        return At(MomentOf(*year, *month, *day, {}), BehindYear(line, before, first));
    std::optional<Date> date = At(MomentOf(*year, *month, *day, *clock), second.end + 1);
    const Word third = WordAt(line, second.end);
    const std::optional<int> zone = ZoneOf(third.text);
    if (date && zone && second.text.find('.') != std::string_view::npos)
        date = Date{date->moment - *zone, true, third.end + 1};
    return date;
}

// Behind the word that ends at `before`.
std::optional<Date> DateAt(std::string_view line, std::size_t before, const Word& first, Moment now)
{
    const std::optional<Date> date = NamedDate(line, first, now);
    return date ? date : NumberedDate(line, before, first, now);
}

// ---- The size ----

// The word in front of the date. Nothing if that is no size; a device has numbers in its place.
std::optional<std::uint64_t> SizeOf(std::string_view word, char kind)
{
    if (kind == 'b' || kind == 'c')
        return 0;
    // A wide size touches the group's name.
    const std::size_t last = word.find_last_not_of("0123456789");
    const std::size_t begin = last == std::string_view::npos ? 0 : last + 1;
    if (begin == word.size() || word.substr(0, begin) == "-")
        return std::nullopt;
    std::uint64_t size = 0;
    const auto [end, error] = std::from_chars(word.data() + begin, word.data() + word.size(), size);
    return error == std::errc() ? size : 0;
}

// ---- The name ----

// A link's name is followed by what it leads to.
std::string_view WithoutTarget(std::string_view name)
{
    return name.substr(0, name.find(" -> "));
}

} // namespace

std::optional<ListedEntry> ParseUnixLine(std::string_view line, Moment now)
{
    const std::optional<Mode> mode = ModeOf(line);
    if (!mode)
        return std::nullopt;
    Word before = WordAt(line, mode->end);
    for (Word word = WordAt(line, before.end); !word.text.empty(); word = WordAt(line, word.end))
    {
        const std::optional<std::uint64_t> size = SizeOf(before.text, mode->kind);
        const std::optional<Date> date = size ? DateAt(line, before.end, word, now) : std::nullopt;
        if (date && date->end < line.size())
        {
            const bool isLink = mode->kind == 'l';
            const std::string_view name = line.substr(date->end);
            return ListedEntry{.name = std::string(isLink ? WithoutTarget(name) : name),
                               .size = *size,
                               .time = date->moment,
                               .isUtc = date->isUtc,
                               .isFolder = mode->kind == 'd',
                               .isLink = isLink,
                               .isReadOnly = mode->isReadOnly};
        }
        before = word;
    }
    return std::nullopt;
}

} // namespace tarnwell::posix
