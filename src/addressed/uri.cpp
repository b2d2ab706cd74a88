#include "addressed/uri.h"

#include "frame/exception.h"
#include "frame/messages.h"
#include "frame/text.h"

namespace tarnwell
{

namespace
{

std::u16string_view GroupAt(const Groups& groups, int index)
{
    const auto at = static_cast<std::size_t>(index);
    return index < 0 || at >= groups.size() ? std::u16string_view() : groups[at];
}

UriParts Copied(const UriViews& views)
{
    return {
        std::u16string(views.scheme), std::u16string(views.user), std::u16string(views.password),
        std::u16string(views.host),   PortOf(views.port),         std::u16string(views.path)};
}

std::u16string PortSuffix(std::uint16_t port)
{
    return port < noPort ? u":" + Decimal(port) : std::u16string();
}

} // namespace

std::uint16_t PortOf(std::u16string_view text)
{
    const std::u16string_view digits = text.substr(0, text.find_first_not_of(u"0123456789"));
    return digits.empty() ? noPort : static_cast<std::uint16_t>(LeadingNumber(digits));
}

std::size_t RevisionMarker::FindIn(std::u16string_view text) const
{
    return text.find_last_of(characters);
}

std::u16string_view RevisionMarker::Strip(std::u16string_view text) const
{
    return text.substr(0, FindIn(text));
}

UriParts RevisionMarker::Strip(UriParts parts) const
{
    parts.path.resize(Strip(parts.path).size());
    return parts;
}

std::optional<std::u16string_view> RevisionMarker::RevisionOf(std::u16string_view text) const
{
    const std::size_t marker = FindIn(text);
    if (marker == std::u16string_view::npos)
        return std::nullopt;
    return text.substr(marker + 1);
}

std::u16string Uri::GetScheme() const
{
    return std::u16string(Views().scheme);
}

std::u16string Uri::GetUser() const
{
    return std::u16string(Views().user);
}

std::u16string Uri::GetPassword() const
{
    return std::u16string(Views().password);
}

std::u16string Uri::GetHost() const
{
    return std::u16string(Views().host);
}

std::uint16_t Uri::GetPort() const
{
    return Form().groups.port == noGroup ? noPort : PortOf(Views().port);
}

std::u16string Uri::GetHostAndPort() const
{
    const UriParts parts = GetParts();
    return parts.host + PortSuffix(parts.port);
}

std::u16string Uri::GetPath() const
{
    return std::u16string(Views().path);
}

UriParts Uri::GetParts() const
{
    return Copied(Views());
}

UriParts Uri::GetMatchedParts() const
{
    return Copied(MatchedViews());
}

bool Uri::HasScheme(std::u16string_view scheme) const
{
    return Views().scheme == scheme;
}

std::shared_ptr<Uri> Uri::GetParent() const
{
    return ComposeParent(GetParts());
}

std::shared_ptr<Uri> Uri::Compose(const UriParts& parts) const
{
    return Create(ComposedText(parts));
}

std::shared_ptr<Uri> Uri::ComposeParent(UriParts parts) const
{
    const std::size_t last = parts.path.rfind(u'/');
    parts.path.resize(last == std::u16string::npos ? 0 : last);
    return Compose(parts);
}

std::shared_ptr<Uri> Uri::WithoutCredentials() const
{
    UriParts parts = GetParts();
    parts.user.clear();
    parts.password.clear();
    return Compose(parts);
}

std::shared_ptr<Uri> Uri::ForDisplay() const
{
    return WithoutCredentials();
}

std::shared_ptr<Uri> Uri::ForComparison() const
{
    return WithoutCredentials();
}

std::shared_ptr<Uri> Uri::Create(std::u16string text) const
{
    return std::make_shared<Uri>(std::move(text));
}

std::shared_ptr<Uri> Uri::Clone() const
{
    return std::make_shared<Uri>(text_);
}

std::u16string Uri::GetGroup(int index) const
{
    return std::u16string(GroupAt(MatchedGroups(), index));
}

const AddressForm& Uri::Form() const
{
    static const AddressForm form{
        Pattern(u"([^:]+)://((([^:/]*)(:([^/]*))?@)?([^/:]+)(:([0-9]+))?/?)?(.*)"),
        {1, 4, 6, 7, 9, 10},
        UsualParts};
    return form;
}

bool Uri::Match(const Pattern& pattern, std::u16string_view text, Groups& groups) const
{
    return text.find(u'\0') == std::u16string_view::npos && pattern.MatchWhole(text, groups);
}

Groups Uri::MatchedGroups() const
{
    Groups groups;
    if (Match(Form().pattern, text_, groups))
        return groups;
    // The position is a fixed one, by which this failure has always been known.
    throw ComException(E_INVALIDARG, FormatMessageById(MessageId::UriNotParsed, {text_}),
                       {u"uri", 159});
}

UriViews Uri::Views() const
{
    const std::optional<UriViews> usual = Form().usualParts(text_);
    return usual ? *usual : MatchedViews();
}

UriViews Uri::MatchedViews() const
{
    const Groups groups = MatchedGroups();
    const AddressForm::GroupNumbers& numbers = Form().groups;
    return {GroupAt(groups, numbers.scheme),   GroupAt(groups, numbers.user),
            GroupAt(groups, numbers.password), GroupAt(groups, numbers.host),
            GroupAt(groups, numbers.port),     GroupAt(groups, numbers.path)};
}

std::u16string ComposedText(const UriParts& parts)
{
    std::u16string text = parts.scheme + u"://";
    if (!parts.user.empty() && !parts.host.empty())
    {
        text += parts.user;
        if (!parts.password.empty())
            text += u":" + parts.password;
        text += u"@";
    }
    if (!parts.host.empty())
        text += parts.host + PortSuffix(parts.port) + u"/";
    return text + parts.path;
}

std::u16string WithoutTrailingSlashes(std::u16string path)
{
    path.resize(path.find_last_not_of(u'/') + 1);
    return path;
}

bool LooksLikeUri(const std::u16string& text)
{
    try
    {
        return Uri(text).GetScheme().size() >= 2;
    }
    catch (...)
    {
        return false;
    }
}

} // namespace tarnwell
