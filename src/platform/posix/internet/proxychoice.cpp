#include "platform/posix/internet/proxychoice.h"

#include <algorithm>

namespace tarnwell::posix
{
namespace
{

constexpr std::string_view separators = "; \t\r\n";

// Calls `use` for each entry until that says that it has had enough.
template <class Use> void ForEachEntry(std::string_view list, Use use)
{
    while (!list.empty())
    {
        const std::size_t end = std::min(list.find_first_of(separators), list.size());
        if (end > 0 && use(list.substr(0, end)))
            return;
        list.remove_prefix(std::min(end + 1, list.size()));
    }
}

char Lower(char letter)
{
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + ('a' - 'A')) : letter;
}

bool SameLetters(std::string_view a, std::string_view b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return Lower(x) == Lower(y); });
}

// The text may take any way through the stars; the last one is tried again where it fails.
bool Fits(std::string_view text, std::string_view pattern)
{
    std::size_t at = 0;
    std::size_t in = 0;
    std::size_t star = std::string_view::npos;
    std::size_t resume = 0;
    while (at < text.size())
    {
        if (in < pattern.size() && pattern[in] == '*')
        {
            star = in++;
            resume = at;
        }
        else if (in < pattern.size() && Lower(pattern[in]) == Lower(text[at]))
        {
            ++in;
            ++at;
        }
        else if (star != std::string_view::npos)
        {
            in = star + 1;
            at = ++resume;
        }
        else
        {
            return false;
        }
    }
    return pattern.find_first_not_of('*', in) == std::string_view::npos;
}

} // namespace

std::string ProxyForFtp(std::string_view list)
{
    std::string plain;
    std::string own;
    ForEachEntry(list, [&](std::string_view entry) {
        constexpr std::string_view key = "ftp=";
        if (SameLetters(entry.substr(0, key.size()), key))
            own = entry.substr(key.size());
        else if (plain.empty() && entry.find('=') == std::string_view::npos)
            plain = entry;
        return !own.empty();
    });
    return own.empty() ? plain : own;
}

bool IsBypassed(std::string_view host, std::string_view list)
{
    bool isListed = false;
    ForEachEntry(list, [&](std::string_view entry) {
        const bool isLocal =
            SameLetters(entry, "<local>") && host.find('.') == std::string_view::npos;
        isListed = isLocal || Fits(host, entry);
        return isListed;
    });
    return isListed;
}

} // namespace tarnwell::posix
