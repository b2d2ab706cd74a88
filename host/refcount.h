// The count and the questions of a host's own object.
#pragma once

#include <tarnwell/pointers.h>

#include <atomic>

namespace tarnwell::host
{

// The reference count of an object whose class is final and ends with its last reference.
class ReferenceCount
{
public:
    ULONG Up()
    {
        return ++count_;
    }
    template <class T> ULONG Down(T* object)
    {
        const ULONG left = --count_;
        if (left == 0)
            delete object;
        return left;
    }

private:
    std::atomic<ULONG> count_ = 1;
};

// Answers QueryInterface for `object` with the interfaces listed; the first one also stands for
// IUnknown.
template <class First, class... Rest, class T> HRESULT Query(T* object, REFIID iid, void** out)
{
    if (out == nullptr)
        return E_POINTER;
    *out = nullptr;
    const auto answer = [&]<class I>(I* self) {
        if (*out == nullptr && iid == IidOf<I>())
            *out = self;
    };
    if (iid == IidOf<IUnknown>())
        *out = static_cast<First*>(object);
    answer(static_cast<First*>(object));
    (answer(static_cast<Rest*>(object)), ...);
    if (*out == nullptr)
        return E_NOINTERFACE;
    object->AddRef();
    return S_OK;
}

} // namespace tarnwell::host
