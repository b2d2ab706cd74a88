#include "addressed/usualparts.h"

#include <algorithm>

namespace tarnwell
{

namespace
{

// What no address has in it. A client's command line would end at a terminator, which a server may
// list in a name; the others are no "." of a pattern.
constexpr bool IsNoneOfAddresses(char16_t unit)
{
    return unit <= u'\r' ? unit == u'\0' || unit == u'\n' || unit == u'\r'
                         : unit == u'\u2028' || unit == u'\u2029';
}

// All of it is looked at, which is faster than stopping in time.
bool IsOneLine(std::u16string_view text)
{
    bool found = false;
    for (const char16_t unit : text)
        found |= IsNoneOfAddresses(unit);
    return !found;
}

bool IsNumber(std::u16string_view text)
{
    return !text.empty() && text.find_first_not_of(u"0123456789") == std::u16string_view::npos;
}

} // namespace

std::optional<UriViews> SchemeAndPath(std::u16string_view text)
{
    constexpr std::u16string_view separator = u"://";
    const std::size_t colon = std::min(text.find(u':'), text.size());
    if (colon == 0 || !text.substr(colon).starts_with(separator) || !IsOneLine(text))
        return std::nullopt;
    return UriViews{.scheme = text.substr(0, colon), .path = text.substr(colon + separator.size())};
}

std::optional<UriViews> UsualParts(std::u16string_view text)
{
    constexpr std::size_t none = std::u16string_view::npos;
    std::optional<UriViews> parts = SchemeAndPath(text);
    if (!parts || parts->path.empty() || parts->path.front() == u'/')
        return parts;
    std::u16string_view authority = parts->path.substr(0, parts->path.find(u'/'));
    parts->path.remove_prefix(std::min(authority.size() + 1, parts->path.size()));

    if (const std::size_t at = authority.find(u'@'); at != none)
    {
        const std::u16string_view credentials = authority.substr(0, at);
        const std::size_t colon = std::min(credentials.find(u':'), credentials.size());
        parts->user = credentials.substr(0, colon);
        parts->password = credentials.substr(std::min(colon + 1, credentials.size()));
        authority.remove_prefix(at + 1);
    }
    const std::size_t colon = authority.find(u':');
    parts->host = authority.substr(0, colon);
    if (colon != none)
        parts->port = authority.substr(colon + 1);
    const bool isUsual = !parts->host.empty() && authority.find(u'@') == none &&
                         (colon == none || IsNumber(parts->port));
    return isUsual ? parts : std::nullopt;
}

} // namespace tarnwell
