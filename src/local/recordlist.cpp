#include "local/recordlist.h"

#include <algorithm>
#include <cstring>

namespace tarnwell
{

namespace
{

constexpr std::size_t blockSize = std::size_t{64} * 1024;

bool IsAscii(std::u16string_view name)
{
    return std::all_of(name.begin(), name.end(), [](char16_t unit) { return unit < 0x80; });
}

} // namespace

void RecordList::Append(const WIN32_FIND_DATAW& record)
{
    const std::u16string_view name = NameOf(record);
    const bool isWide = !IsAscii(name);
    entries_.push_back({record.ftLastWriteTime, AddName(name, isWide), record.dwFileAttributes,
                        record.nFileSizeLow, record.nFileSizeHigh,
                        static_cast<std::uint16_t>(name.size()), isWide});
}

ItemRecord RecordList::At(std::size_t index, NameBuffer& name) const
{
    const Entry& entry = entries_[index];
    const char* const bytes = blocks_[entry.name / blockSize].data() + entry.name % blockSize;
    if (entry.isWide)
        std::memcpy(name.data(), bytes, entry.nameLength * sizeof(char16_t));
    else
        std::copy_n(bytes, entry.nameLength, name.begin());
    return {std::u16string_view(name.data(), entry.nameLength), entry.written, entry.attributes,
            entry.sizeLow, entry.sizeHigh};
}

std::size_t RecordList::AddName(std::u16string_view name, bool isWide)
{
    const std::size_t size = isWide ? name.size() * sizeof(char16_t) : name.size();
    if (blocks_.empty() || blocks_.back().size() + size >= blockSize)
        blocks_.emplace_back().reserve(blockSize);
    std::string& block = blocks_.back();
    const std::size_t start = block.size();
    block.resize(start + size);
    char* const bytes = block.data() + start;
    if (isWide)
        std::memcpy(bytes, name.data(), size);
    else
        std::transform(name.begin(), name.end(), bytes,
                       [](char16_t unit) { return static_cast<char>(unit); });
    return (blocks_.size() - 1) * blockSize + start;
}

} // namespace tarnwell
