// Bytes that come in blocks and may be many.
#pragma once

#include "runner/decoding.h"

#include <string>
#include <string_view>
#include <vector>

namespace tarnwell
{

// Keeps the bytes in pieces, which are let go one by one as they are decoded: so a text of any
// length takes little more memory than its units do.
class LongText
{
public:
    LongText& Append(std::string_view bytes);

    bool IsEmpty() const
    {
        return pieces_.empty();
    }

    // All of it as a text. Nothing is left.
    std::u16string TakeDecoded(Decoding decoding);

private:
    void BeginPiece(std::size_t least);

    // Each begins with the beginning of a character.
    std::vector<std::string> pieces_;
    std::size_t size_ = 0;
};

} // namespace tarnwell
