#include "recordedform.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace tarnwell::host
{

namespace
{

inline constexpr std::size_t blockSize = 0x10000;

// With both dollars. No system fills in a longer one.
inline constexpr std::size_t longestKeyword = 255;

constexpr std::array<std::string_view, 16> keywords = {
    "Author",   "Change",        "Date",
    "DateTime", "DateTimeTZ",    "DateTimeUTC",
    "File",     "HeadURL",       "Header",
    "Id",       "LastChangedBy", "LastChangedDate",
    "Rev",      "Revision",      "LastChangedRevision",
    "URL"};

// Of "$Id$" and "$Id: a.c 5 ann $" the name; of anything else nothing.
std::string_view KeywordIn(std::string_view text)
{
    const std::string_view inside = text.substr(1, text.size() - 2);
    const std::string_view name = inside.substr(0, inside.find(':'));
    const bool isKnown = std::find(keywords.begin(), keywords.end(), name) != keywords.end();
    return isKnown ? name : std::string_view();
}

} // namespace

std::span<const char> RecordedForm::Next()
{
    bool isEnd = false;
    while (ready_.size() < blockSize && !isEnd)
    {
        const std::span<const char> bytes = reader_.Next();
        isEnd = bytes.empty();
        for (const char byte : bytes)
            Take(byte);
    }
    // What began as a keyword ends with the content.
    if (isEnd)
        ready_ += std::exchange(candidate_, {});
    block_ = ready_.substr(0, blockSize);
    ready_.erase(0, block_.size());
    return block_;
}

void RecordedForm::Take(char byte)
{
    const bool isSecond = isBehindReturn_ && byte == '\n';
    isBehindReturn_ = conversions_.lineEnds && byte == '\r';
    if (!isSecond)
        TakeOfLine(isBehindReturn_ ? '\n' : byte);
}

void RecordedForm::TakeOfLine(char byte)
{
    if (!conversions_.keywords || (candidate_.empty() && byte != '$'))
    {
        ready_ += byte;
        return;
    }
    const bool isEnd = !candidate_.empty() && byte == '$';
    candidate_ += byte;
    if (isEnd && !KeywordIn(candidate_).empty())
    {
        ready_.append("$").append(KeywordIn(candidate_)).append("$");
        candidate_.clear();
    }
    else if (isEnd)
    {
        // It may begin the next one.
        const std::size_t last = candidate_.size() - 1;
        ready_.append(candidate_, 0, last);
        candidate_.erase(0, last);
    }
    else if (byte == '\n' || byte == '\r' || candidate_.size() >= longestKeyword)
        ready_ += std::exchange(candidate_, {});
}

} // namespace tarnwell::host
