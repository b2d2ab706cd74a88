// The four functions by which the module is reached from outside.
#include "module/classtable.h"
#include "module/lifecycle.h"
#include "platform/typelibrary.h"

using namespace tarnwell;

namespace
{
// Registration is for all users.
constexpr bool perUser = false;
} // namespace

extern "C" HRESULT STDMETHODCALLTYPE DllGetClassObject(REFCLSID clsid, REFIID iid, void** out)
{
    if (out == nullptr)
        return E_POINTER;
    *out = nullptr;
    if (!ModuleStarted())
        return E_UNEXPECTED;
    return GetClassObject(clsid, iid, out);
}

// The module stays until the process ends, whatever is alive.
extern "C" HRESULT STDMETHODCALLTYPE DllCanUnloadNow()
{
    return S_FALSE;
}

// No class keys are written: hosts load the module by path. Only the type library is published.
extern "C" HRESULT STDMETHODCALLTYPE DllRegisterServer()
{
    return RegisterModuleTypeLibrary(perUser);
}

extern "C" HRESULT STDMETHODCALLTYPE DllUnregisterServer()
{
    return UnregisterModuleTypeLibrary(perUser);
}
