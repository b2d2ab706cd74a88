// The module's lock count: living objects and LockServer calls. The module never unloads, so
// nothing depends on it; tests see by it that no object is left.
#pragma once

#include <atomic>
#include <cstdint>

namespace tarnwell
{

namespace detail
{
inline std::atomic<std::int32_t> moduleLockCount{0};
}

inline void RaiseModuleLock()
{
    detail::moduleLockCount.fetch_add(1, std::memory_order_relaxed);
}

inline void LowerModuleLock()
{
    detail::moduleLockCount.fetch_sub(1, std::memory_order_relaxed);
}

inline std::int32_t ModuleLockCount()
{
    return detail::moduleLockCount.load(std::memory_order_relaxed);
}

// Counts for as long as it lives.
class ModuleLock
{
public:
    ModuleLock()
    {
        RaiseModuleLock();
    }
    ModuleLock(const ModuleLock&) = delete;
    ModuleLock& operator=(const ModuleLock&) = delete;
    ~ModuleLock()
    {
        LowerModuleLock();
    }
};

} // namespace tarnwell
