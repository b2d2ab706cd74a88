#include "platform/posix/helpers.h"

// A program that loads the library by path isn't linked to it, so nothing resolves the names of
// com.h. These do, and hand every call on: a text must be freed where it was made. Before a
// library is loaded they answer as if memory were short.

namespace
{

tarnwell::host::Helpers library{};

} // namespace

namespace tarnwell::host
{

void UseHelpers(const Helpers& helpers)
{
    library = helpers;
}

} // namespace tarnwell::host

extern "C"
{
    BSTR SysAllocString(const OLECHAR* text)
    {
        return library.sysAllocString == nullptr ? nullptr : library.sysAllocString(text);
    }

    BSTR SysAllocStringLen(const OLECHAR* text, std::uint32_t length)
    {
        return library.sysAllocStringLen == nullptr ? nullptr
                                                    : library.sysAllocStringLen(text, length);
    }

    void SysFreeString(BSTR text)
    {
        if (library.sysFreeString != nullptr)
            library.sysFreeString(text);
    }

    std::uint32_t SysStringLen(BSTR text)
    {
        return library.sysStringLen == nullptr ? 0 : library.sysStringLen(text);
    }

    HRESULT GetErrorInfo(ULONG reserved, IErrorInfo** info)
    {
        return library.getErrorInfo == nullptr ? S_FALSE : library.getErrorInfo(reserved, info);
    }

    HRESULT SetErrorInfo(ULONG reserved, IErrorInfo* info)
    {
        return library.setErrorInfo == nullptr ? E_OUTOFMEMORY
                                               : library.setErrorInfo(reserved, info);
    }

    HRESULT CreateErrorInfo(ICreateErrorInfo** info)
    {
        return library.createErrorInfo == nullptr ? E_OUTOFMEMORY : library.createErrorInfo(info);
    }
}
