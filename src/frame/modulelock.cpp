#include "frame/modulelock.h"

#include <atomic>

namespace tarnwell
{

namespace
{
std::atomic<std::int32_t> count{0};
}

void RaiseModuleLock()
{
    count.fetch_add(1, std::memory_order_relaxed);
}

void LowerModuleLock()
{
    count.fetch_sub(1, std::memory_order_relaxed);
}

std::int32_t ModuleLockCount()
{
    return count.load(std::memory_order_relaxed);
}

} // namespace tarnwell
