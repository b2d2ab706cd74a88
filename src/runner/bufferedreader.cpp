#include "runner/bufferedreader.h"

#include <algorithm>

namespace tarnwell
{

namespace
{
constexpr std::size_t blockSize = 10240;
}

BufferedReader::BufferedReader(HANDLE handle, Decoding decoding)
    : handle_(handle), decoding_(decoding), buffer_(blockSize)
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
    return !bytes.empty();
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

std::string_view BufferedReader::Available()
{
    if (position_ == end_)
    {
        DWORD count = 0;
        ReadFile(handle_, buffer_.data(), static_cast<DWORD>(buffer_.size()), &count, nullptr);
        position_ = 0;
        end_ = count;
    }
    return std::string_view(buffer_.data() + position_, end_ - position_);
}

} // namespace tarnwell
