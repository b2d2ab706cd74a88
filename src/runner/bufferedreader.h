// Reading a client's output, from a pipe or a file, in blocks.
#pragma once

#include "platform/win32.h"
#include "runner/decoding.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace tarnwell
{

// How a reader of lines takes a line without any byte. ("\r\n" has a byte, and is always a line.)
enum class BareLineFeed
{
    LooksLikeTheEnd, // so whoever loops on the answer stops at the first one, on purpose
    IsALine,
};

class BufferedReader
{
public:
    // `handle` stays the caller's, and must stay open.
    BufferedReader(HANDLE handle, Decoding decoding,
                   BareLineFeed bareLineFeed = BareLineFeed::LooksLikeTheEnd);
    BufferedReader(const BufferedReader&) = delete;
    BufferedReader& operator=(const BufferedReader&) = delete;

    // The next line, without its line feed and without a carriage return at its end. False, with
    // an empty line, at the end of the input and where a bare line feed looks like it.
    bool ReadLine(std::u16string& line);

    // All that is left, with its line ends.
    std::u16string ReadAll();

    // The next bytes of a pipe of this group's clients as they come, valid until the next call;
    // empty at the end, and where the pipe can't be read.
    std::string_view ReadBlock(HANDLE group);
    // Why it couldn't be; ERROR_SUCCESS if it could.
    DWORD Failure() const
    {
        return failure_;
    }

    // Takes all that is left and drops it.
    void SkipAll();
    // Nothing is read any more.
    void Leave()
    {
        Filled(0);
    }

private:
    // From the bytes at hand, which have no line feed, to the end of the line.
    std::u16string ReadLongLine();

    // The bytes at hand, after a refill if there were none. Empty at the end of the input. An error
    // looks the same, and nothing is read after either.
    std::string_view Available();
    void Filled(DWORD count);
    void Consume(std::size_t count)
    {
        position_ += count;
    }

    HANDLE handle_;
    Decoding decoding_;
    BareLineFeed bareLineFeed_;
    std::vector<char> buffer_;
    std::size_t position_ = 0;
    std::size_t end_ = 0;
    bool hasEnded_ = false;
    DWORD failure_ = ERROR_SUCCESS;
};

// Takes what it wants of a client's output and puts the results where its maker wants them.
using OutputReader = std::function<void(BufferedReader& output)>;

} // namespace tarnwell
