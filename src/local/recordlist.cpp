#include "local/recordlist.h"

#include "platform/ascii.h"

#include <cstring>

namespace tarnwell
{

namespace
{
constexpr std::size_t nameBlockSize = std::size_t{64} * 1024;
} // namespace

void ListedRecord::CopyName(char16_t* target) const
{
    if (isWide)
        std::memcpy(target, name, nameLength * sizeof(char16_t));
    else
        WidenAscii({name, nameLength}, target);
}

void RecordList::Append(const ItemRecord& record)
{
    const std::size_t length = record.name.size();
    const std::size_t wideSize = length * sizeof(char16_t);
    char* const name = RoomForName(wideSize);
    const bool isWide = !NarrowAscii(record.name, name);
    if (isWide)
        std::memcpy(name, record.name.data(), wideSize);
    namesUsed_ += isWide ? wideSize : length;
    if (entries_.empty() || entries_.back().size() == entryBlockSize)
        entries_.emplace_back().reserve(entryBlockSize);
    entries_.back().push_back({record.facts, static_cast<std::uint16_t>(length), isWide, name});
}

std::size_t RecordList::Size() const
{
    return entries_.empty() ? 0 : (entries_.size() - 1) * entryBlockSize + entries_.back().size();
}

char* RecordList::RoomForName(std::size_t bytes)
{
    if (names_.empty() || nameBlockSize - namesUsed_ < bytes)
    {
        names_.push_back(std::make_unique_for_overwrite<char[]>(nameBlockSize));
        namesUsed_ = 0;
    }
    return names_.back().get() + namesUsed_;
}

} // namespace tarnwell
