// A file system of addresses whose server is a record in the test: what its classes are asked is
// answered from there, counted, and refused on order.
#pragma once

#include "addressed/fileobject.h"
#include "addressed/filesystemobject.h"
#include "addressed/foldercontentsobject.h"
#include "addressed/folderobject.h"
#include "frame/exception.h"

#include <tarnwell/classes.h>

#include <functional>
#include <new>
#include <optional>

namespace tarnwell::test
{

struct FakeServer
{
    FSItem facts;                        // of whatever is looked up
    FSItems listing;                     // of whatever folder is listed
    std::optional<ComException> failure; // of lookups and listings, while it stands here
    int lookups = 0;
    int listings = 0;
    std::u16string asked;        // the address of the last lookup or listing
    std::u16string_view markers; // the last of these characters begins a revision
    bool memory = true;          // for new objects
    std::function<void()> maskAsked;
};

// The one that all fake classes ask.
FakeServer& Server();

// Base of the fake classes, for which memory can be short.
class OnServersMemory
{
public:
    static void* operator new(std::size_t size, const std::nothrow_t&) noexcept;
    static void operator delete(void* object);
};

// What fake files and folders ask; `Base` is one of the templates.
template <class Base> class FakeItem : public Base, public OnServersMemory
{
protected:
    ~FakeItem() override = default;

    std::ptrdiff_t FindRevisionMarker(std::u16string_view text) const override
    {
        if (Server().markers.empty())
            return Base::FindRevisionMarker(text);
        return static_cast<std::ptrdiff_t>(text.find_last_of(Server().markers));
    }
    std::shared_ptr<FSItem> ReadItemInfo(const std::shared_ptr<Uri>& uri) override
    {
        ++Server().lookups;
        Server().asked = uri->GetText();
        if (Server().failure)
            throw ComException(*Server().failure);
        return std::make_shared<FSItem>(Server().facts);
    }
};

class FakeFile : public FakeItem<FileObject<Uri, CLSID_FTPFile>>
{
public:
    HRESULT STDMETHODCALLTYPE Open(std::uint32_t, std::uint32_t, IFileStream**) override
    {
        return E_NOTIMPL;
    }

protected:
    ~FakeFile() override = default;
};

class FakeFolder : public FakeItem<FolderObject<Uri, CLSID_FTPFolder>>
{
protected:
    ~FakeFolder() override = default;

    ComPtr<IFolderContents> MakeContents() override;
};

class FakeContents : public FolderContentsObject<FakeFile, FakeFolder, CLSID_FTPFolderContents>,
                     public OnServersMemory
{
protected:
    ~FakeContents() = default;
};

class FakeFileSystem : public FileSystemObject<CLSID_FTPFileSystem>
{
public:
    using Interfaces = InterfaceList<IFileSystemInit, IFileSystem, ::ISupportErrorInfo>;

protected:
    ~FakeFileSystem() = default;

    ComPtr<IFile> CreateFileObject(const std::u16string& path, bool mustExist) override
    {
        return MakeItem<FakeFile, IFile>(path, mustExist);
    }
    ComPtr<IFolder> CreateFolderObject(const std::u16string& path, bool mustExist) override
    {
        return MakeItem<FakeFolder, IFolder>(path, mustExist);
    }
    std::uint32_t GetOperationMaskFor(std::uint32_t kind, ::IUnknown* other) const override
    {
        if (Server().maskAsked)
            Server().maskAsked();
        return FileSystemObject::GetOperationMaskFor(kind, other);
    }
};

} // namespace tarnwell::test
