/// @file
/// Finding and loading the module's file.
#pragma once

#include <tarnwell/client/helpers.hpp>
#include <tarnwell/client/text.hpp>
#include <tarnwell/entrypoints.h>

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <system_error>
#include <vector>

#ifdef _WIN32
#ifdef _MSC_VER
#pragma comment(lib, "ole32")
#pragma comment(lib, "oleaut32")
#endif
#else
#include <dlfcn.h>
#endif

namespace tarnwell::client
{

/// There is no module, or what is there isn't one. The text is UTF-8 and names the file.
struct LoadFailure : std::runtime_error
{
    using std::runtime_error::runtime_error;
};

namespace detail
{

inline std::string Named(const std::filesystem::path& file)
{
    return Utf8(Text(file).View());
}

// Where a module may lie, in the order in which it is looked for: beside the running program, and
// where it is installed with it.
#ifdef _WIN32

inline constexpr const char* moduleNames[] = {"tarnwell.dll"};

inline std::filesystem::path ProgramFolder()
{
    std::wstring file(32768, L'\0');
    file.resize(GetModuleFileNameW(nullptr, file.data(), static_cast<DWORD>(file.size())));
    return std::filesystem::path(file).parent_path();
}

inline std::filesystem::path NamedFile()
{
    std::wstring file(32768, L'\0');
    file.resize(
        GetEnvironmentVariableW(L"TARNWELL_MODULE", file.data(), static_cast<DWORD>(file.size())));
    return file;
}

inline std::vector<std::filesystem::path> InstallPlaces(const std::filesystem::path& program)
{
    return {program, program.parent_path() / "bin"};
}

// A bare name is looked for in the system's and the program's own folders only.
inline HMODULE TryLoad(const std::filesystem::path& file)
{
    return LoadLibraryExW(file.wstring().c_str(), nullptr,
                          file.is_absolute() ? LOAD_WITH_ALTERED_SEARCH_PATH
                                             : LOAD_LIBRARY_SEARCH_DEFAULT_DIRS);
}

inline std::string LoadError()
{
    return "error " + std::to_string(GetLastError()) + ".";
}

inline void (*FindSymbol(HMODULE library, const char* name))()
{
    return reinterpret_cast<void (*)()>(GetProcAddress(library, name));
}

#else

// Without the number only where development files are installed.
inline constexpr const char* moduleNames[] = {"libtarnwell.so.1", "libtarnwell.so"};

inline std::filesystem::path ProgramFolder()
{
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
}

inline std::filesystem::path NamedFile()
{
    const char* const file = std::getenv("TARNWELL_MODULE");
    return file == nullptr ? "" : file;
}

inline std::vector<std::filesystem::path> InstallPlaces(const std::filesystem::path& program)
{
    const std::filesystem::path prefix = program.parent_path();
    return {program, prefix / "lib", prefix / "lib/x86_64-linux-gnu", prefix / "lib64"};
}

// A bare name is looked for as the system looks for libraries, which finds what is linked, too.
inline void* TryLoad(const std::filesystem::path& file)
{
    return dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
}

inline std::string LoadError()
{
    return dlerror();
}

inline void (*FindSymbol(void* library, const char* name))()
{
    return reinterpret_cast<void (*)()>(dlsym(library, name));
}

#endif

inline auto Load(const std::filesystem::path& file)
{
    const auto library = TryLoad(file);
    if (library == nullptr)
        throw LoadFailure("Can't load \"" + Named(file) + "\" as a module: " + LoadError());
    return library;
}

template <class Library, class Function>
void Find(Library library, const std::filesystem::path& file, const char* name, Function& function)
{
    function = reinterpret_cast<Function>(FindSymbol(library, name));
    if (function == nullptr)
        throw LoadFailure("\"" + Named(file) + "\" isn't the tarnwell module: it has no " + name +
                          ".");
}

} // namespace detail

/// The loaded module, which stays loaded until the process ends. A process uses one module's file:
/// on Linux the functions for texts and error information (com.h) are those of the one loaded last.
class Library
{
public:
    /// Loads the file at FindFile(). Throws LoadFailure.
    Library() : Library(FindFile()) {}

    /// Loads this file. Throws LoadFailure.
    explicit Library(const std::filesystem::path& file)
    {
        const auto library =
            detail::Load(file.has_parent_path() ? std::filesystem::absolute(file) : file);
        detail::Find(library, file, "DllGetClassObject", getClassObject_);
#ifndef _WIN32
        detail::Helpers helpers;
        detail::Find(library, file, "SysAllocString", helpers.sysAllocString);
        detail::Find(library, file, "SysAllocStringLen", helpers.sysAllocStringLen);
        detail::Find(library, file, "SysFreeString", helpers.sysFreeString);
        detail::Find(library, file, "SysStringLen", helpers.sysStringLen);
        detail::Find(library, file, "GetErrorInfo", helpers.getErrorInfo);
        detail::Find(library, file, "SetErrorInfo", helpers.setErrorInfo);
        detail::Find(library, file, "CreateErrorInfo", helpers.createErrorInfo);
        detail::TheHelpers() = helpers;
#endif
    }

    /// The file that TARNWELL_MODULE names; without it the library beside the running program or
    /// where it is installed with the program; else its bare name, for the system to find.
    static std::filesystem::path FindFile()
    {
        if (const std::filesystem::path named = detail::NamedFile(); !named.empty())
            return std::filesystem::absolute(named);
        std::error_code error;
        for (const auto& folder : detail::InstallPlaces(detail::ProgramFolder()))
        {
            for (const char* const name : detail::moduleNames)
            {
                if (std::filesystem::exists(folder / name, error))
                    return folder / name;
            }
        }
        return BareName();
    }

    /// As the entry point.
    HRESULT GetClassObject(REFCLSID clsid, REFIID iid, void** out) const
    {
        return getClassObject_(clsid, iid, out);
    }

private:
    // The first of the names by which the system finds a library; the last if it finds none.
    static std::filesystem::path BareName()
    {
        const char* found = nullptr;
        for (const char* const name : detail::moduleNames)
        {
            found = name;
            if (detail::TryLoad(name) != nullptr)
                break;
        }
        return found;
    }

    DllGetClassObjectFunction getClassObject_ = nullptr;
};

/// COM for the present thread, as long as this lives: needed on Windows on each thread that calls
/// the module, and nothing elsewhere. Where the host has initialised the thread, this counts on
/// top.
class ThreadScope
{
public:
#ifdef _WIN32
    ThreadScope() : initialised_(SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) {}
    ~ThreadScope()
    {
        if (initialised_)
            CoUninitialize();
    }
#else
    // A host's variable of a trivial class would count as unused.
    ThreadScope() {}  // NOLINT(modernize-use-equals-default)
    ~ThreadScope() {} // NOLINT(modernize-use-equals-default)
#endif
    ThreadScope(const ThreadScope&) = delete;
    ThreadScope& operator=(const ThreadScope&) = delete;

#ifdef _WIN32
private:
    bool initialised_;
#endif
};

} // namespace tarnwell::client
