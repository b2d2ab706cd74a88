#include "runner/bufferedreader.h"

#include "platform/clientgroup.h"
#include "runner/longtext.h"

#include <algorithm>

namespace tarnwell
{

namespace
{

constexpr std::size_t blockSize = 10240;

} // namespace

BufferedReader::BufferedReader(HANDLE handle, Decoding decoding, BareLineFeed bareLineFeed)
    : handle_(handle), decoding_(decoding), bareLineFeed_(bareLineFeed), buffer_(blockSize)
{
}

bool BufferedReader::ReadLine(std::u16string& line)
{
    line.clear();
    const std::string_view block = Available();
    const std::size_t feed = block.find('\n');
    const bool hasBytes = feed != 0 && !block.empty();
    // Most lines lie in one block and are decoded where they are.
    if (feed == std::string_view::npos)
    {
        line = ReadLongLine();
    }
    else
    {
        AppendDecoded(line, block.substr(0, feed), decoding_);
        Consume(feed + 1);
    }
    if (line.ends_with(u'\r'))
        line.pop_back();
    const bool feedCounts = bareLineFeed_ == BareLineFeed::IsALine && !block.empty();
    return hasBytes || feedCounts;
}

std::u16string BufferedReader::ReadAll()
{
    LongText all;
    for (std::string_view block = Available(); !block.empty(); block = Available())
    {
        all.Append(block);
        Consume(block.size());
    }
    return all.TakeDecoded(decoding_);
}

std::string_view BufferedReader::ReadBlock(HANDLE group)
{
    if (position_ == end_ && !hasEnded_)
    {
        DWORD count = 0;
        const DWORD size = static_cast<DWORD>(buffer_.size());
        const bool isRead = ReadPipe(group, handle_, buffer_.data(), size, &count) != 0;
        const DWORD error = isRead ? ERROR_SUCCESS : GetLastError();
        // One way to tell the end.
        failure_ = error == ERROR_BROKEN_PIPE ? ERROR_SUCCESS : error;
        Filled(isRead ? count : 0);
    }
    const std::string_view block = Available();
    Consume(block.size());
    return block;
}

void BufferedReader::SkipAll()
{
    for (std::string_view block = Available(); !block.empty(); block = Available())
        Consume(block.size());
}

std::u16string BufferedReader::ReadLongLine()
{
    LongText text;
    std::string_view block = Available();
    std::size_t feed = std::string_view::npos;
    while (feed == std::string_view::npos && !block.empty())
    {
        text.Append(block);
        Consume(block.size());
        block = Available();
        feed = block.find('\n');
    }
    text.Append(block.substr(0, feed));
    Consume(std::min(block.size(), feed + 1));
    return text.TakeDecoded(decoding_);
}

std::string_view BufferedReader::Available()
{
    if (position_ == end_ && !hasEnded_)
    {
        DWORD count = 0;
        ReadFile(handle_, buffer_.data(), static_cast<DWORD>(buffer_.size()), &count, nullptr);
        Filled(count);
    }
    return std::string_view(buffer_.data() + position_, end_ - position_);
}

void BufferedReader::Filled(DWORD count)
{
    position_ = 0;
    end_ = count;
    hasEnded_ = count == 0;
}

} // namespace tarnwell
