// The platform's find record, which describes local items, also those that were never enumerated.
#pragma once

#include "frame/filetimes.h"
#include "platform/ascii.h"
#include "platform/wide.h"

#include <cstdint>
#include <string_view>

namespace tarnwell
{

constexpr bool IsFolder(const WIN32_FIND_DATAW& record)
{
    return (record.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

inline std::u16string_view NameOf(const WIN32_FIND_DATAW& record)
{
    const std::u16string_view room(reinterpret_cast<const char16_t*>(record.cFileName), MAX_PATH);
    return room.substr(0, TerminatorIn(room));
}

// What items tell of an entry beside its name: far less than the platform's record of nearly 600
// bytes holds.
struct ItemFacts
{
    FILETIME written;
    DWORD attributes;
    DWORD sizeLow;
    DWORD sizeHigh;
};

struct ItemRecord
{
    std::u16string_view name; // of whoever made this
    ItemFacts facts;
};

inline ItemRecord ItemRecordOf(const WIN32_FIND_DATAW& record)
{
    return {NameOf(record),
            {record.ftLastWriteTime, record.dwFileAttributes, record.nFileSizeLow,
             record.nFileSizeHigh}};
}

constexpr bool IsFolder(const ItemFacts& facts)
{
    return (facts.attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

// Sets the name, cut to the 259 units that fit with a terminator. A file's name always fits. The
// name of a data stream with its file's in front can be longer; cut, it opens nothing.
void SetLongName(WIN32_FIND_DATAW& record, std::u16string_view name);

// Sets the long and the short name, each cut to what fits with a terminator.
void SetNames(WIN32_FIND_DATAW& record, std::u16string_view name);

} // namespace tarnwell
