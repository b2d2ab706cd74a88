// The entries of one folder, kept small.
#pragma once

#include "local/findrecord.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
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

    std::size_t Size() const
    {
        return entries_.size();
    }

    // Valid as long as `name` is left alone.
    ItemRecord At(std::size_t index, NameBuffer& name) const;

private:
    struct Entry
    {
        FILETIME written;
        std::size_t name; // where its name begins in all blocks
        DWORD attributes;
        DWORD sizeLow;
        DWORD sizeHigh;
        std::uint16_t nameLength; // in units
        bool isWide;              // a unit of the name takes two bytes; else one, as ASCII
    };

    // Where the name begins. None is in two blocks.
    std::size_t AddName(std::string_view name);

    std::deque<Entry> entries_;
    std::vector<std::string> blocks_;
};

} // namespace tarnwell
