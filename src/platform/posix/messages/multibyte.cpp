// MultiByteToWideChar.
#include "platform/ascii.h"
#include "platform/posix/errors/lasterror.h"
#include "platform/posix/messages/utf16.h"

#include <cstring>
#include <limits>

namespace tarnwell::posix
{
namespace
{

constexpr char32_t replacement = 0xFFFD;

// What begins with some byte: how long it is, and which bytes may come second. That byte alone
// rules out overlong forms, surrogates and what lies past the last character.
struct Sequence
{
    std::size_t length;
    BYTE lowestSecond;
    BYTE highestSecond;
};

Sequence SequenceOf(BYTE lead)
{
    if (lead < 0xC2 || lead > 0xF4)
        return {1, 0, 0};
    if (lead < 0xE0)
        return {2, 0x80, 0xBF};
    if (lead < 0xF0)
        return {3, static_cast<BYTE>(lead == 0xE0 ? 0xA0 : 0x80),
                static_cast<BYTE>(lead == 0xED ? 0x9F : 0xBF)};
    return {4, static_cast<BYTE>(lead == 0xF0 ? 0x90 : 0x80),
            static_cast<BYTE>(lead == 0xF4 ? 0x8F : 0xBF)};
}

struct Character
{
    char32_t point;
    std::size_t bytes;
};

// The character at `next`, or the replacement with as many bytes as might have begun one.
Character Decode(const BYTE* next, const BYTE* end)
{
    const BYTE lead = *next;
    if (lead < 0x80)
        return {lead, 1};
    const Sequence sequence = SequenceOf(lead);
    if (sequence.length == 1)
        return {replacement, 1};
    const std::size_t available = static_cast<std::size_t>(end - next);
    char32_t point = lead & (0x7FU >> sequence.length);
    for (std::size_t i = 1; i < sequence.length; ++i)
    {
        const BYTE lowest = i == 1 ? sequence.lowestSecond : BYTE{0x80};
        const BYTE highest = i == 1 ? sequence.highestSecond : BYTE{0xBF};
        if (i == available || next[i] < lowest || next[i] > highest)
            return {replacement, i};
        point = (point << 6) | (next[i] & 0x3FU);
    }
    return {point, sequence.length};
}

// Most of what programs print is ASCII: eight bytes at a time for as long as it is.
const BYTE* SkipAscii(const BYTE* next, const BYTE* end)
{
    constexpr std::uint64_t highBits = 0x8080808080808080;
    std::uint64_t block = 0;
    while (static_cast<std::size_t>(end - next) >= sizeof block)
    {
        std::memcpy(&block, next, sizeof block);
        if ((block & highBits) != 0)
            break;
        next += sizeof block;
    }
    return next;
}

int CountUnits(const BYTE* next, const BYTE* end)
{
    int count = 0;
    while (next != end)
    {
        const BYTE* const ascii = SkipAscii(next, end);
        count += static_cast<int>(ascii - next);
        next = ascii;
        if (next == end)
            break;
        const Character character = Decode(next, end);
        count += character.point < 0x10000 ? 1 : 2;
        next += character.bytes;
    }
    return count;
}

// Units in a buffer of a given size.
class Output
{
public:
    Output(LPWSTR units, int size) : start_(units), next_(units), end_(units + size) {}

    // All that `bytes` begins with and that there is room for. Their number.
    std::size_t PutAscii(std::string_view bytes)
    {
        const auto room = static_cast<std::size_t>(end_ - next_);
        const std::size_t count = WidenAscii(bytes.substr(0, room), next_);
        next_ += count;
        return count;
    }
    bool Put(char32_t point)
    {
        return PutUtf16(next_, end_, point);
    }
    int Size() const
    {
        return static_cast<int>(next_ - start_);
    }

private:
    LPWSTR start_;
    LPWSTR next_;
    LPWSTR end_;
};

// The number of units; 0 if there is no room for them.
int Convert(const BYTE* next, const BYTE* end, Output output)
{
    for (;;)
    {
        next += output.PutAscii(
            {reinterpret_cast<const char*>(next), reinterpret_cast<const char*>(end)});
        if (next == end)
            break;
        const Character character = Decode(next, end);
        if (!output.Put(character.point))
            return 0;
        next += character.bytes;
    }
    return output.Size();
}

} // namespace
} // namespace tarnwell::posix

extern "C" int MultiByteToWideChar(UINT codePage, DWORD flags, const char* bytes, int byteCount,
                                   LPWSTR units, int unitCount)
{
    using namespace tarnwell::posix;
    const bool isBadOutput = unitCount < 0 || (unitCount > 0 && units == nullptr);
    if (codePage != CP_UTF8 || bytes == nullptr || byteCount <= 0 || isBadOutput)
        return Fail(ERROR_INVALID_PARAMETER);
    if (flags != 0)
        return Fail(ERROR_INVALID_FLAGS);
    const BYTE* const start = reinterpret_cast<const BYTE*>(bytes);
    const BYTE* const end = start + byteCount;
    if (unitCount == 0)
        return CountUnits(start, end);
    const int count = Convert(start, end, Output(units, unitCount));
    return count != 0 ? count : Fail(ERROR_INSUFFICIENT_BUFFER);
}
