#include "local/streamwalk.h"

#include <algorithm>
#include <iterator>

namespace tarnwell
{

// Frees what the platform keeps of the walk.
StreamWalk::~StreamWalk()
{
    calls_.read(file_, reinterpret_cast<BYTE*>(&header_), 0, nullptr, 1, 0, &context_);
}

// The bytes of a stream are jumped over only when the next one is wanted; whoever has seen this
// one's header has no need of them.
bool StreamWalk::Next()
{
    if (isBegun_ && !SkipData())
        return false;
    isBegun_ = true;
    return Read(&header_, sizeof header_) && ReadName();
}

std::u16string_view StreamWalk::Name() const
{
    const auto* const end = std::find(std::begin(name_), std::end(name_), u'\0');
    return {name_, static_cast<std::size_t>(end - name_)};
}

bool StreamWalk::Read(void* buffer, DWORD size)
{
    DWORD read = 0;
    return calls_.read(file_, static_cast<BYTE*>(buffer), size, &read, 0, 0, &context_) &&
           read == size;
}

// A size beyond any name can't be true.
bool StreamWalk::ReadName()
{
    std::fill(std::begin(name_), std::end(name_), u'\0');
    return header_.nameSize <= sizeof name_ && Read(name_, header_.nameSize);
}

bool StreamWalk::SkipData()
{
    DWORD low = 0;
    DWORD high = 0;
    return calls_.seek(file_, header_.sizeLow, header_.sizeHigh, &low, &high, &context_) != 0;
}

} // namespace tarnwell
