#include "mercurial/hghistoryparser.h"

#include "frame/unixtime.h"
#include "mercurial/hgtreeparser.h"
#include "mercurial/hgwords.h"

#include <array>

namespace tarnwell
{

namespace
{

struct Header
{
    std::string_view id;
    std::string_view seconds;
    std::array<std::uint64_t, 4> counts;
};

std::optional<Header> HeaderIn(std::string_view line)
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
    for (std::size_t i = 0; i < header.counts.size(); ++i)
    {
        const auto number = WholeNumber(words[i + 3]);
        if (!number)
            return std::nullopt;
        header.counts[i] = *number;
    }
    return IsHgId(header.id) ? std::optional(header) : std::nullopt;
}

} // namespace

std::optional<HgChange> HgHistoryParser::Next()
{
    if (!ReadHeader() || !ReadTexts() || !ReadNames())
        return std::nullopt;
    feed_.EndRecord();
    counts_.reset();
    texts_ = 0;
    return std::exchange(change_, {});
}

bool HgHistoryParser::ReadHeader()
{
    if (counts_)
        return true;
    const auto line = feed_.TakeTo('\n');
    if (!line)
        return false;
    const auto header = HeaderIn(*line);
    if (!header)
    {
        feed_.Break();
        return false;
    }
    change_.id = header->id;
    change_.time = FileTimeOfSeconds(header->seconds);
    const auto& counts = header->counts;
    counts_ = {counts[0], counts[1], counts[2], counts[3]};
    return true;
}

bool HgHistoryParser::ReadTexts()
{
    for (; texts_ < 2; ++texts_)
    {
        const auto text = feed_.Take(texts_ == 0 ? counts_->author : counts_->description);
        if (!text)
            return false;
        (texts_ == 0 ? change_.author : change_.description) = *text;
    }
    return true;
}

bool HgHistoryParser::ReadNames()
{
    while (change_.files.size() < counts_->files)
    {
        const auto name = feed_.TakeTo('\0');
        if (!name)
            return false;
        change_.files.emplace_back(*name);
    }
    while (change_.copies.size() < counts_->copies)
    {
        const auto name = feed_.TakeTo('\0');
        if (!name)
            return false;
        if (!copy_)
        {
            copy_ = *name;
            continue;
        }
        // It becomes a part of addresses, and the client doesn't look at it.
        if (!IsHgPath(*name))
        {
            feed_.Break();
            return false;
        }
        change_.copies.emplace_back(std::move(*copy_), *name);
        copy_.reset();
    }
    return true;
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
