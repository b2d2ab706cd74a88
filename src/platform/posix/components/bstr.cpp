// Texts that cross the module's boundary: a count in bytes directly before the units, a
// terminator behind them.
#include <tarnwell/com.h>

#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>

namespace
{

// The count takes the last four bytes; the rest keeps the units aligned as malloc's memory is.
constexpr std::size_t prefixSize = alignof(std::max_align_t);
constexpr std::uint32_t longest = (std::numeric_limits<std::uint32_t>::max() >> 1) - 1;

char* BlockOf(BSTR text)
{
    return reinterpret_cast<char*>(text) - prefixSize;
}

char* CountOf(char* block)
{
    return block + prefixSize - sizeof(std::uint32_t);
}

} // namespace

extern "C" BSTR SysAllocStringLen(const OLECHAR* text, std::uint32_t length)
{
    if (length > longest)
        return nullptr;
    const std::uint32_t bytes = length * static_cast<std::uint32_t>(sizeof(OLECHAR));
    char* const block = static_cast<char*>(std::malloc(prefixSize + bytes + sizeof(OLECHAR)));
    if (block == nullptr)
        return nullptr;
    std::memcpy(CountOf(block), &bytes, sizeof bytes);
    char* const units = block + prefixSize;
    if (text != nullptr)
        std::memcpy(units, text, bytes);
    else
        std::memset(units, 0, bytes);
    std::memset(units + bytes, 0, sizeof(OLECHAR));
    return reinterpret_cast<BSTR>(units);
}

extern "C" BSTR SysAllocString(const OLECHAR* text)
{
    if (text == nullptr)
        return nullptr;
    const std::size_t length = std::char_traits<OLECHAR>::length(text);
    return length > longest ? nullptr : SysAllocStringLen(text, static_cast<std::uint32_t>(length));
}

extern "C" void SysFreeString(BSTR text)
{
    if (text != nullptr)
        std::free(BlockOf(text));
}

extern "C" std::uint32_t SysStringLen(BSTR text)
{
    if (text == nullptr)
        return 0;
    std::uint32_t bytes = 0;
    std::memcpy(&bytes, CountOf(BlockOf(text)), sizeof bytes);
    return bytes / static_cast<std::uint32_t>(sizeof(OLECHAR));
}
