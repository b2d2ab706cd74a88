// An object that has another as a part: hands out its own IUnknown and all that its part has.
#pragma once

#include "support/localobject.h"

namespace tarnwell::test
{

class Whole final : public LocalObject<::IUnknown>
{
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override
    {
        return iid == IidOf<::IUnknown>() ? LocalObject::QueryInterface(iid, out)
                                          : part->QueryInterface(iid, out);
    }

    ComPtr<::IUnknown> part;
};

} // namespace tarnwell::test
