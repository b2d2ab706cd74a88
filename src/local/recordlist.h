// The entries of one folder, kept small.
#pragma once

#include "local/findrecord.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace tarnwell
{

// An entry whose name a list holds.
struct ListedRecord
{
    // To where there is room for `nameLength` units.
    void CopyName(char16_t* target) const;

    ItemFacts facts;
    std::uint16_t nameLength; // in units
    bool isWide;              // a unit of the name takes two bytes; else one, as ASCII
    const char* name;
};

// It grows without being copied: fresh memory is what a long listing pays most for.
class RecordList
{
public:
    // A record with a name, which fits in the platform's.
    void Append(const ItemRecord& record);

    std::size_t Size() const;

    // Valid until another is appended.
    const ListedRecord& At(std::size_t index) const
    {
        return entries_[index / entryBlockSize][index % entryBlockSize];
    }

private:
    static constexpr std::size_t entryBlockSize = 1024;

    // What is behind the last name. No name is in two blocks.
    char* RoomForName(std::size_t bytes);

    std::vector<std::vector<ListedRecord>> entries_; // in blocks, all but the last full
    std::vector<std::unique_ptr<char[]>> names_;
    std::size_t namesUsed_ = 0; // of the last block
};

} // namespace tarnwell
