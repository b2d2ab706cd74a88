#include "perforce/p4item.h"

#include "frame/text.h"
#include "perforce/p4commands.h"
#include "perforce/p4strict.h"
#include "perforce/p4uri.h"

#include <tarnwell/text.h>

#include <algorithm>
#include <array>

namespace tarnwell
{

namespace
{

struct Encoding
{
    char byte;
    std::string_view text;
};
// The characters that mean something in the client's paths.
constexpr std::array<Encoding, 4> encodings{
    {{'@', "%40"}, {'#', "%23"}, {'*', "%2A"}, {'%', "%25"}}};

const Encoding* EncodingAt(std::string_view text)
{
    const auto isHere = [&](const Encoding& encoding) {
        const std::string_view here = text.substr(0, encoding.text.size());
        return here == encoding.text || (encoding.byte == '*' && here == "%2a");
    };
    const auto* const found = std::find_if(encodings.begin(), encodings.end(), isHere);
    return found == encodings.end() ? nullptr : found;
}

const Encoding* EncodingOf(char byte)
{
    const auto* const found =
        std::find_if(encodings.begin(), encodings.end(),
                     [&](const Encoding& encoding) { return encoding.byte == byte; });
    return found == encodings.end() ? nullptr : found;
}

// What is encoded stays so.
std::string Literal(std::string_view path)
{
    std::string literal;
    for (std::size_t at = 0; at < path.size(); ++at)
    {
        const Encoding* const encoding = EncodingOf(path[at]);
        const bool isEncoded = EncodingAt(path.substr(at)) != nullptr;
        if (encoding == nullptr || isEncoded)
            literal += path[at];
        else
            literal += encoding->text;
    }
    return literal;
}

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
    item.path = Literal(*bytes);
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

bool IsP4Path(std::string_view path)
{
    constexpr std::string_view ends("\0\r\n", 3);
    if (path.find_first_of(ends) != std::string_view::npos ||
        path.find("...") != std::string_view::npos)
        return false;
    std::string_view rest = path.substr(2);
    while (!rest.empty())
    {
        const std::string_view part = rest.substr(0, rest.find('/'));
        if (part.empty() || part == "." || part == "..")
            return false;
        rest.remove_prefix(std::min(rest.size(), part.size() + 1));
    }
    return true;
}

std::string P4Encoded(std::string_view path)
{
    std::string encoded;
    for (const char byte : path)
    {
        const Encoding* const encoding = EncodingOf(byte);
        encoding == nullptr ? encoded += byte : encoded += encoding->text;
    }
    return encoded;
}

std::string P4Decoded(std::string_view path)
{
    std::string decoded;
    for (std::size_t at = 0; at < path.size(); ++at)
    {
        const Encoding* const encoding = EncodingAt(path.substr(at));
        decoded += encoding == nullptr ? path[at] : encoding->byte;
        if (encoding != nullptr)
            at += encoding->text.size() - 1;
    }
    return decoded;
}

} // namespace tarnwell
