// The entries of one folder, kept small.
#pragma once

#include "local/findrecord.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace tarnwell
{

class RecordList
{
public:
    // Keeps what items tell: attributes, write time, size and name.
    void Append(const WIN32_FIND_DATAW& record);

    std::size_t Size() const
    {
        return entries_.size();
    }

    // Valid until the next entry is appended.
    ItemRecord At(std::size_t index) const;

private:
    struct Entry
    {
        std::size_t name; // where its name begins in `names_`
        FILETIME written;
        DWORD attributes;
        DWORD sizeLow;
        DWORD sizeHigh;
        DWORD nameLength;
    };

    std::vector<Entry> entries_;
    std::u16string names_;
};

} // namespace tarnwell
