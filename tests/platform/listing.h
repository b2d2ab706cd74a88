// What a find gives, gathered.
#pragma once

#include "frame/handle.h"
#include "platform/filetime.h"
#include "platform/wide.h"

#include <vector>

namespace tarnwell::test
{

struct Listing
{
    // As they came.
    std::vector<WIN32_FIND_DATAW> records;
    // Of the call that ended it.
    DWORD error = 0;

    std::vector<std::u16string> Names() const
    {
        std::vector<std::u16string> names;
        for (const WIN32_FIND_DATAW& record : records)
            names.emplace_back(Units(record.cFileName));
        return names;
    }

    // Null if there is no such entry.
    const WIN32_FIND_DATAW* Find(std::u16string_view name) const
    {
        for (const WIN32_FIND_DATAW& record : records)
        {
            if (Units(record.cFileName) == name)
                return &record;
        }
        return nullptr;
    }
};

inline Listing List(const std::u16string& pattern)
{
    Listing listing;
    WIN32_FIND_DATAW record;
    const FindHandle find(FindFirstFileW(Wide(pattern), &record));
    if (find)
    {
        do
            listing.records.push_back(record);
        while (FindNextFileW(find.Get(), &record));
    }
    listing.error = GetLastError();
    return listing;
}

inline std::uint64_t SizeOf(const WIN32_FIND_DATAW& record)
{
    return (std::uint64_t{record.nFileSizeHigh} << 32) | record.nFileSizeLow;
}

inline std::uint64_t WriteTimeOf(const WIN32_FIND_DATAW& record)
{
    return TimeOf(record.ftLastWriteTime);
}

} // namespace tarnwell::test
