// Reading what Mercurial's command server prints. Starts nothing, and takes any bytes.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarnwell
{

// A piece of what the server says, in the bytes that were fed; it ends with the next feeding.
struct HgPiece
{
    char channel; // 'o' output, 'e' errors, 'r' the result, 'I' and 'L' a wish for input; others
    std::string_view bytes;   // none of a wish
    std::uint32_t wanted = 0; // bytes, of a wish
    bool isWhole = true;      // nothing more of the same message follows
};

// A message is a byte for its channel, its size in four bytes, the highest first, and so many bytes
// of it; but with a wish the size is that of the input, and nothing follows. Long messages come in
// as many pieces as they were fed in.
class HgChannels
{
public:
    // The bytes stay the caller's until all pieces were taken.
    void Feed(std::string_view bytes)
    {
        bytes_ = bytes;
    }

    // The next piece. Nothing at the end of what was fed, and once what comes is no message.
    std::optional<HgPiece> Next();

    // Whether that was no message: a channel in a small letter may be passed over, others not.
    bool IsBroken() const
    {
        return isBroken_;
    }
    // Whether no message is in between.
    bool IsBetween() const
    {
        return header_.empty() && left_ == 0;
    }

private:
    std::string_view bytes_;
    std::string header_;     // the beginning of one that hasn't come as a whole
    char channel_ = 0;       // of the message that is being read
    std::uint32_t left_ = 0; // bytes of it
    bool isBroken_ = false;
};

// A command, as the server takes it. Arguments hold no NUL.
std::string HgCommandMessage(const std::vector<std::string>& arguments);

// The answer to a wish for input: there is none.
inline constexpr std::string_view noHgInput("\0\0\0\0", 4);

// The number of a result. Nothing for what is none.
std::optional<std::int32_t> ReadHgResult(std::string_view bytes);

// Whether this is what the server says first, and it takes commands.
bool IsHgGreeting(std::string_view text);

} // namespace tarnwell
