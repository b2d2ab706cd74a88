#include "loader.h"

namespace tarnwell::host
{

HRESULT Module::GetClassObject(REFCLSID clsid, REFIID iid, void** out) const
{
    return getClassObject_(clsid, iid, out);
}

HRESULT Module::CanUnloadNow() const
{
    return canUnloadNow_();
}

HRESULT Module::RegisterServer() const
{
    return registerServer_();
}

HRESULT Module::UnregisterServer() const
{
    return unregisterServer_();
}

HRESULT Module::CreateInstance(REFCLSID clsid, IUnknown* outer, REFIID iid, void** out) const
{
    ComPtr<IClassFactory> factory;
    const HRESULT status = GetClassObject(clsid, IidOf<IClassFactory>(), factory.OutVoid());
    if (FAILED(status))
        return status;
    return factory->CreateInstance(outer, iid, out);
}

} // namespace tarnwell::host
