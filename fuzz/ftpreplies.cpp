// Any text as what an FTP server answers.
#include "platform/posix/internet/ftpreply.h"
#include "support/target.h"

#include <algorithm>

namespace tarnwell::fuzz
{

void Try(std::string_view bytes)
{
    posix::ReplyReader reader;
    while (!bytes.empty())
    {
        const std::size_t end = std::min(bytes.find('\n'), bytes.size() - 1);
        if (!reader.Take(bytes.substr(0, end + 1)))
            return;
        bytes.remove_prefix(end + 1);
        const posix::FtpReply& reply = reader.Last();
        Expect(reply.code >= 0 && reply.code <= 999, "a code has three digits");
        Expect(reply.text.size() <= posix::ReplyReader::longestKept, "a text has its bound");
        Expect(reply.text.empty() || reply.text.ends_with("\r\n"), "a text is made of lines");
    }
}

} // namespace tarnwell::fuzz
