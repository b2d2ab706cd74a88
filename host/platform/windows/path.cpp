#include "system.h"

#include "platform/windows/units.h"

#include <windows.h>

namespace tarnwell::host
{

std::filesystem::path FilePath(const std::u16string& path)
{
    return ToWide(path);
}

std::u16string FromPath(const std::filesystem::path& path)
{
    return FromWide(path.native());
}

// The standard library's own takes the name of a server for a folder.
std::u16string AbsolutePath(const std::u16string& path)
{
    const std::wstring text = ToWide(path);
    // In units; first with the terminator, and then without it.
    const DWORD size = GetFullPathNameW(text.c_str(), 0, nullptr, nullptr);
    std::wstring full(size, L'\0');
    full.resize(GetFullPathNameW(text.c_str(), size, full.data(), nullptr));
    return full.empty() ? path : FromWide(full);
}

} // namespace tarnwell::host
