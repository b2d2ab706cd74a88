// One run of the program: its options, the module and the host object.
#pragma once

#include "address.h"
#include "arguments.h"
#include "errors.h"

#include <tarnwell/client/filesystem.hpp>

namespace tarnwell::host
{

struct Session
{
    const CommandLine& line;
    std::filesystem::path moduleFile;
    client::Module module;
    ComPtr<IUnknown> hostObject;
};

// An address with its file system.
struct Place
{
    Address address;
    ComPtr<IFileSystem> fileSystem;

    const OLECHAR* Text() const
    {
        return reinterpret_cast<const OLECHAR*>(address.text.c_str());
    }
};

// A new file system. Throws Failure.
ComPtr<IFileSystem> MakeFileSystem(const Session& session, const FileSystemKind& kind);

// Throws Failure.
Place Open(const Session& session, const std::u16string& address);

// The same, for a path of the local file system whatever it looks like.
Place OpenLocal(const Session& session, const std::u16string& path);

// The interface `I` of `object`. Throws Failure if it has none such.
template <class I, class From> ComPtr<I> Need(const ComPtr<From>& object)
{
    ComPtr<I> other;
    Call([&] { return object->QueryInterface(IidOf<I>(), other.OutVoid()); });
    return other;
}

} // namespace tarnwell::host
