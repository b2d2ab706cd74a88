#include "git/gittreeparser.h"

#include "frame/text.h"
#include "frame/unixtime.h"

#include <algorithm>
#include <charconv>

namespace tarnwell
{

namespace
{

// The text in front of `mark`, which is taken away with it. Nothing without a mark.
std::optional<std::string_view> TakeTo(std::string_view& text, char mark)
{
    const std::size_t end = text.find(mark);
    if (end == std::string_view::npos)
        return std::nullopt;
    const std::string_view taken = text.substr(0, end);
    text.remove_prefix(end + 1);
    return taken;
}

template <class T> std::optional<T> NumberIn(std::string_view text, int base)
{
    T number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, base);
    if (error != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return number;
}

std::string InHexadecimal(std::string_view bytes)
{
    constexpr const char* digits = "0123456789abcdef";
    std::string text;
    text.reserve(2 * bytes.size());
    for (const char byte : bytes)
    {
        text += digits[static_cast<unsigned char>(byte) >> 4];
        text += digits[static_cast<unsigned char>(byte) & 15];
    }
    return text;
}

// The client does the same.
std::uint32_t PlainMode(std::uint32_t mode)
{
    constexpr std::uint32_t kindBits = 0170000;
    constexpr std::uint32_t ownersExecuteBit = 0100;
    switch (mode & kindBits)
    {
    case gitFileMode& kindBits:
        return (mode & ownersExecuteBit) != 0 ? gitProgramMode : gitFileMode;
    case gitFolderMode:
        return gitFolderMode;
    case gitLinkMode:
        return gitLinkMode;
    default:
        return gitRepositoryMode;
    }
}

std::optional<GitEntry> ReadListed(std::string_view text)
{
    const auto mode = TakeTo(text, ' ');
    const auto type = TakeTo(text, ' ');
    const auto id = TakeTo(text, ' ');
    auto size = TakeTo(text, '\t');
    if (!mode || !type || !id || !size || !IsGitId(*id) || !IsGitPath(text))
        return std::nullopt;
    size->remove_prefix(std::min(size->size(), size->find_first_not_of(' ')));
    const auto modeNumber = NumberIn<std::uint32_t>(*mode, 8);
    const bool isMissing = *size == "BAD";
    const auto sizeNumber = *size == "-" || isMissing ? std::optional<std::uint64_t>(0)
                                                      : NumberIn<std::uint64_t>(*size, 10);
    if (!modeNumber || !sizeNumber)
        return std::nullopt;
    return GitEntry{PlainMode(*modeNumber), std::string(text), std::string(*id), *sizeNumber,
                    isMissing};
}

} // namespace

std::optional<GitObjectLine> ReadGitObjectLine(std::string_view text)
{
    const auto id = TakeTo(text, ' ');
    const auto type = TakeTo(text, ' ');
    const auto size = NumberIn<std::uint64_t>(text, 10);
    if (!id || !type || !size || !IsGitId(*id))
        return std::nullopt;
    return GitObjectLine{*id, *type, *size};
}

std::optional<std::vector<GitEntry>> ReadGitTree(std::string_view object, std::size_t idBytes)
{
    std::vector<GitEntry> entries;
    while (!object.empty())
    {
        const auto mode = TakeTo(object, ' ');
        const auto name = TakeTo(object, '\0');
        const auto number = mode ? NumberIn<std::uint32_t>(*mode, 8) : std::nullopt;
        if (!name || !number || !IsGitName(*name) || object.size() < idBytes)
            return std::nullopt;
        entries.push_back(
            {PlainMode(*number), std::string(*name), InHexadecimal(object.substr(0, idBytes)), 0});
        object.remove_prefix(idBytes);
    }
    return entries;
}

std::optional<GitCommitFacts> ReadGitCommit(std::string_view object)
{
    GitCommitFacts facts;
    while (const auto line = TakeTo(object, '\n'))
    {
        if (line->empty())
            break;
        std::string_view value = *line;
        const auto key = TakeTo(value, ' ');
        // What is behind the first one is nothing to the client.
        if (key == "tree" && facts.tree.empty() && IsGitId(value))
            facts.tree = value;
        // Behind the address stand the seconds and the zone.
        if (key == "committer" && value.find("> ") != std::string_view::npos)
        {
            value.remove_prefix(value.rfind("> ") + 2);
            facts.time = FileTimeOfSeconds(value.substr(0, value.find(' ')));
        }
    }
    if (facts.tree.empty())
        return std::nullopt;
    return facts;
}

std::optional<GitEntry> GitListingParser::Next()
{
    const std::optional<std::string_view> text = feed_.TakeTo('\0');
    if (!text)
        return std::nullopt;
    std::optional<GitEntry> entry = ReadListed(*text);
    if (!entry)
        return feed_.Break();
    feed_.EndRecord();
    return entry;
}

bool IsGitId(std::string_view text)
{
    return (text.size() == 40 || text.size() == 64) && IsHexadecimal(text);
}

bool IsGitName(std::string_view name)
{
    return !name.empty() && name != "." && name != ".." &&
           name.find('/') == std::string_view::npos && name.find('\0') == std::string_view::npos;
}

bool IsGitPath(std::string_view path)
{
    for (;;)
    {
        const std::string_view name = path.substr(0, path.find('/'));
        if (!IsGitName(name))
            return false;
        if (name.size() == path.size())
            return true;
        path.remove_prefix(name.size() + 1);
    }
}

} // namespace tarnwell
