// An object that has another as a part: hands out its own IUnknown and all that its part has.
#pragma once

#include <tarnwell/pointers.h>

namespace tarnwell::test
{

class Whole final : public ::IUnknown
{
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override
    {
        if (iid != IidOf<::IUnknown>())
            return part->QueryInterface(iid, out);
        *out = this;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override
    {
        return ++count;
    }
    ULONG STDMETHODCALLTYPE Release() override
    {
        return --count;
    }

    ComPtr<::IUnknown> part;
    ULONG count = 1;
};

} // namespace tarnwell::test
