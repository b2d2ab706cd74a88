// The component plumbing, written once: reference counts, QueryInterface, the error-info answer,
// and how objects are made.
//
// A class of this module derives from its interfaces, names those that it answers to in a list
// `Interfaces` (the first also serves for IUnknown), ends its bases with `ErrorInfoFor<...>`, and
// is completed by `ComObject<T>` or, as a part of another object, by `AggregatedObject<T>`. Where
// the bases and the two lists differ on purpose, a comment says so.
#pragma once

#include "frame/criticalsection.h"
#include "frame/modulelock.h"

#include <tarnwell/pointers.h>

#include <array>
#include <atomic>
#include <bit>
#include <cstdint>
#include <new>

namespace tarnwell
{

template <class... I> struct InterfaceList
{
};

// By halves, as hosts ask often: the comparison that is published for them goes byte by byte.
inline bool AreSame(REFIID left, REFIID right)
{
    using Halves = std::array<std::uint64_t, 2>;
    const auto one = std::bit_cast<Halves>(left);
    const auto other = std::bit_cast<Halves>(right);
    return one[0] == other[0] && one[1] == other[1];
}

// The pointer to `object`'s interface `iid`, without a reference; null if it isn't in the list.
template <class T, class First, class... I>
void* FindInterface(T* object, REFIID iid, InterfaceList<First, I...>)
{
    void* found = nullptr;
    const auto consider = [&]<class J>(J* pointer) {
        if (found == nullptr && AreSame(iid, IidOf<J>()))
            found = pointer;
    };
    if (AreSame(iid, IidOf<::IUnknown>()))
        return static_cast<First*>(object);
    consider(static_cast<First*>(object));
    (consider(static_cast<I*>(object)), ...);
    return found;
}

// ISupportErrorInfo, answering yes for the interfaces listed.
template <class... I> class ErrorInfoFor : public ::ISupportErrorInfo
{
public:
    HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID iid) final
    {
        return ((iid == IidOf<I>()) || ...) ? S_OK : S_FALSE;
    }

protected:
    ~ErrorInfoFor() = default;
};

// What every object has: the count of its references, by which it lives, and a lock. `Object` is
// the whole object, `Base` the class that it completes.
template <class Object, class Base> class Counted : public Base
{
public:
    HRESULT InitializeLock()
    {
        return section_.Initialize();
    }

    ULONG STDMETHODCALLTYPE AddRef() override
    {
        return count_.fetch_add(1, std::memory_order_relaxed) + 1;
    }
    ULONG STDMETHODCALLTYPE Release() override
    {
        // Who holds the only reference has nobody to agree with.
        const bool isLast = count_.load(std::memory_order_acquire) == 1;
        const ULONG left = isLast ? 0 : count_.fetch_sub(1, std::memory_order_acq_rel) - 1;
        if (left == 0)
            delete static_cast<Object*>(this);
        return left;
    }

private:
    ModuleLock moduleLock_;
    // Nobody enters it: the host calls one object from one thread at a time. It is made because
    // making it can fail, and that an object isn't made then is promised to hosts.
    CriticalSection section_;
    std::atomic<ULONG> count_{1}; // the first reference is its maker's
};

// A whole object on its own.
template <class T> class ComObject final : public Counted<ComObject<T>, T>
{
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override
    {
        if (out == nullptr)
            return E_POINTER;
        *out = FindInterface(static_cast<T*>(this), iid, typename T::Interfaces());
        if (*out == nullptr)
            return E_NOINTERFACE;
        this->AddRef();
        return S_OK;
    }
};

// An object that is a part of `outer` and holds no reference to it. Its interfaces pass counting
// and QueryInterface on to `outer`; its IUnknown, which `outer` holds, does both itself.
template <class T> class AggregatedObject final : public Counted<AggregatedObject<T>, ::IUnknown>
{
public:
    explicit AggregatedObject(::IUnknown* outer) : part_(outer) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override
    {
        if (out == nullptr)
            return E_POINTER;
        *out = nullptr;
        if (iid == IidOf<::IUnknown>())
        {
            this->AddRef();
            *out = static_cast<::IUnknown*>(this);
            return S_OK;
        }
        *out = FindInterface(static_cast<T*>(&part_), iid, typename T::Interfaces());
        if (*out == nullptr)
            return E_NOINTERFACE;
        part_.AddRef();
        return S_OK;
    }

private:
    class Part final : public T
    {
    public:
        explicit Part(::IUnknown* outer) : outer_(outer) {}

        HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override
        {
            return outer_->QueryInterface(iid, out);
        }
        ULONG STDMETHODCALLTYPE AddRef() override
        {
            return outer_->AddRef();
        }
        ULONG STDMETHODCALLTYPE Release() override
        {
            return outer_->Release();
        }

    private:
        ::IUnknown* outer_;
    };

    Part part_;
};

namespace detail
{
// Takes over a new object, made without throwing, and gives it its lock.
template <class Object> HRESULT Finish(Object* made, ComPtr<Object>& out)
{
    if (made == nullptr)
        return E_OUTOFMEMORY;
    out = ComPtr<Object>::Adopt(made);
    const HRESULT status = made->InitializeLock();
    if (FAILED(status))
        out.Reset();
    return status;
}
} // namespace detail

// A new object of class `T`, ready to be filled.
template <class T> HRESULT MakeObject(ComPtr<ComObject<T>>& out)
{
    // No parentheses: with them all of the object would be cleared before its members are made.
    return detail::Finish(new (std::nothrow) ComObject<T>, out);
}

// A new object for a class object: plain, or as a part of `outer`. An object that refuses `iid` is
// destroyed again. The reference held here keeps it alive while it is asked.
template <class T> HRESULT MakeInstance(::IUnknown* outer, REFIID iid, void** out)
{
    if (outer == nullptr)
    {
        ComPtr<ComObject<T>> object;
        const HRESULT status = MakeObject<T>(object);
        return FAILED(status) ? status : object->QueryInterface(iid, out);
    }
    ComPtr<AggregatedObject<T>> object;
    const HRESULT status = detail::Finish(new (std::nothrow) AggregatedObject<T>(outer), object);
    return FAILED(status) ? status : object->QueryInterface(iid, out);
}

} // namespace tarnwell
