// The module's lock count: living objects and LockServer calls. The module never unloads, so
// nothing depends on it; tests see by it that no object is left.
#pragma once

#include <cstdint>

namespace tarnwell
{

void RaiseModuleLock();
void LowerModuleLock();
std::int32_t ModuleLockCount();

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
