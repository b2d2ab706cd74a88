#include "subversion/svntreeparser.h"

#include "subversion/svnhistoryparser.h"
#include "subversion/svnvalues.h"

#include <charconv>

namespace tarnwell
{

namespace
{

std::optional<std::uint64_t> NumberIn(const std::string& text)
{
    std::uint64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return number;
}

// Nothing but for "file" and "dir".
std::optional<bool> IsFolder(const SvnElement& entry)
{
    const std::string* const kind = entry.Attribute("kind");
    if (kind == nullptr || (*kind != "file" && *kind != "dir"))
        return std::nullopt;
    return *kind == "dir";
}

int DigitOf(char byte)
{
    if (byte >= '0' && byte <= '9')
        return byte - '0';
    if (byte >= 'A' && byte <= 'F')
        return byte - 'A' + 10;
    return byte >= 'a' && byte <= 'f' ? byte - 'a' + 10 : -1;
}

} // namespace

std::optional<SvnItemFacts> ReadSvnInfo(const SvnElement& entry)
{
    const SvnElement* const repository = entry.Child("repository");
    const SvnElement* const commit = entry.Child("commit");
    const std::string* const url = entry.ChildText("url");
    const std::string* const relative = entry.ChildText("relative-url");
    const std::string* const root = repository ? repository->ChildText("root") : nullptr;
    const std::string* const revision = entry.Attribute("revision");
    const std::optional<bool> isFolder = IsFolder(entry);
    if (url == nullptr || relative == nullptr || root == nullptr || revision == nullptr ||
        !isFolder || !relative->starts_with("^/"))
        return std::nullopt;
    std::string path = DecodeSvnUrl(std::string_view(*relative).substr(2));
    if (!path.empty() && !IsSvnName(path))
        return std::nullopt;
    SvnItemFacts facts;
    facts.url = *url;
    facts.root = *root;
    facts.path = std::move(path);
    facts.isFolder = *isFolder;
    // The client has words for an item that isn't there yet.
    if (IsSvnNumber(*revision))
        facts.revision = *revision;
    const std::string* const changed = commit ? commit->Attribute("revision") : nullptr;
    if (changed != nullptr && IsSvnNumber(*changed))
        facts.changedRevision = *changed;
    const std::string* const date = commit ? commit->ChildText("date") : nullptr;
    if (date != nullptr)
        facts.changedTime = ParseSvnDate(std::u16string(date->begin(), date->end()));
    const std::string* const size = entry.Attribute("size");
    const std::optional<std::uint64_t> bytes = size ? NumberIn(*size) : std::uint64_t{0};
    if (!bytes)
        return std::nullopt;
    facts.size = *bytes;
    return facts;
}

std::optional<SvnEntry> ReadSvnEntry(const SvnElement& entry)
{
    const std::string* const name = entry.ChildText("name");
    const std::string* const size = entry.ChildText("size");
    const std::optional<bool> isFolder = IsFolder(entry);
    if (name == nullptr || !IsSvnName(*name) || !isFolder || (size == nullptr && !*isFolder))
        return std::nullopt;
    SvnEntry found{*name, *isFolder, 0};
    if (*isFolder)
        return found;
    const std::optional<std::uint64_t> bytes = NumberIn(*size);
    if (!bytes)
        return std::nullopt;
    found.size = *bytes;
    return found;
}

std::optional<SvnMarks> ReadSvnMarks(const SvnElement& target)
{
    const std::string* const path = target.Attribute("path");
    if (path == nullptr)
        return std::nullopt;
    SvnMarks marks;
    marks.url = *path;
    for (const SvnElement& property : target.children)
    {
        const std::string* const name = property.Attribute("name");
        if (property.name != "property" || name == nullptr)
            return std::nullopt;
        marks.isExecutable = marks.isExecutable || *name == "svn:executable";
        marks.isSpecial = marks.isSpecial || *name == "svn:special";
        marks.hasKeywords = marks.hasKeywords || *name == "svn:keywords";
        marks.hasLineEnds = marks.hasLineEnds || *name == "svn:eol-style";
    }
    return marks;
}

std::string DecodeSvnUrl(std::string_view url)
{
    std::string decoded;
    decoded.reserve(url.size());
    for (std::size_t i = 0; i < url.size(); ++i)
    {
        const bool canBeCode = url[i] == '%' && i + 2 < url.size();
        const int high = canBeCode ? DigitOf(url[i + 1]) : -1;
        const int low = canBeCode ? DigitOf(url[i + 2]) : -1;
        const bool isCode = high >= 0 && low >= 0;
        decoded += isCode ? static_cast<char>(high * 16 + low) : url[i];
        i += isCode ? 2 : 0;
    }
    return decoded;
}

bool IsSvnName(std::string_view path)
{
    for (;;)
    {
        const std::string_view name = path.substr(0, path.find('/'));
        if (name.empty() || name == "." || name == ".." ||
            name.find('\0') != std::string_view::npos)
            return false;
        if (name.size() == path.size())
            return true;
        path.remove_prefix(name.size() + 1);
    }
}

std::string EncodeSvnPath(std::string_view path)
{
    constexpr std::string_view plain = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz"
                                       "0123456789-_./";
    constexpr const char* digits = "0123456789ABCDEF";
    std::string encoded;
    encoded.reserve(path.size());
    for (const char byte : path)
    {
        if (plain.find(byte) != std::string_view::npos)
        {
            encoded += byte;
            continue;
        }
        encoded += '%';
        encoded += digits[static_cast<unsigned char>(byte) >> 4];
        encoded += digits[static_cast<unsigned char>(byte) & 15];
    }
    return encoded;
}

} // namespace tarnwell
