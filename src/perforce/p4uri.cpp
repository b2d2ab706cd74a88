#include "perforce/p4uri.h"

#include "frame/exception.h"
#include "frame/messages.h"

#include <algorithm>

namespace tarnwell
{

namespace
{

// Whether the pattern would find an address somewhere in `text`: anything may follow "://", and one
// unit other than a colon is a scheme.
bool HoldsAddress(std::u16string_view text)
{
    constexpr std::u16string_view separator = u"://";
    for (std::size_t at = text.find(separator); at != std::u16string_view::npos;
         at = text.find(separator, at + 1))
    {
        if (at > 0 && text[at - 1] != u':')
            return true;
    }
    return false;
}

// Of any text that is one line. There is a server only between an "@" and a slash.
std::optional<UriViews> PartsOf(std::u16string_view text)
{
    constexpr std::size_t none = std::u16string_view::npos;
    std::optional<UriViews> parts = SchemeAndPath(text);
    if (!parts)
        return parts;
    const std::size_t slash = parts->path.find(u'/');
    const std::size_t at = parts->path.find(u'@');
    if (slash == none || at == none || at + 1 >= slash)
        return parts;
    const std::u16string_view credentials = parts->path.substr(0, at);
    const std::size_t colon = std::min(credentials.find(u':'), at);
    parts->user = credentials.substr(0, colon);
    parts->password = credentials.substr(std::min(colon + 1, at));
    parts->host = parts->path.substr(at + 1, slash - at - 1);
    parts->path.remove_prefix(slash + 1);
    return parts;
}

} // namespace

std::u16string NormalizeDepotPath(std::u16string_view path)
{
    constexpr std::u16string_view root = u"//";
    return path.starts_with(root) ? std::u16string(path) : std::u16string(root).append(path);
}

P4Uri::P4Uri(std::u16string text) : Uri(std::move(text))
{
    if (!HasScheme(u"p4"))
        Refuse();
}

std::shared_ptr<Uri> P4Uri::Create(std::u16string text) const
{
    return std::make_shared<P4Uri>(std::move(text));
}

std::shared_ptr<Uri> P4Uri::Clone() const
{
    return Compose(p4Marker.Strip(GetParts()));
}

const AddressForm& P4Uri::Form() const
{
    static const AddressForm form{Pattern(u"([^:]+)://(([^:@/]*)(:([^@/]*))?@([^/]+)/)?(.*)?"),
                                  {1, 3, 5, 6, noGroup, 7},
                                  PartsOf};
    return form;
}

// The pattern is meant to be searched for, which would let the rest of the text fall silently.
// Where the whole text matches, that is what a search finds.
bool P4Uri::Match(const Pattern& pattern, std::u16string_view text, Groups& groups) const
{
    if (Uri::Match(pattern, text, groups))
        return true;
    if (HoldsAddress(text))
        Refuse();
    return false;
}

void P4Uri::Refuse() const
{
    throw ComException(E_INVALIDARG, FormatMessageById(MessageId::InvalidPerforceUri, {GetText()}),
                       At(p4Source));
}

} // namespace tarnwell
