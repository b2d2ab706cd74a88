// The methods of a host's own objects, as the module calls them.
#pragma once

#include <tarnwell/com.h>

namespace tarnwell::host
{

// No exception may reach the module: short memory, which is all that can happen, becomes a status.
template <class F> HRESULT WithoutExceptions(F&& method) noexcept
{
    try
    {
        return method();
    }
    catch (...)
    {
        return E_OUTOFMEMORY;
    }
}

} // namespace tarnwell::host
