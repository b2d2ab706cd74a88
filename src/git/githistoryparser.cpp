#include "git/githistoryparser.h"

#include "frame/unixtime.h"
#include "git/gittreeparser.h"

#include <utility>

namespace tarnwell
{

namespace
{

bool IsCapital(char byte)
{
    return byte >= 'A' && byte <= 'Z';
}

std::string_view WithoutLastFeeds(std::string_view text)
{
    return text.substr(0, text.find_last_not_of("\r\n") + 1);
}

} // namespace

std::optional<GitCommit> GitHistoryParser::Next()
{
    constexpr std::size_t count = 5; // texts of a commit
    while (texts_.size() < count)
    {
        const std::optional<std::string_view> text = feed_.TakeTo('\0');
        if (!text)
            return std::nullopt;
        texts_.emplace_back(*text);
        if (texts_.size() == 1 && !IsGitId(texts_[0]))
            return feed_.Break();
    }
    if (hasNames_ && !ReadNames())
        return std::nullopt;
    feed_.EndRecord();
    GitCommit commit{std::move(texts_[0]),
                     std::move(texts_[1]),
                     std::string(WithoutLastFeeds(texts_[4])),
                     FileTimeOfSeconds(texts_[2]),
                     FileTimeOfSeconds(texts_[3]),
                     std::exchange(path_, before_)};
    texts_.clear();
    return commit;
}

bool GitHistoryParser::ReadNames()
{
    for (;;)
    {
        if (change_.empty())
        {
            const std::optional<char> first = feed_.First();
            if (!first)
                return hasEnded_ && !feed_.IsBroken();
            if (*first == '\n')
            {
                feed_.Take(1);
                continue;
            }
            if (!IsCapital(*first))
                return true;
        }
        if (!ReadChange())
            return false;
    }
}

bool GitHistoryParser::ReadChange()
{
    const auto isRename = [&] {
        return change_[0].front() == 'R' || change_[0].front() == 'C';
    };
    while (change_.size() < 2 || (change_.size() == 2 && isRename()))
    {
        const std::optional<std::string_view> text = feed_.TakeTo('\0');
        if (!text)
            return false;
        change_.emplace_back(*text);
    }
    if (isRename())
    {
        // The name becomes a part of addresses.
        if (!IsGitPath(change_[1]))
        {
            feed_.Break();
            return false;
        }
        if (change_[2] == path_)
            before_ = change_[1];
    }
    change_.clear();
    return true;
}

} // namespace tarnwell
