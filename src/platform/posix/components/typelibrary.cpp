#include "platform/typelibrary.h"

namespace tarnwell
{

// No component registry, so nothing to publish: done.
HRESULT RegisterModuleTypeLibrary(bool)
{
    return S_OK;
}

HRESULT UnregisterModuleTypeLibrary(bool)
{
    return S_OK;
}

} // namespace tarnwell
