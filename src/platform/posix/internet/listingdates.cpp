#include "platform/posix/internet/listingdates.h"

#include <algorithm>
#include <charconv>
#include <chrono>

namespace tarnwell::posix
{
namespace
{

constexpr Moment secondsPerDay = 86400;

struct MonthName
{
    std::string_view name;
    int month;
};

// In lower case and without a full stop. English first, which most servers write; German, French,
// Spanish, Italian, Portuguese, Dutch, the Scandinavian languages, Polish, Czech and Russian;
// letters beyond ASCII as UTF-8 and, where servers still write them so, as Latin-1.
constexpr MonthName monthNames[] = {
    {"jan", 1},     {"feb", 2},     {"mar", 3},     {"apr", 4},  {"may", 5},    {"jun", 6},
    {"jul", 7},     {"aug", 8},     {"sep", 9},     {"oct", 10}, {"nov", 11},   {"dec", 12},
    {"janv", 1},    {"ene", 1},     {"gen", 1},     {"sty", 1},  {"led", 1},    {"янв", 1},
    {"fev", 2},     {"févr", 2},    {"f\351vr", 2}, {"fév", 2},  {"f\351v", 2}, {"lut", 2},
    {"úno", 2},     {"фев", 2},     {"mars", 3},    {"mär", 3},  {"m\344r", 3}, {"mrt", 3},
    {"mrz", 3},     {"märz", 3},    {"m\344rz", 3}, {"bře", 3},  {"мар", 3},    {"avr", 4},
    {"abr", 4},     {"avril", 4},   {"kwi", 4},     {"dub", 4},  {"апр", 4},    {"mai", 5},
    {"mag", 5},     {"maj", 5},     {"mei", 5},     {"kvě", 5},  {"мая", 5},    {"май", 5},
    {"juin", 6},    {"giu", 6},     {"juni", 6},    {"cze", 6},  {"čvn", 6},    {"июн", 6},
    {"juil", 7},    {"lug", 7},     {"juli", 7},    {"lip", 7},  {"čvc", 7},    {"июл", 7},
    {"août", 8},    {"ao\373t", 8}, {"aou", 8},     {"ago", 8},  {"sie", 8},    {"srp", 8},
    {"авг", 8},     {"sept", 9},    {"set", 9},     {"wrz", 9},  {"zář", 9},    {"сен", 9},
    {"okt", 10},    {"ott", 10},    {"out", 10},    {"paź", 10}, {"říj", 10},   {"окт", 10},
    {"lis", 11},    {"ноя", 11},    {"dez", 12},    {"dic", 12}, {"des", 12},   {"déc", 12},
    {"d\351c", 12}, {"gru", 12},    {"pro", 12},    {"дек", 12}, {"april", 4},  {"čen", 6},
    {"čec", 7},
};

// Behind the number of a month or a day, in the languages that write "1月 12日".
constexpr std::string_view monthMarks[] = {"月", "월"};
constexpr std::string_view dayMarks[] = {".", "日", "일"};

template <std::size_t n>
std::string_view WithoutMark(std::string_view word, const std::string_view (&marks)[n])
{
    for (const std::string_view mark : marks)
    {
        if (word.ends_with(mark))
            return word.substr(0, word.size() - mark.size());
    }
    return word;
}

bool SameWord(std::string_view word, std::string_view lower)
{
    return std::equal(word.begin(), word.end(), lower.begin(), lower.end(), [](char a, char b) {
        return (a >= 'A' && a <= 'Z' ? static_cast<char>(a + ('a' - 'A')) : a) == b;
    });
}

} // namespace

std::optional<Moment> MomentOf(int year, int month, int day, const Clock& clock)
{
    using namespace std::chrono;
    const year_month_day date(std::chrono::year(year),
                              std::chrono::month(static_cast<unsigned>(month)),
                              std::chrono::day(static_cast<unsigned>(day)));
    // 60 is a second as well: a minute may have one more.
    if (!date.ok() || clock.hour > 23 || clock.minute > 59 || clock.second > 60)
        return std::nullopt;
    return Moment{sys_days(date).time_since_epoch().count()} * secondsPerDay +
           Moment{clock.hour} * 3600 + Moment{clock.minute} * 60 + clock.second;
}

std::optional<Moment> LatestMoment(int month, int day, const Clock& clock, Moment now)
{
    using namespace std::chrono;
    const sys_days tomorrow{days(now / secondsPerDay + 1)};
    const int latest = static_cast<int>(year_month_day(tomorrow).year());
    // Leap days can be eight years apart.
    constexpr int yearsBack = 8;
    for (int year = latest; year >= latest - yearsBack; --year)
    {
        const std::optional<Moment> moment = MomentOf(year, month, day, clock);
        if (moment && *moment <= now + secondsPerDay)
            return moment;
    }
    return std::nullopt;
}

std::optional<int> Number(std::string_view text, std::size_t most)
{
    int number = 0;
    const char* const end = text.data() + text.size();
    if (text.empty() || text.size() > most || text[0] == '-')
        return std::nullopt;
    const auto [last, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && last == end ? std::optional(number) : std::nullopt;
}

std::optional<int> MonthOf(std::string_view word)
{
    const std::string_view digits = WithoutMark(word, monthMarks);
    if (digits.size() < word.size())
    {
        const std::optional<int> month = Number(digits, 2);
        return month && *month >= 1 && *month <= 12 ? month : std::nullopt;
    }
    // Most words of a line are numbers, and no month's name begins as one.
    if (word.empty() || (word[0] >= '0' && word[0] <= '9'))
        return std::nullopt;
    if (word.ends_with('.'))
        word.remove_suffix(1);
    for (const MonthName& row : monthNames)
    {
        if (SameWord(word, row.name))
            return row.month;
    }
    return std::nullopt;
}

std::optional<int> DayOf(std::string_view word)
{
    const std::optional<int> day = Number(WithoutMark(word, dayMarks), 2);
    return day && *day >= 1 && *day <= 31 ? day : std::nullopt;
}

std::optional<Clock> ClockOf(std::string_view word)
{
    const std::size_t first = word.find(':');
    if (first == std::string_view::npos)
        return std::nullopt;
    const std::size_t second = std::min(word.find(':', first + 1), word.size());
    const std::optional<int> hour = Number(word.substr(0, first), 2);
    const std::optional<int> minute = Number(word.substr(first + 1, second - first - 1), 2);
    std::optional<int> seconds = 0;
    if (second < word.size())
    {
        const std::string_view rest = word.substr(second + 1);
        seconds = Number(rest.substr(0, rest.find('.')), 2);
    }
    if (!hour || !minute || !seconds || second - first != 3)
        return std::nullopt;
    return Clock{*hour, *minute, *seconds};
}

} // namespace tarnwell::posix
