// One item's facts, as a file system's listing or lookup gives them.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace tarnwell
{

struct FSItem
{
    std::u16string text; // the item's address
    std::uint64_t modifiedTime = 0;
    std::uint64_t size = 0;
    bool isDirectory = false;
    bool isReadOnly = false;
    std::uint32_t revision = 0; // where the file system numbers them, else 0
};

// A folder's listing, in the file system's order.
using FSItems = std::vector<std::shared_ptr<FSItem>>;

} // namespace tarnwell
