#include "local/recordlist.h"

#include "platform/ascii.h"

#include <cstring>

namespace tarnwell
{

namespace
{
constexpr std::size_t blockSize = std::size_t{64} * 1024;
}

void RecordList::Append(const ItemRecord& record)
{
    std::array<char, MAX_PATH> ascii;
    const bool isWide = !NarrowAscii(record.name, ascii.data());
    const std::string_view name =
        isWide ? std::string_view(reinterpret_cast<const char*>(record.name.data()),
                                  record.name.size() * sizeof(char16_t))
               : std::string_view(ascii.data(), record.name.size());
    entries_.push_back({record.written, AddName(name), record.attributes, record.sizeLow,
                        record.sizeHigh, static_cast<std::uint16_t>(record.name.size()), isWide});
}

ItemRecord RecordList::At(std::size_t index, NameBuffer& name) const
{
    const Entry& entry = entries_[index];
    const char* const bytes = blocks_[entry.name / blockSize].data() + entry.name % blockSize;
    if (entry.isWide)
        std::memcpy(name.data(), bytes, entry.nameLength * sizeof(char16_t));
    else
        WidenAscii({bytes, entry.nameLength}, name.data());
    return {std::u16string_view(name.data(), entry.nameLength), entry.written, entry.attributes,
            entry.sizeLow, entry.sizeHigh};
}

std::size_t RecordList::AddName(std::string_view name)
{
    if (blocks_.empty() || blocks_.back().size() + name.size() >= blockSize)
        blocks_.emplace_back().reserve(blockSize);
    std::string& block = blocks_.back();
    const std::size_t start = block.size();
    block += name;
    return (blocks_.size() - 1) * blockSize + start;
}

} // namespace tarnwell
