#include "runner/bufferedreader.h"

#include "platform/clientgroup.h"
#include "platform/wide.h"

#include <algorithm>
#include <limits>

namespace tarnwell
{

namespace
{

constexpr std::size_t blockSize = 10240;

std::u16string Widened(std::string_view bytes)
{
    std::u16string text(bytes.size(), u'\0');
    std::transform(bytes.begin(), bytes.end(), text.begin(), [](char byte) {
        return static_cast<char16_t>(static_cast<unsigned char>(byte));
    });
    return text;
}

std::u16string FromUtf8(std::string_view bytes)
{
    // Never more units than bytes.
    if (bytes.empty() || bytes.size() > std::numeric_limits<int>::max())
        return {};
    const int size = static_cast<int>(bytes.size());
    std::u16string text(bytes.size(), u'\0');
    const int units = MultiByteToWideChar(CP_UTF8, 0, bytes.data(), size, Wide(text.data()), size);
    text.resize(static_cast<std::size_t>(units));
    return text;
}

} // namespace

std::u16string Decode(std::string_view bytes, Decoding decoding)
{
    return decoding == Decoding::Utf8 ? FromUtf8(bytes) : Widened(bytes);
}

BufferedReader::BufferedReader(HANDLE handle, Decoding decoding, BareLineFeed bareLineFeed)
    : handle_(handle), decoding_(decoding), bareLineFeed_(bareLineFeed), buffer_(blockSize)
{
}

bool BufferedReader::ReadLine(std::u16string& line)
{
    // Most lines lie in one block and are decoded where they are.
    std::string carried;
    std::string_view block = Available();
    std::size_t feed = block.find('\n');
    while (feed == std::string_view::npos && !block.empty())
    {
        carried += block;
        Consume(block.size());
        block = Available();
        feed = block.find('\n');
    }
    std::string_view bytes = block.substr(0, feed);
    if (!carried.empty())
        bytes = carried += bytes;
    line = Decode(bytes, decoding_);
    Consume(std::min(block.size(), feed + 1));
    if (line.ends_with(u'\r'))
        line.pop_back();
    const bool feedCounts = bareLineFeed_ == BareLineFeed::IsALine && !block.empty();
    return !bytes.empty() || feedCounts;
}

std::u16string BufferedReader::ReadAll()
{
    std::string bytes;
    for (std::string_view block = Available(); !block.empty(); block = Available())
    {
        bytes += block;
        Consume(block.size());
    }
    return Decode(bytes, decoding_);
}

std::string_view BufferedReader::ReadBlock()
{
    if (position_ == end_ && !hasEnded_)
    {
        DWORD count = 0;
        const DWORD size = static_cast<DWORD>(buffer_.size());
        const bool isRead = ReadPipe(handle_, buffer_.data(), size, &count) != 0;
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
