#include "local/recordlist.h"

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

ItemRecord RecordList::At(std::size_t index) const
{
    const Entry& entry = entries_[index];
    return {std::u16string_view(names_).substr(entry.name, entry.nameLength), entry.written,
            entry.attributes, entry.sizeLow, entry.sizeHigh};
}

} // namespace tarnwell
