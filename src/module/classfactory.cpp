#include "module/classfactory.h"

#include "frame/comobject.h"

namespace tarnwell
{

HRESULT ClassFactory::QueryInterface(REFIID iid, void** out)
{
    if (out == nullptr)
        return E_POINTER;
    *out = FindInterface(this, iid, InterfaceList<::IClassFactory>());
    if (*out == nullptr)
        return E_NOINTERFACE;
    AddRef();
    return S_OK;
}

ULONG ClassFactory::AddRef()
{
    const ULONG count = count_.fetch_add(1, std::memory_order_relaxed) + 1;
    if (count == 2)
        RaiseModuleLock();
    return count;
}

ULONG ClassFactory::Release()
{
    const ULONG left = count_.fetch_sub(1, std::memory_order_acq_rel) - 1;
    if (left == 1)
        LowerModuleLock();
    if (left == 0)
        delete this;
    return left;
}

HRESULT ClassFactory::CreateInstance(::IUnknown* outer, REFIID iid, void** out)
{
    if (out == nullptr)
        return E_POINTER;
    *out = nullptr;
    if (outer != nullptr && iid != IidOf<::IUnknown>())
        return CLASS_E_NOAGGREGATION;
    return make_(outer, iid, out);
}

HRESULT ClassFactory::LockServer(BOOL lock)
{
    if (lock != 0)
        RaiseModuleLock();
    else
        LowerModuleLock();
    return S_OK;
}

} // namespace tarnwell
