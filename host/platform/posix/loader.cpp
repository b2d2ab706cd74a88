#include "loader.h"

#include "platform/posix/helpers.h"

#include <dlfcn.h>

namespace tarnwell::host
{

namespace
{

void* Load(const std::filesystem::path& file)
{
    std::error_code error;
    if (!std::filesystem::exists(file, error))
        throw LoadFailure("There is no module at \"" + file.string() + "\".");
    // A bare name would be looked for in the system's folders.
    void* const library = dlopen(std::filesystem::absolute(file).c_str(), RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr)
        throw LoadFailure("Can't load \"" + file.string() + "\" as a module: " + dlerror());
    return library;
}

template <class Function>
void Find(void* library, const std::filesystem::path& file, const char* name, Function& function)
{
    function = reinterpret_cast<Function>(dlsym(library, name));
    if (function == nullptr)
        throw LoadFailure("\"" + file.string() + "\" isn't the tarnwell module: it has no " + name +
                          ".");
}

} // namespace

Module::Module(const std::filesystem::path& file) : file_(file)
{
    void* const library = Load(file);
    Helpers helpers;
    Find(library, file, "DllGetClassObject", getClassObject_);
    Find(library, file, "DllCanUnloadNow", canUnloadNow_);
    Find(library, file, "DllRegisterServer", registerServer_);
    Find(library, file, "DllUnregisterServer", unregisterServer_);
    Find(library, file, "SysAllocString", helpers.sysAllocString);
    Find(library, file, "SysAllocStringLen", helpers.sysAllocStringLen);
    Find(library, file, "SysFreeString", helpers.sysFreeString);
    Find(library, file, "SysStringLen", helpers.sysStringLen);
    Find(library, file, "GetErrorInfo", helpers.getErrorInfo);
    Find(library, file, "SetErrorInfo", helpers.setErrorInfo);
    Find(library, file, "CreateErrorInfo", helpers.createErrorInfo);
    UseHelpers(helpers);
}

std::filesystem::path Module::DefaultFile()
{
    const auto folder = std::filesystem::read_symlink("/proc/self/exe").parent_path();
    const auto beside = folder / TARNWELL_LIBRARY;
    const auto installed = folder / TARNWELL_LIBRARY_FOLDER / TARNWELL_LIBRARY;
    return !std::filesystem::exists(beside) && std::filesystem::exists(installed) ? installed
                                                                                  : beside;
}

} // namespace tarnwell::host
