// The entries of one folder, kept small.
#pragma once

#include "local/findrecord.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace tarnwell
{

// What holds the name of an entry that is looked at.
using NameBuffer = std::array<char16_t, MAX_PATH>;

// It grows without being copied: fresh memory is what a long listing pays most for.
class RecordList
{
public:
    // A record with a name, which fits in the platform's.
    void Append(const ItemRecord& record);

    std::size_t Size() const;

    // Valid as long as `name` is left alone.
    ItemRecord At(std::size_t index, NameBuffer& name) const;

private:
    struct Entry
    {
        FILETIME written;
        const char* name; // in one of the blocks
        DWORD attributes;
        DWORD sizeLow;
        DWORD sizeHigh;
        std::uint16_t nameLength; // in units
        bool isWide;              // a unit of the name takes two bytes; else one, as ASCII
    };

    // What is behind the last name. No name is in two blocks.
    char* RoomForName(std::size_t bytes);

    std::vector<std::vector<Entry>> entries_; // in blocks, all but the last full
    std::vector<std::unique_ptr<char[]>> names_;
    std::size_t namesUsed_ = 0; // of the last block
};

} // namespace tarnwell
