#include "module/resources.h"

#include <filesystem>
#include <iterator>
#include <malloc.h>

namespace tarnwell::test
{

std::size_t OpenHandleCount()
{
    const std::filesystem::directory_iterator descriptors("/proc/self/fd");
    // One of them is that of the listing.
    return static_cast<std::size_t>(std::distance(begin(descriptors), end(descriptors))) - 1;
}

std::size_t MemoryInUse()
{
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

} // namespace tarnwell::test
