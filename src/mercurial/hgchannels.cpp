#include "mercurial/hgchannels.h"

#include <algorithm>

namespace tarnwell
{

namespace
{

constexpr std::size_t headerSize = 5;

std::uint32_t NumberIn(std::string_view bytes)
{
    std::uint32_t number = 0;
    for (const char byte : bytes)
        number = number << 8 | static_cast<unsigned char>(byte);
    return number;
}

bool IsInput(char channel)
{
    return channel == 'I' || channel == 'L';
}

bool IsKnown(char channel)
{
    return IsInput(channel) || (channel >= 'a' && channel <= 'z');
}

std::string BytesOf(std::uint32_t number)
{
    std::string bytes;
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes += static_cast<char>(number >> shift & 0xFF);
    return bytes;
}

} // namespace

std::optional<HgPiece> HgChannels::Next()
{
    if (isBroken_)
        return std::nullopt;
    if (left_ == 0)
    {
        const std::size_t missing = std::min(headerSize - header_.size(), bytes_.size());
        header_ += bytes_.substr(0, missing);
        bytes_.remove_prefix(missing);
        if (header_.size() < headerSize)
            return std::nullopt;
        channel_ = header_[0];
        const std::uint32_t number = NumberIn(std::string_view(header_).substr(1));
        header_.clear();
        isBroken_ = !IsKnown(channel_);
        if (isBroken_)
            return std::nullopt;
        if (IsInput(channel_))
            return HgPiece{channel_, {}, number, true};
        left_ = number;
        if (left_ == 0)
            return HgPiece{channel_, {}, 0, true};
    }
    if (bytes_.empty())
        return std::nullopt;
    const std::string_view taken = bytes_.substr(0, left_);
    bytes_.remove_prefix(taken.size());
    left_ -= static_cast<std::uint32_t>(taken.size());
    return HgPiece{channel_, taken, 0, left_ == 0};
}

std::string HgCommandMessage(const std::vector<std::string>& arguments)
{
    std::string text;
    for (const std::string& argument : arguments)
        text += (&argument == arguments.data() ? "" : std::string(1, '\0')) + argument;
    return "runcommand\n" + BytesOf(static_cast<std::uint32_t>(text.size())) + text;
}

std::optional<std::int32_t> ReadHgResult(std::string_view bytes)
{
    if (bytes.size() != 4)
        return std::nullopt;
    return static_cast<std::int32_t>(NumberIn(bytes));
}

bool IsHgGreeting(std::string_view text)
{
    constexpr std::string_view beginning = "capabilities: ";
    if (!text.starts_with(beginning))
        return false;
    const std::string_view line = text.substr(beginning.size(), text.find('\n') - beginning.size());
    return (" " + std::string(line) + " ").find(" runcommand ") != std::string::npos;
}

} // namespace tarnwell
