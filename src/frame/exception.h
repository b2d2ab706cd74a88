// The one exception of the module, and the positions in the source that its text ends with.
#pragma once

#include "platform/win32.h"

#include <cstdint>
#include <string>
#include <utility>

namespace tarnwell
{

// A place in the source, by the short name that stands for the file in texts for the user.
struct SourcePosition
{
    const char16_t* file; // a constant; null leaves the position out of the text
    std::uint32_t line;
};

// The position of the caller.
constexpr SourcePosition At(const char16_t* file, std::uint32_t line = __builtin_LINE())
{
    return {file, line};
}

// Thrown by value, caught at the boundary of each interface method and published there. When to
// throw and when to publish at once is told in boundary.h.
class ComException
{
public:
    ComException(HRESULT status, std::u16string text, SourcePosition where)
        : code(static_cast<std::uint32_t>(status)), message(std::move(text)), file(where.file),
          line(where.line)
    {
    }
    ComException(const ComException&) = default;
    ComException& operator=(const ComException&) = default;
    virtual ~ComException() = default;

    std::uint32_t code;     // the status to return; a success becomes a failure when published
    std::u16string message; // in the user's language, inserts filled in
    const char16_t* file;   // not owned; may be null
    std::uint32_t line;
};

} // namespace tarnwell
