#include "loader.h"

#include <string>

namespace tarnwell::host
{

namespace
{

std::string Named(const std::filesystem::path& file)
{
    const std::u8string text = file.u8string();
    return "\"" + std::string(text.begin(), text.end()) + "\"";
}

HMODULE Load(const std::filesystem::path& file)
{
    std::error_code error;
    if (!std::filesystem::exists(file, error))
        throw LoadFailure("There is no module at " + Named(file) + ".");
    // A bare name would be looked for in the system's folders.
    const HMODULE library = LoadLibraryW(std::filesystem::absolute(file).c_str());
    if (library == nullptr)
        throw LoadFailure("Can't load " + Named(file) + " as a module: error " +
                          std::to_string(GetLastError()) + ".");
    return library;
}

template <class Function>
void Find(HMODULE library, const std::filesystem::path& file, const char* name, Function& function)
{
    // By way of a plain function pointer: the compiler warns of a cast between unlike ones.
    const auto address = reinterpret_cast<void (*)()>(GetProcAddress(library, name));
    if (address == nullptr)
        throw LoadFailure(Named(file) + " isn't the tarnwell module: it has no " + name + ".");
    function = reinterpret_cast<Function>(address);
}

} // namespace

Module::Module(const std::filesystem::path& file) : file_(file)
{
    const HMODULE library = Load(file);
    Find(library, file, "DllGetClassObject", getClassObject_);
    Find(library, file, "DllCanUnloadNow", canUnloadNow_);
    Find(library, file, "DllRegisterServer", registerServer_);
    Find(library, file, "DllUnregisterServer", unregisterServer_);
}

std::filesystem::path Module::DefaultFile()
{
    std::wstring file(32768, L'\0');
    file.resize(GetModuleFileNameW(nullptr, file.data(), static_cast<DWORD>(file.size())));
    return std::filesystem::path(file).parent_path() / L"tarnwell.dll";
}

} // namespace tarnwell::host
