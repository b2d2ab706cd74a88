#include "local/recordlist.h"

#include "platform/ascii.h"

#include <cstring>

namespace tarnwell
{

namespace
{
constexpr std::size_t nameBlockSize = std::size_t{64} * 1024;
constexpr std::size_t entryBlockSize = 1024;
} // namespace

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
    entries_.back().push_back({record.written, name, record.attributes, record.sizeLow,
                               record.sizeHigh, static_cast<std::uint16_t>(length), isWide});
}

std::size_t RecordList::Size() const
{
    return entries_.empty() ? 0 : (entries_.size() - 1) * entryBlockSize + entries_.back().size();
}

ItemRecord RecordList::At(std::size_t index, NameBuffer& name) const
{
    const Entry& entry = entries_[index / entryBlockSize][index % entryBlockSize];
    if (entry.isWide)
        std::memcpy(name.data(), entry.name, entry.nameLength * sizeof(char16_t));
    else
        WidenAscii({entry.name, entry.nameLength}, name.data());
    return {std::u16string_view(name.data(), entry.nameLength), entry.written, entry.attributes,
            entry.sizeLow, entry.sizeHigh};
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
