// What this process holds of the system.
#pragma once

#include <cstddef>

namespace tarnwell::test
{

// Open descriptors or handles.
std::size_t OpenHandleCount();

// Bytes of memory in use, as far as the system tells.
std::size_t MemoryInUse();

} // namespace tarnwell::test
