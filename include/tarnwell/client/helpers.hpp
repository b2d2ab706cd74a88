/// @file
/// The text and error functions of com.h, for programs that load the library by path (Linux).
///
/// Such a program isn't linked to the library, so nothing would resolve these names. Here they are
/// defined, for this program only and once however many files include this, and hand every call on:
/// a text must be freed where it was made. Before a library is loaded they lead to one that the
/// program is linked to, if it is.
#pragma once

#ifndef _WIN32

#include <tarnwell/entrypoints.h>

#include <dlfcn.h>

namespace tarnwell::client::detail
{

struct Helpers
{
    SysAllocStringFunction sysAllocString = nullptr;
    SysAllocStringLenFunction sysAllocStringLen = nullptr;
    SysFreeStringFunction sysFreeString = nullptr;
    SysStringLenFunction sysStringLen = nullptr;
    GetErrorInfoFunction getErrorInfo = nullptr;
    SetErrorInfoFunction setErrorInfo = nullptr;
    CreateErrorInfoFunction createErrorInfo = nullptr;
};

template <class Function> void FindLinked(const char* name, Function& function)
{
    function = reinterpret_cast<Function>(dlsym(RTLD_DEFAULT, name));
}

inline Helpers LinkedHelpers()
{
    Helpers helpers;
    FindLinked("SysAllocString", helpers.sysAllocString);
    FindLinked("SysAllocStringLen", helpers.sysAllocStringLen);
    FindLinked("SysFreeString", helpers.sysFreeString);
    FindLinked("SysStringLen", helpers.sysStringLen);
    FindLinked("GetErrorInfo", helpers.getErrorInfo);
    FindLinked("SetErrorInfo", helpers.setErrorInfo);
    FindLinked("CreateErrorInfo", helpers.createErrorInfo);
    return helpers;
}

inline Helpers& TheHelpers()
{
    static Helpers helpers = LinkedHelpers();
    return helpers;
}

// Calls a function, or answers as if memory were short where there is none.
template <class Function, class Result, class... Arguments>
Result Forward(Function function, Result missing, Arguments... arguments)
{
    return function == nullptr ? missing : function(arguments...);
}

} // namespace tarnwell::client::detail

/// @cond
// NOLINTBEGIN(misc-definitions-in-headers): weak, so that any number of files may define them.
// Hidden, so that they neither take the place of a library's own nor are taken for a module's.
#define TARNWELL_HELPER extern "C" __attribute__((weak, visibility("hidden")))

TARNWELL_HELPER BSTR SysAllocString(const OLECHAR* text)
{
    using namespace tarnwell::client::detail;
    return Forward(TheHelpers().sysAllocString, BSTR(), text);
}

TARNWELL_HELPER BSTR SysAllocStringLen(const OLECHAR* text, std::uint32_t length)
{
    using namespace tarnwell::client::detail;
    return Forward(TheHelpers().sysAllocStringLen, BSTR(), text, length);
}

TARNWELL_HELPER void SysFreeString(BSTR text)
{
    if (const auto function = tarnwell::client::detail::TheHelpers().sysFreeString)
        function(text);
}

TARNWELL_HELPER std::uint32_t SysStringLen(BSTR text)
{
    using namespace tarnwell::client::detail;
    return Forward(TheHelpers().sysStringLen, std::uint32_t(), text);
}

TARNWELL_HELPER HRESULT GetErrorInfo(ULONG reserved, IErrorInfo** info)
{
    using namespace tarnwell::client::detail;
    return Forward(TheHelpers().getErrorInfo, S_FALSE, reserved, info);
}

TARNWELL_HELPER HRESULT SetErrorInfo(ULONG reserved, IErrorInfo* info)
{
    using namespace tarnwell::client::detail;
    return Forward(TheHelpers().setErrorInfo, E_OUTOFMEMORY, reserved, info);
}

TARNWELL_HELPER HRESULT CreateErrorInfo(ICreateErrorInfo** info)
{
    using namespace tarnwell::client::detail;
    return Forward(TheHelpers().createErrorInfo, E_OUTOFMEMORY, info);
}
// NOLINTEND(misc-definitions-in-headers)
/// @endcond

#undef TARNWELL_HELPER

#endif
