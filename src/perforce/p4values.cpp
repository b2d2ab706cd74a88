#include "perforce/p4values.h"

#include <algorithm>

namespace tarnwell
{

namespace
{

constexpr std::u16string_view digits = u"0123456789";

// What ends a "line" for a pattern's dot. The client's lines hold carriage returns at most.
constexpr std::u16string_view lineEnds = u"\n\r\u2028\u2029";

constexpr char16_t LowerAscii(char16_t unit)
{
    return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit - u'A' + u'a') : unit;
}

// Takes `lower` off the front of `rest`, in whatever case.
bool Take(std::u16string_view& rest, std::u16string_view lower)
{
    const bool fits =
        rest.size() >= lower.size() &&
        std::equal(lower.begin(), lower.end(), rest.begin(),
                   [](char16_t wanted, char16_t unit) { return wanted == LowerAscii(unit); });
    if (fits)
        rest.remove_prefix(lower.size());
    return fits;
}

// Takes one digit or more.
bool TakeNumber(std::u16string_view& rest, std::u16string_view& number)
{
    number = rest.substr(0, rest.find_first_not_of(digits));
    rest.remove_prefix(number.size());
    return !number.empty();
}

std::u16string_view UpToLineEnd(std::u16string_view text)
{
    return text.substr(0, text.find_first_of(lineEnds));
}

// "... #N change N ", first of all; `rest` is then what follows it.
bool FindHead(std::u16string_view& rest, P4Revision& found)
{
    constexpr std::u16string_view start = u"... #";
    for (std::size_t at = rest.find(start); at != std::u16string_view::npos;
         at = rest.find(start, at + 1))
    {
        std::u16string_view behind = rest.substr(at + start.size());
        if (TakeNumber(behind, found.id) && Take(behind, u" change ") &&
            TakeNumber(behind, found.change) && Take(behind, u" "))
        {
            rest = behind;
            return true;
        }
    }
    return false;
}

bool TakeTail(std::u16string_view rest, P4Revision& found)
{
    constexpr std::u16string_view separators[] = {u"/", u"/", u" ", u":", u":", u" by "};
    if (!Take(rest, u" on "))
        return false;
    for (std::size_t i = 0; i < std::size(separators); ++i)
    {
        if (!TakeNumber(rest, found.time[i]) || !Take(rest, separators[i]))
            return false;
    }
    found.author = rest.substr(0, rest.find(u' '));
    return !found.author.empty();
}

// " on N/N/N N:N:N by AUTHOR", last of all that begin in front of a line end; the action is what
// comes before it.
bool FindTail(std::u16string_view rest, P4Revision& found)
{
    const std::u16string_view line = UpToLineEnd(rest);
    for (std::size_t at = line.rfind(u' '); at != std::u16string_view::npos;
         at = at == 0 ? at - 1 : line.rfind(u' ', at - 1))
    {
        if (TakeTail(rest.substr(at), found))
        {
            found.action = rest.substr(0, at);
            return true;
        }
    }
    return false;
}

// Behind the last "#N - " of `line`, which has no line end.
std::optional<std::u16string_view> LocalPathIn(std::u16string_view line)
{
    for (std::size_t at = line.rfind(u'#'); at != std::u16string_view::npos;
         at = at == 0 ? at - 1 : line.rfind(u'#', at - 1))
    {
        std::u16string_view behind = line.substr(at + 1);
        std::u16string_view revision;
        if (TakeNumber(behind, revision) && Take(behind, u" - "))
            return behind;
    }
    return std::nullopt;
}

} // namespace

// Where the first head has no tail, a later one in front of the same line end has none either: the
// tails in its reach are among those that were tried.
std::optional<P4Revision> FindP4Revision(std::u16string_view line)
{
    P4Revision found;
    while (FindHead(line, found))
    {
        if (FindTail(line, found))
            return found;
        line.remove_prefix(UpToLineEnd(line).size());
    }
    return std::nullopt;
}

std::optional<std::u16string_view> FindP4LocalPath(std::u16string_view line)
{
    for (;;)
    {
        const std::u16string_view part = UpToLineEnd(line);
        const auto path = LocalPathIn(part);
        if (path || part.size() == line.size())
            return path;
        line.remove_prefix(part.size() + 1);
    }
}

} // namespace tarnwell
