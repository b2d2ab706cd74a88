#include "mercurial/hghistoryparser.h"

#include "frame/unixtime.h"
#include "mercurial/hgwords.h"

#include <utility>

namespace tarnwell
{

namespace
{

struct Header
{
    std::string_view id;
    std::uint64_t number;
    std::string_view seconds;
    std::array<std::uint64_t, 2> sizes;
    bool hasPath;
};

std::optional<Header> HeaderIn(std::string_view line)
{
    std::array<std::string_view, 7> words;
    for (std::size_t i = 0; i < words.size() - 1; ++i)
    {
        const auto word = TakeTo(line, ' ');
        if (!word)
            return std::nullopt;
        words[i] = *word;
    }
    words.back() = line;
    const auto number = WholeNumber(words[1]);
    const auto author = WholeNumber(words[4]);
    const auto description = WholeNumber(words[5]);
    const bool hasPath = words[6] == "1";
    if (!IsHgId(words[0]) || !number || !author || !description || (!hasPath && words[6] != "0"))
        return std::nullopt;
    return Header{words[0], *number, words[2], {*author, *description}, hasPath};
}

} // namespace

std::optional<HgChange> HgHistoryParser::Next()
{
    if (!ReadHeader() || !ReadTexts())
        return std::nullopt;
    feed_.EndRecord();
    sizes_.reset();
    texts_ = 0;
    return std::exchange(change_, {});
}

bool HgHistoryParser::ReadHeader()
{
    if (sizes_)
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
    change_.number = header->number;
    change_.time = FileTimeOfSeconds(header->seconds);
    change_.hasPath = header->hasPath;
    sizes_ = header->sizes;
    return true;
}

bool HgHistoryParser::ReadTexts()
{
    for (; texts_ < 2; ++texts_)
    {
        const auto text = feed_.Take((*sizes_)[static_cast<std::size_t>(texts_)]);
        if (!text)
            return false;
        (texts_ == 0 ? change_.author : change_.description) = *text;
    }
    return true;
}

} // namespace tarnwell
