// The library's own text and error functions, behind the names that com.h declares.
#pragma once

#include <tarnwell/com.h>

namespace tarnwell::host
{

struct Helpers
{
    decltype(&::SysAllocString) sysAllocString;
    decltype(&::SysAllocStringLen) sysAllocStringLen;
    decltype(&::SysFreeString) sysFreeString;
    decltype(&::SysStringLen) sysStringLen;
    decltype(&::GetErrorInfo) getErrorInfo;
    decltype(&::SetErrorInfo) setErrorInfo;
    decltype(&::CreateErrorInfo) createErrorInfo;
};

// From now on the names lead there.
void UseHelpers(const Helpers& helpers);

} // namespace tarnwell::host
