#include "platform/modulehandle.h"

namespace tarnwell
{

// The operations that take a handle know one module, the library itself, and don't look at it.
HMODULE ThisModule()
{
    return nullptr;
}

} // namespace tarnwell
