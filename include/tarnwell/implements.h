/// @file
/// The base of objects that a host hands to the module: counts and questions, so that a class has
/// only the interfaces' own methods to write.
#pragma once

#include <tarnwell/pointers.h>

#include <atomic>

namespace tarnwell
{

/// Answers `QueryInterface` with the interfaces listed, of which the first also stands for
/// IUnknown, and counts references from 1. The object lives on the heap and goes with its last
/// reference: `ComPtr<IFirst>::Adopt(new Thing(...))`.
template <class First, class... Rest> class Implements : public First, public Rest...
{
public:
    Implements(const Implements&) = delete;
    Implements& operator=(const Implements&) = delete;

    /// As IUnknown::QueryInterface.
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override
    {
        if (out == nullptr)
            return E_POINTER;
        *out = nullptr;
        if (iid == IidOf<::IUnknown>())
            *out = static_cast<First*>(this);
        Answer<First>(iid, out);
        (Answer<Rest>(iid, out), ...);
        if (*out == nullptr)
            return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }

    /// As IUnknown::AddRef.
    ULONG STDMETHODCALLTYPE AddRef() override
    {
        return ++references_;
    }

    /// As IUnknown::Release.
    ULONG STDMETHODCALLTYPE Release() override
    {
        const ULONG left = --references_;
        if (left == 0)
            delete this;
        return left;
    }

protected:
    Implements() = default;
    virtual ~Implements() = default;

private:
    template <class I> void Answer(REFIID iid, void** out)
    {
        if (*out == nullptr && iid == IidOf<I>())
            *out = static_cast<I*>(this);
    }

    std::atomic<ULONG> references_{1};
};

} // namespace tarnwell
