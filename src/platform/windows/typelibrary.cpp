#include "platform/typelibrary.h"

#include "platform/wide.h"
#include "platform/windows/modulehandle.h"

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

// The form of a registration that is for one user, where it is asked for and the system has it,
// else the form for all users. Both have the same parameters.
template <class Function>
Function* FormFor(bool perUser, Function* forAllUsers, const char* nameForOneUser)
{
    // Linked to, so loaded.
    const HMODULE module = perUser ? GetModuleHandleW(L"OLEAUT32.DLL") : nullptr;
    const FARPROC found = module == nullptr ? nullptr : GetProcAddress(module, nameForOneUser);
    if (found == nullptr)
        return forAllUsers;
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(found));
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
    return WithLibrary([perUser](ITypeLib* library, std::u16string& path) {
        std::u16string helpFolder = FolderOf(path);
        const auto form = FormFor(perUser, &RegisterTypeLib, "RegisterTypeLibForUser");
        return form(library, Wide(path.data()), Wide(helpFolder.data()));
    });
}

HRESULT UnregisterModuleTypeLibrary(bool perUser)
{
    return WithLibrary([perUser](ITypeLib* library, const std::u16string&) {
        TLIBATTR* facts = nullptr;
        if (const HRESULT status = library->GetLibAttr(&facts); FAILED(status))
            return status;
        const auto form = FormFor(perUser, &UnRegisterTypeLib, "UnRegisterTypeLibForUser");
        const HRESULT status = form(facts->guid, facts->wMajorVerNum, facts->wMinorVerNum,
                                    facts->lcid, facts->syskind);
        library->ReleaseTLibAttr(facts);
        return status;
    });
}

} // namespace tarnwell
