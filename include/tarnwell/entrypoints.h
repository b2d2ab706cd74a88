/// @file
/// The types of the library's entry points, for hosts that look them up by name.
///
/// `GetProcAddress` or `dlsym` give the address of each under the name of its type, without the
/// word `Function`. The texts and the error information come from the system on Windows, and from
/// the library on Linux.
#pragma once

#include <tarnwell/com.h>

namespace tarnwell
{

/// `DllGetClassObject`: the class object of a class, asked for an interface.
using DllGetClassObjectFunction = HRESULT(STDMETHODCALLTYPE*)(REFCLSID, REFIID, void**);
/// `DllCanUnloadNow`: S_FALSE always, the module stays loaded.
using DllCanUnloadNowFunction = HRESULT(STDMETHODCALLTYPE*)();
/// `DllRegisterServer`: publishes the type library on Windows, and nothing elsewhere.
using DllRegisterServerFunction = HRESULT(STDMETHODCALLTYPE*)();
/// `DllUnregisterServer`: takes it back.
using DllUnregisterServerFunction = HRESULT(STDMETHODCALLTYPE*)();

/// `SysAllocString`.
using SysAllocStringFunction = BSTR(STDMETHODCALLTYPE*)(const OLECHAR*);
/// `SysAllocStringLen`; the count is in UTF-16 units.
using SysAllocStringLenFunction = BSTR(STDMETHODCALLTYPE*)(const OLECHAR*, ULONG);
/// `SysFreeString`.
using SysFreeStringFunction = void(STDMETHODCALLTYPE*)(BSTR);
/// `SysStringLen`; the count is in UTF-16 units.
using SysStringLenFunction = ULONG(STDMETHODCALLTYPE*)(BSTR);

/// `GetErrorInfo`.
using GetErrorInfoFunction = HRESULT(STDMETHODCALLTYPE*)(ULONG, IErrorInfo**);
/// `SetErrorInfo`.
using SetErrorInfoFunction = HRESULT(STDMETHODCALLTYPE*)(ULONG, IErrorInfo*);
/// `CreateErrorInfo`.
using CreateErrorInfoFunction = HRESULT(STDMETHODCALLTYPE*)(ICreateErrorInfo**);

} // namespace tarnwell
