#include "mercurial/hghistoryparser.h"

#include "frame/unixtime.h"
#include "mercurial/hgtreeparser.h"
#include "mercurial/hgwords.h"

#include <array>

namespace tarnwell
{

namespace
{

bool TakeBytes(std::string_view& text, std::uint64_t count, std::string& bytes)
{
    if (text.size() < count)
        return false;
    bytes = text.substr(0, count);
    text.remove_prefix(count);
    return true;
}

bool TakeName(std::string_view& text, std::string& name)
{
    const auto taken = TakeTo(text, '\0');
    if (taken)
        name = *taken;
    return taken.has_value();
}

struct Header
{
    std::string_view id;
    std::string_view seconds;
    std::array<std::uint64_t, 4> sizes;
};

std::optional<Header> ReadHeader(std::string_view line)
{
    Header header{};
    std::array<std::string_view, 7> words;
    for (std::size_t i = 0; i < words.size() - 1; ++i)
    {
        const auto word = TakeTo(line, ' ');
        if (!word)
            return std::nullopt;
        words[i] = *word;
    }
    words.back() = line;
    header.id = words[0];
    header.seconds = words[1];
    for (std::size_t i = 0; i < header.sizes.size(); ++i)
    {
        const auto number = WholeNumber(words[i + 3]);
        if (!number)
            return std::nullopt;
        header.sizes[i] = *number;
    }
    return IsHgId(header.id) ? std::optional(header) : std::nullopt;
}

bool ReadNames(std::string_view& rest, const Header& header, HgChange& change)
{
    for (std::uint64_t left = header.sizes[2]; left > 0; --left)
    {
        std::string name;
        if (!TakeName(rest, name))
            return false;
        change.files.push_back(std::move(name));
    }
    for (std::uint64_t left = header.sizes[3]; left > 0; --left)
    {
        std::pair<std::string, std::string> names;
        // The latter becomes a part of addresses, and the client doesn't look at it.
        if (!TakeName(rest, names.first) || !TakeName(rest, names.second) ||
            !IsHgPath(names.second))
            return false;
        change.copies.push_back(std::move(names));
    }
    return true;
}

} // namespace

std::optional<HgChange> HgHistoryParser::Next()
{
    std::string_view rest = feed_.Rest();
    const auto line = TakeTo(rest, '\n');
    const auto header = line ? ReadHeader(*line) : std::nullopt;
    if (!header)
        return std::nullopt;
    HgChange change;
    if (!TakeBytes(rest, header->sizes[0], change.author) ||
        !TakeBytes(rest, header->sizes[1], change.description) || !ReadNames(rest, *header, change))
        return std::nullopt;
    change.id = header->id;
    change.time = FileTimeOfSeconds(header->seconds);
    feed_.Drop(feed_.Rest().size() - rest.size());
    return change;
}

std::optional<std::string> HgNames::NameIn(const HgChange& change)
{
    std::optional<std::string> found;
    for (const std::string& file : change.files)
    {
        if (names_.contains(file) && (!found || file == latest_))
            found = file;
    }
    // What was made there was the item, not what it was made of.
    for (const auto& [name, source] : change.copies)
    {
        if (!names_.contains(name))
            continue;
        found = name;
        names_.insert(source);
        latest_ = source;
        return found;
    }
    if (found)
        latest_ = *found;
    return found;
}

} // namespace tarnwell
