// The module beside the test program, loaded by path as hosts do it, with the entry points that a
// host seldom calls.
#pragma once

#include "support/process.h"

#include <tarnwell/client/library.hpp>
#include <tarnwell/pointers.h>
#include <tarnwell/tarnwell.h>

#include <filesystem>

namespace tarnwell::test
{

// It stays loaded until the process ends, also when this object goes.
class LoadedModule
{
public:
    // Throws LoadFailure.
    explicit LoadedModule(const std::filesystem::path& file = DefaultFile()) : library_(file)
    {
        // Loaded once more, which is the same one.
        const auto handle = client::detail::Load(file);
        client::detail::Find(handle, file, "DllCanUnloadNow", canUnloadNow_);
        client::detail::Find(handle, file, "DllRegisterServer", registerServer_);
        client::detail::Find(handle, file, "DllUnregisterServer", unregisterServer_);
    }

    static std::filesystem::path DefaultFile()
    {
        return ThisProgram().parent_path() / ModuleName();
    }

    HRESULT GetClassObject(REFCLSID clsid, REFIID iid, void** out) const
    {
        return library_.GetClassObject(clsid, iid, out);
    }
    HRESULT CanUnloadNow() const
    {
        return canUnloadNow_();
    }
    HRESULT RegisterServer() const
    {
        return registerServer_();
    }
    HRESULT UnregisterServer() const
    {
        return unregisterServer_();
    }

    // A new object of `clsid`, as `iid`. `outer` is null unless the object is to be a part of it.
    HRESULT CreateInstance(REFCLSID clsid, ::IUnknown* outer, REFIID iid, void** out) const
    {
        ComPtr<::IClassFactory> factory;
        const HRESULT status = GetClassObject(clsid, IidOf<::IClassFactory>(), factory.OutVoid());
        return FAILED(status) ? status : factory->CreateInstance(outer, iid, out);
    }

    // A new file system with its host object, which may be null. Null on failure.
    ComPtr<IFileSystem> CreateFileSystem(REFCLSID clsid, ::IUnknown* hostObject = nullptr) const
    {
        ComPtr<IFileSystemInit> start;
        if (FAILED(CreateInstance(clsid, nullptr, IidOf<IFileSystemInit>(), start.OutVoid())) ||
            FAILED(start->SetHost(hostObject)))
            return {};
        return start.As<IFileSystem>();
    }

private:
    client::Library library_;
    DllCanUnloadNowFunction canUnloadNow_ = nullptr;
    DllRegisterServerFunction registerServer_ = nullptr;
    DllUnregisterServerFunction unregisterServer_ = nullptr;
};

} // namespace tarnwell::test
