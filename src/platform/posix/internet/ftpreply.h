// What an FTP server answers, line by line. It reads nothing itself.
#pragma once

#include <string>
#include <string_view>

namespace tarnwell::posix
{

struct FtpReply
{
    int code = 0;
    // All its lines, the code first, each ending in CR LF.
    std::string text;

    bool IsRefusal() const
    {
        return code >= 400;
    }
};

// Keeps the last reply and what the replies before it meant for a login or a transfer.
class ReplyReader
{
public:
    // No reply is longer, in bytes; what is kept of one for texts is less.
    static constexpr std::size_t longestReply = 1048576;
    static constexpr std::size_t longestKept = 65536;

    // One line, with its end or without. False if the reply has become too long.
    bool Take(std::string_view line);
    // Of what comes next nothing is known.
    void Forget();

    // One that hasn't come to its end is none.
    const FtpReply& Last() const
    {
        return last_;
    }
    // It has asked for a password or an account.
    bool HasAsked() const
    {
        return hasAsked_;
    }
    // It has begun a transfer.
    bool HasBegun() const
    {
        return hasBegun_;
    }

private:
    void Begin(std::string_view line);
    void Complete();

    FtpReply last_;
    // What has come of the next one.
    FtpReply open_;
    // Of that, kept or not.
    std::size_t size_ = 0;
    // There are more lines to come.
    bool isOpen_ = false;
    bool hasAsked_ = false;
    bool hasBegun_ = false;
};

} // namespace tarnwell::posix
