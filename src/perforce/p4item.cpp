#include "perforce/p4item.h"

#include "frame/text.h"
#include "perforce/p4commands.h"
#include "perforce/p4names.h"
#include "perforce/p4strict.h"
#include "perforce/p4uri.h"

#include <tarnwell/text.h>

#include <algorithm>

namespace tarnwell
{

namespace
{

bool IsDigits(std::u16string_view text)
{
    return !text.empty() && text.find_first_not_of(u"0123456789") == std::u16string_view::npos;
}

// Whether a name of a label, a workspace or a day can have it: what joins revisions, or begins
// another one, can't.
bool IsNameOfRevision(std::u16string_view text)
{
    constexpr std::u16string_view reserved = u"@#*%,<>&|=";
    const bool isPlain = std::none_of(text.begin(), text.end(), [&](char16_t unit) {
        return unit < u' ' || unit == 0x7F || reserved.find(unit) != std::u16string_view::npos;
    });
    return isPlain && !text.empty() && !text.starts_with(u' ') && !text.ends_with(u' ') &&
           text.find(u"...") == std::u16string_view::npos;
}

constexpr std::u16string_view namedRevisions[] = {u"head", u"have"};

bool IsNamed(std::u16string_view text)
{
    return std::find(std::begin(namedRevisions), std::end(namedRevisions), text) !=
           std::end(namedRevisions);
}

} // namespace

std::u16string P4Item::AddressOf(std::string_view depotPath,
                                 const std::u16string& revisionOfIt) const
{
    UriParts whole = parts;
    whole.path = DecodeName(depotPath) + revisionOfIt;
    return Uri({}).Compose(whole)->GetText();
}

P4Item P4ItemOf(const std::u16string& address, const std::optional<std::u16string>& wanted)
{
    P4Item item;
    item.address = address;
    item.parts = P4Uri(address).GetParts();
    std::u16string path = item.parts.path;
    item.given = wanted.value_or(u"");
    const std::size_t mark = p4Marker.FindIn(path);
    if (!wanted && mark != std::u16string::npos)
    {
        item.given = path.substr(mark);
        path.resize(mark);
        // A mark alone names nothing.
        if (item.given.size() == 1)
            item.given.clear();
    }
    const std::optional<std::string> revision = P4RevisionOf(item.given);
    if (!revision)
        ThrowP4Failure(noRevision, item.given);
    item.revision = *revision;

    // Names that were listed as bytes are taken as well as those that were typed.
    std::u16string whole = NormalizeDepotPath(path);
    item.isFolder = whole.ends_with(u'/');
    while (whole.size() > 2 && whole.ends_with(u'/'))
        whole.pop_back();
    const std::optional<std::string> bytes = EncodeName(P4PathArgument(whole, true));
    if (!bytes || !IsP4Path(*bytes))
        ThrowP4Failure(noPath, address);
    item.path = P4Literal(*bytes);
    return item;
}

std::optional<std::string> P4RevisionOf(std::u16string_view text)
{
    if (text.empty())
        return std::string();
    const bool hasMark = text[0] == u'#' || text[0] == u'@';
    const std::u16string_view name = hasMark ? text.substr(1) : text;
    const bool isNumber = IsDigits(name);
    const bool isWord = text[0] != u'@' && IsNamed(name);
    if (text[0] == u'#' && !isNumber && !isWord)
        return std::nullopt;
    const bool isOneChange = name.starts_with(u'=') && IsDigits(name.substr(1));
    if (!isNumber && !isOneChange && !IsNameOfRevision(name))
        return std::nullopt;
    const std::optional<std::string> bytes = EncodeName(name);
    if (!bytes)
        return std::nullopt;
    return (text[0] == u'#' || isWord ? "#" : "@") + *bytes;
}

bool IsP4Moment(std::string_view revision)
{
    if (revision.empty() || revision == "#head" || revision == "@now")
        return true;
    const std::string_view name = revision.substr(1);
    const std::size_t digits = std::min(name.size(), name.find_first_not_of("0123456789"));
    const bool isNumber = digits == name.size();
    const bool isDay = digits > 0 && !isNumber && name[digits] == '/';
    return revision[0] == '@' && (isNumber || isDay);
}

} // namespace tarnwell
