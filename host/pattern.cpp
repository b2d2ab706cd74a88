#include "pattern.h"

#include "text16.h"

namespace tarnwell::host
{

namespace
{

std::size_t UnitsOfCharacter(std::u16string_view text, std::size_t at)
{
    const bool pair =
        IsHighSurrogate(text[at]) && at + 1 < text.size() && IsLowSurrogate(text[at + 1]);
    return pair ? 2 : 1;
}

} // namespace

bool MatchesName(std::u16string_view pattern, std::u16string_view name)
{
    std::size_t p = 0;
    std::size_t n = 0;
    // Behind the last star that was met, and where the text for it ends so far: only that one ever
    // has to take more.
    std::size_t star = std::u16string_view::npos;
    std::size_t taken = 0;
    while (n < name.size())
    {
        if (p < pattern.size() && pattern[p] == u'*')
        {
            star = ++p;
            taken = n;
        }
        else if (p < pattern.size() && pattern[p] == u'?')
        {
            ++p;
            n += UnitsOfCharacter(name, n);
        }
        else if (p < pattern.size() && pattern[p] == name[n])
        {
            ++p;
            ++n;
        }
        else if (star == std::u16string_view::npos)
        {
            return false;
        }
        else
        {
            p = star;
            taken += UnitsOfCharacter(name, taken);
            n = taken;
        }
    }
    while (p < pattern.size() && pattern[p] == u'*')
        ++p;
    return p == pattern.size();
}

} // namespace tarnwell::host
