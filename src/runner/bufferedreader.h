// Reading a pipe or file by bytes, in blocks.
#pragma once

#include "platform/win32.h"
#include "runner/decoding.h"

#include <string>
#include <string_view>
#include <vector>

namespace tarnwell
{

class BufferedReader
{
public:
    // `handle` stays the caller's, and must stay open.
    BufferedReader(HANDLE handle, Decoding decoding);
    BufferedReader(const BufferedReader&) = delete;
    BufferedReader& operator=(const BufferedReader&) = delete;
    virtual ~BufferedReader() = default;

    // The next line, without its line feed and without a carriage return at its end. True if it
    // had at least one byte in front of the line feed. So an empty line answers like the end of
    // the input, and whoever loops on the answer stops at the first of either, on purpose.
    bool ReadLine(std::u16string& line);

    // All that is left, with its line ends.
    std::u16string ReadAll();

private:
    // The bytes at hand, after a refill if there were none. Empty at the end of the input, which
    // is also what an error looks like.
    std::string_view Available();
    void Consume(std::size_t count)
    {
        position_ += count;
    }

    HANDLE handle_;
    Decoding decoding_;
    std::vector<char> buffer_;
    std::size_t position_ = 0;
    std::size_t end_ = 0;
};

} // namespace tarnwell
