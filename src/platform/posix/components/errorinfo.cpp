// The calling thread's error information, and the object that it is made of.
#include "platform/posix/threadslot.h"

#include <tarnwell/pointers.h>

#include <atomic>
#include <new>

namespace tarnwell::posix
{
namespace
{

// Null for a text that was never set.
HRESULT CopyText(const Bstr& text, BSTR* out)
{
    if (out == nullptr)
        return E_INVALIDARG;
    *out = nullptr;
    if (!text)
        return S_OK;
    *out = SysAllocStringLen(text.Get(), SysStringLen(text.Get()));
    return *out != nullptr ? S_OK : E_OUTOFMEMORY;
}

HRESULT KeepText(Bstr& text, LPOLESTR value)
{
    *text.Out() = SysAllocString(value);
    return text || value == nullptr ? S_OK : E_OUTOFMEMORY;
}

class ErrorInfo final : public ICreateErrorInfo, public IErrorInfo
{
public:
    HRESULT QueryInterface(REFIID iid, void** out) override
    {
        if (out == nullptr)
            return E_POINTER;
        *out = nullptr;
        if (iid == IID_IUnknown || iid == IID_ICreateErrorInfo)
            *out = static_cast<ICreateErrorInfo*>(this);
        else if (iid == IID_IErrorInfo)
            *out = static_cast<IErrorInfo*>(this);
        else
            return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG AddRef() override
    {
        return ++references_;
    }
    ULONG Release() override
    {
        const ULONG left = --references_;
        if (left == 0)
            delete this;
        return left;
    }

    HRESULT SetGUID(REFGUID guid) override
    {
        guid_ = guid;
        return S_OK;
    }
    HRESULT SetSource(LPOLESTR source) override
    {
        return KeepText(source_, source);
    }
    HRESULT SetDescription(LPOLESTR description) override
    {
        return KeepText(description_, description);
    }
    HRESULT SetHelpFile(LPOLESTR helpFile) override
    {
        return KeepText(helpFile_, helpFile);
    }
    HRESULT SetHelpContext(std::uint32_t helpContext) override
    {
        helpContext_ = helpContext;
        return S_OK;
    }

    HRESULT GetGUID(GUID* guid) override
    {
        if (guid == nullptr)
            return E_INVALIDARG;
        *guid = guid_;
        return S_OK;
    }
    HRESULT GetSource(BSTR* source) override
    {
        return CopyText(source_, source);
    }
    HRESULT GetDescription(BSTR* description) override
    {
        return CopyText(description_, description);
    }
    HRESULT GetHelpFile(BSTR* helpFile) override
    {
        return CopyText(helpFile_, helpFile);
    }
    HRESULT GetHelpContext(std::uint32_t* helpContext) override
    {
        if (helpContext == nullptr)
            return E_INVALIDARG;
        *helpContext = helpContext_;
        return S_OK;
    }

private:
    std::atomic<ULONG> references_ = 1;
    GUID guid_ = {};
    Bstr source_;
    Bstr description_;
    Bstr helpFile_;
    std::uint32_t helpContext_ = 0;
};

const ThreadSlot current([](void* object) { static_cast<IErrorInfo*>(object)->Release(); });

// Takes `next` over and gives what was there. False, and nothing is changed, if memory is short.
bool Exchange(ComPtr<IErrorInfo>& next)
{
    void* const old = current.Get();
    if (!current.Set(next.Get()))
        return false;
    next.Detach();
    next = ComPtr<IErrorInfo>::Adopt(static_cast<IErrorInfo*>(old));
    return true;
}

} // namespace
} // namespace tarnwell::posix

using namespace tarnwell::posix;

extern "C" HRESULT CreateErrorInfo(ICreateErrorInfo** info)
{
    if (info == nullptr)
        return E_INVALIDARG;
    *info = new (std::nothrow) ErrorInfo;
    return *info != nullptr ? S_OK : E_OUTOFMEMORY;
}

extern "C" HRESULT SetErrorInfo(ULONG reserved, IErrorInfo* info)
{
    if (reserved != 0)
        return E_INVALIDARG;
    // The old object goes last: its destruction may come back here.
    auto object = tarnwell::ComPtr<IErrorInfo>::Share(info);
    return Exchange(object) ? S_OK : E_OUTOFMEMORY;
}

extern "C" HRESULT GetErrorInfo(ULONG reserved, IErrorInfo** info)
{
    if (reserved != 0 || info == nullptr)
        return E_INVALIDARG;
    tarnwell::ComPtr<IErrorInfo> object;
    Exchange(object);
    *info = object.Detach();
    return *info != nullptr ? S_OK : S_FALSE;
}
