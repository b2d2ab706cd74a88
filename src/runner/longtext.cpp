#include "runner/longtext.h"

#include <algorithm>
#include <utility>

namespace tarnwell
{

namespace
{

constexpr std::size_t smallestPiece = std::size_t{16} * 1024;
// The system takes pieces of this size back at once.
constexpr std::size_t largestPiece = std::size_t{64} * 1024 * 1024;

} // namespace

LongText& LongText::Append(std::string_view bytes)
{
    if (bytes.empty())
        return *this;
    if (pieces_.empty() || pieces_.back().capacity() - pieces_.back().size() < bytes.size())
        BeginPiece(bytes.size());
    pieces_.back() += bytes;
    size_ += bytes.size();
    return *this;
}

std::u16string LongText::TakeDecoded(Decoding decoding)
{
    std::u16string text;
    // Never more units than bytes.
    text.reserve(size_);
    for (std::string& piece : pieces_)
        AppendDecoded(text, std::exchange(piece, {}), decoding);
    pieces_.clear();
    size_ = 0;
    return text;
}

// Each piece is as long as all before it, so that there are few.
void LongText::BeginPiece(std::size_t least)
{
    std::string piece;
    piece.reserve(std::max(least + 4, std::clamp(size_, smallestPiece, largestPiece)));
    if (!pieces_.empty())
    {
        std::string& last = pieces_.back();
        const std::size_t begun = BegunAtEnd(last);
        piece.append(last, last.size() - begun);
        last.resize(last.size() - begun);
    }
    pieces_.push_back(std::move(piece));
}

} // namespace tarnwell
