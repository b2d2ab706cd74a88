#include "platform/posix/processes/commandline.h"

namespace tarnwell::posix
{
namespace
{

constexpr std::u16string_view blanks = u" \t";

bool IsBlank(char16_t unit)
{
    return blanks.find(unit) != std::u16string_view::npos;
}

// A program's name can't hold a quote: each quote only opens or closes, and a backslash is always
// itself.
std::u16string TakeProgram(std::u16string_view& rest)
{
    std::u16string program;
    bool isQuoted = false;
    while (!rest.empty() && (isQuoted || !IsBlank(rest[0])))
    {
        if (rest[0] == u'"')
            isQuoted = !isQuoted;
        else
            program += rest[0];
        rest.remove_prefix(1);
    }
    return program;
}

std::size_t TakeBackslashes(std::u16string_view& rest)
{
    const std::size_t end = rest.find_first_not_of(u'\\');
    const std::size_t count = end == std::u16string_view::npos ? rest.size() : end;
    rest.remove_prefix(count);
    return count;
}

// From its first unit to the blank behind it.
std::u16string TakeArgument(std::u16string_view& rest)
{
    std::u16string argument;
    bool isQuoted = false;
    while (!rest.empty() && (isQuoted || !IsBlank(rest[0])))
    {
        const std::size_t backslashes = TakeBackslashes(rest);
        if (rest.empty() || rest[0] != u'"')
        {
            argument.append(backslashes, u'\\');
            if (backslashes == 0)
            {
                argument += rest[0];
                rest.remove_prefix(1);
            }
            continue;
        }
        // Before a quote, two backslashes stand for one; an odd one makes the quote a plain
        // character. Inside quotes, so does another quote before it.
        argument.append(backslashes / 2, u'\\');
        const bool isDoubled = isQuoted && rest.substr(0, 2) == u"\"\"";
        if (backslashes % 2 != 0)
        {
            argument += u'"';
        }
        else if (isDoubled)
        {
            argument += u'"';
            rest.remove_prefix(1);
        }
        else
        {
            isQuoted = !isQuoted;
        }
        rest.remove_prefix(1);
    }
    return argument;
}

void SkipBlanks(std::u16string_view& rest)
{
    while (!rest.empty() && IsBlank(rest[0]))
        rest.remove_prefix(1);
}

} // namespace

std::vector<std::u16string> SplitCommandLine(std::u16string_view line)
{
    std::vector<std::u16string> parts{TakeProgram(line)};
    for (SkipBlanks(line); !line.empty(); SkipBlanks(line))
        parts.push_back(TakeArgument(line));
    return parts;
}

} // namespace tarnwell::posix
