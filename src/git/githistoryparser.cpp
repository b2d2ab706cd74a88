#include "git/githistoryparser.h"

#include "frame/unixtime.h"
#include "git/gittreeparser.h"

#include <array>
#include <utility>

namespace tarnwell
{

namespace
{

bool IsObjectName(std::string_view text)
{
    return (text.size() == 40 || text.size() == 64) &&
           text.find_first_not_of("0123456789abcdef") == std::string_view::npos;
}

bool IsCapital(char byte)
{
    return byte >= 'A' && byte <= 'Z';
}

std::string_view WithoutLastFeeds(std::string_view text)
{
    return text.substr(0, text.find_last_not_of("\r\n") + 1);
}

} // namespace

// The texts from a place on, each with its NUL.
class GitHistoryParser::Reading
{
public:
    explicit Reading(std::string_view bytes) : bytes_(bytes) {}

    std::size_t Position() const
    {
        return position_;
    }
    bool IsAtEnd() const
    {
        return position_ == bytes_.size();
    }
    char First() const
    {
        return bytes_[position_];
    }
    void SkipByte()
    {
        ++position_;
    }
    // Nothing if its end isn't there yet.
    std::optional<std::string_view> Text()
    {
        const std::size_t end = bytes_.find('\0', position_);
        if (end == std::string_view::npos)
            return std::nullopt;
        const std::string_view text = bytes_.substr(position_, end - position_);
        position_ = end + 1;
        return text;
    }

private:
    std::string_view bytes_;
    std::size_t position_ = 0;
};

std::optional<GitCommit> GitHistoryParser::Next()
{
    Reading reading(feed_.Rest());
    std::optional<GitCommit> commit = ReadCommit(reading);
    if (commit)
        feed_.Drop(reading.Position());
    return commit;
}

std::optional<GitCommit> GitHistoryParser::ReadCommit(Reading& reading)
{
    std::array<std::string_view, 5> texts;
    for (std::string_view& text : texts)
    {
        const std::optional<std::string_view> found = reading.Text();
        if (!found)
            return std::nullopt;
        text = *found;
    }
    if (!IsObjectName(texts[0]))
        return std::nullopt;
    GitCommit commit{std::string(texts[0]),
                     std::string(texts[1]),
                     std::string(WithoutLastFeeds(texts[4])),
                     FileTimeOfSeconds(texts[2]),
                     FileTimeOfSeconds(texts[3]),
                     path_};
    if (hasNames_ && !ReadNames(reading, commit))
        return std::nullopt;
    return commit;
}

bool GitHistoryParser::ReadNames(Reading& reading, GitCommit& commit)
{
    std::string before = path_;
    for (;;)
    {
        if (reading.IsAtEnd() && !hasEnded_)
            return false;
        if (reading.IsAtEnd())
            break;
        if (reading.First() == '\n')
        {
            reading.SkipByte();
            continue;
        }
        if (!IsCapital(reading.First()))
            break;
        const std::optional<std::string_view> status = reading.Text();
        const std::optional<std::string_view> name = reading.Text();
        if (!status || !name)
            return false;
        if (status->front() != 'R' && status->front() != 'C')
            continue;
        const std::optional<std::string_view> newName = reading.Text();
        // The name becomes a part of addresses.
        if (!newName || !IsGitPath(*name))
            return false;
        if (*newName == path_)
            before = *name;
    }
    commit.path = std::exchange(path_, std::move(before));
    return true;
}

} // namespace tarnwell
