#include "platform/windows/modulehandle.h"

// Put by the linker at the module's first byte, which is what its handle points to.
extern "C" IMAGE_DOS_HEADER __ImageBase; // NOLINT(bugprone-reserved-identifier): the linker's name

namespace tarnwell
{

HMODULE ThisModule()
{
    return reinterpret_cast<HMODULE>(&__ImageBase);
}

} // namespace tarnwell
