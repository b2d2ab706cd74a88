#include "platform/posix/internet/listingparser.h"

#include "platform/posix/internet/listinglines.h"

namespace tarnwell::posix
{

bool IsPlainName(std::string_view name)
{
    constexpr std::string_view forbidden("/\0\r\n", 4);
    return !name.empty() && name.find_first_of(forbidden) == std::string_view::npos &&
           name.find("\u2028") == std::string_view::npos &&
           name.find("\u2029") == std::string_view::npos;
}

std::optional<ListedEntry> ParseListLine(std::string_view line, Moment now)
{
    std::optional<ListedEntry> entry = ParseUnixLine(line, now);
    if (!entry)
        entry = ParseDosLine(line);
    return entry && IsPlainName(entry->name) ? entry : std::nullopt;
}

ListingReader::ListingReader(ListingForm form, Moment now) : form_(form), now_(now) {}

bool ListingReader::Take(std::string_view piece)
{
    textSize_ += piece.size();
    for (;;)
    {
        const std::size_t end = piece.find('\n');
        const std::string_view part = piece.substr(0, end);
        isTooLong_ = isTooLong_ || unfinished_.size() + part.size() > longestLine;
        if (end == std::string_view::npos)
        {
            if (!isTooLong_)
                unfinished_ += part;
            break;
        }
        if (!isTooLong_ && unfinished_.empty())
            TakeLine(part);
        else if (!isTooLong_)
            TakeLine(unfinished_ += part);
        unfinished_.clear();
        isTooLong_ = false;
        piece.remove_prefix(end + 1);
    }
    return textSize_ <= longestText && kept_ <= mostKept;
}

void ListingReader::TakeLine(std::string_view line)
{
    if (line.ends_with('\r'))
        line.remove_suffix(1);
    std::optional<ListedEntry> entry =
        form_ == ListingForm::Facts ? ParseFactLine(line) : ParseListLine(line, now_);
    if (!entry)
        return;
    kept_ += sizeof(ListedEntry) + entry->name.size();
    entries_.push_back(*std::move(entry));
}

std::vector<ListedEntry> ListingReader::Finish()
{
    if (!isTooLong_ && !unfinished_.empty())
        TakeLine(unfinished_);
    unfinished_.clear();
    return std::move(entries_);
}

} // namespace tarnwell::posix
