#include "support/childprogram.h"

#include <windows.h>

namespace tarnwell::test
{

std::filesystem::path ChildProgram()
{
    std::wstring file(MAX_PATH, 0);
    file.resize(GetModuleFileNameW(nullptr, file.data(), static_cast<DWORD>(file.size())));
    return std::filesystem::path(file).parent_path() / "test-child.exe";
}

} // namespace tarnwell::test
