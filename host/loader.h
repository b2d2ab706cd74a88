// The module, loaded by path.
//
// This is all that a host needs beside the headers in include/tarnwell/: nothing is registered,
// and classes are made through the library's own entry points. On Linux, the text and error
// functions that com.h declares come with it: they forward to the library that was loaded last,
// so load it before any text is made.
#pragma once

#include <tarnwell/pointers.h>
#include <tarnwell/tarnwell.h>

#include <filesystem>
#include <stdexcept>

namespace tarnwell::host
{

// The file is missing, or isn't the module. The text is UTF-8 and names the file.
struct LoadFailure : std::runtime_error
{
    using std::runtime_error::runtime_error;
};

// The module stays loaded until the process ends, also when this object goes.
class Module
{
public:
    // Throws LoadFailure.
    explicit Module(const std::filesystem::path& file);

    // The library beside the running program, or where it is installed with the program.
    static std::filesystem::path DefaultFile();

    const std::filesystem::path& File() const
    {
        return file_;
    }

    HRESULT GetClassObject(REFCLSID clsid, REFIID iid, void** out) const;
    HRESULT CanUnloadNow() const;
    HRESULT RegisterServer() const;
    HRESULT UnregisterServer() const;

    // A new object of `clsid`, as `iid`. `outer` is null unless the object is to be a part of it.
    HRESULT CreateInstance(REFCLSID clsid, IUnknown* outer, REFIID iid, void** out) const;

    // A new file system with its host object, which may be null. Null on failure; `status`, if
    // given, receives the reason.
    template <class I = IFileSystem>
    ComPtr<I> CreateFileSystem(REFCLSID clsid, IUnknown* hostObject = nullptr,
                               HRESULT* status = nullptr) const
    {
        ComPtr<IFileSystemInit> start;
        HRESULT result = CreateInstance(clsid, nullptr, IidOf<IFileSystemInit>(), start.OutVoid());
        if (SUCCEEDED(result))
            result = start->SetHost(hostObject);
        ComPtr<I> fileSystem;
        if (SUCCEEDED(result))
            result = start->QueryInterface(IidOf<I>(), fileSystem.OutVoid());
        if (status != nullptr)
            *status = result;
        return fileSystem;
    }

private:
    using GetClassObjectFunction = HRESULT(STDMETHODCALLTYPE*)(REFCLSID, REFIID, void**);
    using PlainFunction = HRESULT(STDMETHODCALLTYPE*)();

    std::filesystem::path file_;
    GetClassObjectFunction getClassObject_ = nullptr;
    PlainFunction canUnloadNow_ = nullptr;
    PlainFunction registerServer_ = nullptr;
    PlainFunction unregisterServer_ = nullptr;
};

} // namespace tarnwell::host
