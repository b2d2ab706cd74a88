#include "platform/typelibrary.h"

#include "platform/modulehandle.h"
#include "platform/wide.h"

#include <tarnwell/pointers.h>

#include <new>

namespace tarnwell
{

namespace
{

HRESULT LastStatus()
{
    return HRESULT_FROM_WIN32(GetLastError());
}

// The module's own file by its full path.
HRESULT ModulePath(std::u16string& path)
{
    constexpr DWORD longestPath = 32768;
    path.resize(longestPath);
    const DWORD length = GetModuleFileNameW(ThisModule(), Wide(path.data()), longestPath);
    if (length == 0)
        return LastStatus();
    path.resize(length);
    return S_OK;
}

std::u16string FolderOf(const std::u16string& path)
{
    return path.substr(0, path.find_last_of(u"\\/"));
}

// Null where the system knows no registration for one user.
template <class Function> Function* PerUser(const char* name)
{
    const HMODULE module = LoadLibraryW(L"OLEAUT32.DLL");
    if (module == nullptr)
        return nullptr;
    // The module isn't freed: it is one of those that this one is linked to.
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(module, name)));
}

HRESULT Register(ITypeLib* library, std::u16string path, bool perUser)
{
    std::u16string folder = FolderOf(path);
    if (perUser)
    {
        if (const auto forUser =
                PerUser<decltype(RegisterTypeLibForUser)>("RegisterTypeLibForUser"))
            return forUser(library, Wide(path.data()), Wide(folder.data()));
    }
    return RegisterTypeLib(library, Wide(path), Wide(folder));
}

HRESULT Unregister(const TLIBATTR& facts, bool perUser)
{
    if (perUser)
    {
        if (const auto forUser =
                PerUser<decltype(UnRegisterTypeLibForUser)>("UnRegisterTypeLibForUser"))
            return forUser(facts.guid, facts.wMajorVerNum, facts.wMinorVerNum, facts.lcid,
                           facts.syskind);
    }
    return UnRegisterTypeLib(facts.guid, facts.wMajorVerNum, facts.wMinorVerNum, facts.lcid,
                             facts.syskind);
}

// Runs `body` with the library in the module's file and that file's path.
template <class Body> HRESULT WithLibrary(Body body)
try
{
    std::u16string path;
    if (const HRESULT status = ModulePath(path); FAILED(status))
        return status;
    ComPtr<ITypeLib> library;
    if (const HRESULT status = LoadTypeLib(Wide(path), library.Out()); FAILED(status))
        return status;
    return body(library.Get(), path);
}
catch (const std::bad_alloc&)
{
    return E_OUTOFMEMORY;
}

} // namespace

HRESULT RegisterModuleTypeLibrary(bool perUser)
{
    return WithLibrary([perUser](ITypeLib* library, const std::u16string& path)
                       { return Register(library, path, perUser); });
}

HRESULT UnregisterModuleTypeLibrary(bool perUser)
{
    return WithLibrary(
        [perUser](ITypeLib* library, const std::u16string&)
        {
            TLIBATTR* facts = nullptr;
            const HRESULT status = library->GetLibAttr(&facts);
            if (FAILED(status))
                return status;
            const HRESULT removed = Unregister(*facts, perUser);
            library->ReleaseTLibAttr(facts);
            return removed;
        });
}

} // namespace tarnwell
