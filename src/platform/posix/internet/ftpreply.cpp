#include "platform/posix/internet/ftpreply.h"

#include <algorithm>
#include <utility>

namespace tarnwell::posix
{
namespace
{

constexpr std::size_t codeDigits = 3;

// 0 if the line begins with none.
int CodeOf(std::string_view line)
{
    const auto isDigit = [](char unit) {
        return unit >= '0' && unit <= '9';
    };
    if (line.size() < codeDigits || !std::all_of(line.begin(), line.begin() + codeDigits, isDigit))
        return 0;
    return (line[0] - '0') * 100 + (line[1] - '0') * 10 + (line[2] - '0');
}

} // namespace

bool ReplyReader::Take(std::string_view line)
{
    while (line.ends_with('\n') || line.ends_with('\r'))
        line.remove_suffix(1);
    if (!isOpen_)
        Begin(line);
    size_ += line.size() + 2;
    if (open_.text.size() + line.size() + 2 <= longestKept)
        open_.text.append(line).append("\r\n");
    // A hyphen behind the code says that there is more.
    const bool isMore = line.size() > codeDigits && line[codeDigits] == '-';
    if (CodeOf(line) == open_.code && !isMore)
        Complete();
    return size_ <= longestReply;
}

void ReplyReader::Begin(std::string_view line)
{
    open_ = {CodeOf(line), {}};
    size_ = 0;
    isOpen_ = true;
}

void ReplyReader::Complete()
{
    isOpen_ = false;
    last_ = std::move(open_);
    hasAsked_ = hasAsked_ || last_.code == 331 || last_.code == 332;
    hasBegun_ = hasBegun_ || last_.code == 125 || last_.code == 150;
}

void ReplyReader::Forget()
{
    *this = {};
}

} // namespace tarnwell::posix
