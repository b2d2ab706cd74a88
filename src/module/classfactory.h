// The class object, one for each creatable class.
#pragma once

#include "platform/win32.h"

#include <atomic>

namespace tarnwell
{

// Makes an object of one class, plain or as a part of `outer`, and asks it for `iid`.
using InstanceMaker = HRESULT (*)(::IUnknown* outer, REFIID iid, void** out);

// The class table holds the first reference for the life of the module, which is no use of the
// module: only further references raise its lock count.
class ClassFactory final : public ::IClassFactory
{
public:
    explicit ClassFactory(InstanceMaker make) : make_(make) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;

    HRESULT STDMETHODCALLTYPE CreateInstance(::IUnknown* outer, REFIID iid, void** out) override;
    HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override;

private:
    ~ClassFactory() = default;

    InstanceMaker make_;
    std::atomic<ULONG> count_{0};
};

} // namespace tarnwell
