#include "local/recordlist.h"

#include "local/findrecord.h"

namespace tarnwell
{

void RecordList::Append(const WIN32_FIND_DATAW& record)
{
    const std::u16string_view name = NameOf(record);
    entries_.push_back({names_.size(), record.ftLastWriteTime, record.dwFileAttributes,
                        record.nFileSizeLow, record.nFileSizeHigh,
                        static_cast<DWORD>(name.size())});
    names_ += name;
}

WIN32_FIND_DATAW RecordList::At(std::size_t index) const
{
    const Entry& entry = entries_[index];
    WIN32_FIND_DATAW record{};
    record.dwFileAttributes = entry.attributes;
    record.ftLastWriteTime = entry.written;
    record.nFileSizeLow = entry.sizeLow;
    record.nFileSizeHigh = entry.sizeHigh;
    SetNames(record, std::u16string_view(names_).substr(entry.name, entry.nameLength));
    return record;
}

} // namespace tarnwell
