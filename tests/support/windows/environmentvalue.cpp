#include "support/environmentvalue.h"

#include <tarnwell/text.h>

#include <windows.h>

namespace tarnwell::test
{
namespace
{

std::wstring Wide(const char* text)
{
    const std::u16string units = DecodeName(text);
    return {units.begin(), units.end()};
}

} // namespace

void EnvironmentValue::Set(const char* value) const
{
    SetEnvironmentVariableW(Wide(name_).c_str(), value == nullptr ? nullptr : Wide(value).c_str());
}

std::optional<std::string> EnvironmentValue::Of(const char* name)
{
    const std::wstring wide = Wide(name);
    // Its size with a terminator: 0 without the variable.
    std::wstring value(GetEnvironmentVariableW(wide.c_str(), nullptr, 0), L'\0');
    if (value.empty())
        return std::nullopt;
    value.resize(
        GetEnvironmentVariableW(wide.c_str(), value.data(), static_cast<DWORD>(value.size())));
    return EncodeName(std::u16string(value.begin(), value.end()));
}

const char* const temporaryFolderVariable = "TMP";

} // namespace tarnwell::test
