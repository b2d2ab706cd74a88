#include "subversion/svnuri.h"

#include "frame/exception.h"
#include "frame/messages.h"

#include <algorithm>
#include <array>

namespace tarnwell
{

namespace
{

using namespace std::string_view_literals;

struct SchemeRow
{
    std::u16string_view scheme;
    std::u16string_view real;
};

// Exactly so, in small letters.
constexpr std::array schemes{
    SchemeRow{u"svn"sv, u"svn"sv},         SchemeRow{u"svnhttp"sv, u"http"sv},
    SchemeRow{u"svnhttps"sv, u"https"sv},  SchemeRow{u"svnfile"sv, u"file"sv},
    SchemeRow{u"svn+ssh"sv, u"svn+ssh"sv},
};

const SchemeRow* FindScheme(std::u16string_view scheme)
{
    const auto* const row = std::find_if(schemes.begin(), schemes.end(),
                                         [&](const SchemeRow& r) { return r.scheme == scheme; });
    return row == schemes.end() ? nullptr : row;
}

void CheckScheme(std::u16string_view scheme, const std::u16string& text)
{
    if (FindScheme(scheme) == nullptr)
        throw ComException(E_INVALIDARG, FormatMessageById(MessageId::InvalidSubversionUri, {text}),
                           At(svnSource));
}

// A plain Uri, since the client's scheme may be none of the five.
std::shared_ptr<Uri> RealAddress(UriParts parts)
{
    parts.scheme = SvnRealScheme(parts.scheme);
    parts.user.clear();
    parts.password.clear();
    return Uri({}).Compose(parts);
}

} // namespace

std::u16string_view SvnRealScheme(std::u16string_view scheme)
{
    const SchemeRow* const row = FindScheme(scheme);
    return row == nullptr ? scheme : row->real;
}

SVNUri::SVNUri(std::u16string text) : Uri(std::move(text))
{
    const std::u16string_view scheme =
        std::u16string_view(GetText()).substr(0, GetText().find(u':'));
    if (FindScheme(scheme) == nullptr || !HasScheme(scheme))
        CheckScheme(GetScheme(), GetText());
}

std::shared_ptr<Uri> SVNUri::ForDisplay() const
{
    return RealAddress(GetParts());
}

std::shared_ptr<Uri> SVNUri::ForComparison() const
{
    return RealAddress(svnMarker.Strip(GetParts()));
}

std::shared_ptr<Uri> SVNUri::Create(std::u16string text) const
{
    return std::make_shared<SVNUri>(std::move(text));
}

std::shared_ptr<Uri> SVNUri::Clone() const
{
    return Compose(svnMarker.Strip(GetParts()));
}

UriParts SvnPartsOf(const std::u16string& text)
{
    UriParts parts = Uri(text).GetParts();
    CheckScheme(parts.scheme, text);
    return parts;
}

std::u16string SvnPathOf(const std::u16string& text)
{
    const std::optional<UriViews> usual = UsualParts(text);
    const bool isKnown = usual && FindScheme(usual->scheme) != nullptr;
    return isKnown ? std::u16string(usual->path) : SvnPartsOf(text).path;
}

} // namespace tarnwell
