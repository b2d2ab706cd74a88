// Objects of tests that live where they are declared.
#pragma once

#include <tarnwell/pointers.h>

namespace tarnwell::test
{

// `I` on an object that is nobody's to delete.
template <class I> class LocalObject : public I
{
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override
    {
        *out = iid == IidOf<I>() || iid == IidOf<::IUnknown>() ? this : nullptr;
        if (*out == nullptr)
            return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() final
    {
        return ++references;
    }
    ULONG STDMETHODCALLTYPE Release() final
    {
        return --references;
    }

    ULONG references = 0;

protected:
    ~LocalObject() = default;
};

} // namespace tarnwell::test
