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
    std::u16string asked; // the address of the last lookup or listing
    AddressKind addresses{MakeAddress<Uri>};
    bool memory = true; // for new objects
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

// What fake files and folders ask.
template <class Base> class FakeItem : public Base, public OnServersMemory
{
protected:
    explicit FakeItem(const GUID& classId) : Base(classId, Server().addresses) {}
    ~FakeItem() override = default;

    std::shared_ptr<FSItem> ReadItemInfo(const Uri& uri) override
    {
        ++Server().lookups;
        Server().asked = uri.GetText();
        if (Server().failure)
            throw ComException(*Server().failure);
        return std::make_shared<FSItem>(Server().facts);
    }
};

class FakeFile : public FakeItem<FileObject>
{
public:
    FakeFile() : FakeItem(CLSID_FTPFile) {}

    HRESULT STDMETHODCALLTYPE Open(std::uint32_t, std::uint32_t, IFileStream**) override
    {
        return E_NOTIMPL;
    }

protected:
    ~FakeFile() override = default;
};

class FakeFolder : public FakeItem<FolderObject>
{
public:
    FakeFolder() : FakeItem(CLSID_FTPFolder) {}

protected:
    ~FakeFolder() override = default;

    ComPtr<IFolderContents> MakeContents() override;
};

class FakeContents : public FolderContentsObject, public OnServersMemory
{
public:
    FakeContents()
        : FolderContentsObject(CLSID_FTPFolderContents, MakeListedItem<FakeFile>,
                               MakeListedItem<FakeFolder>)
    {
    }

protected:
    ~FakeContents() = default;
};

class FakeFileSystem : public FileSystemObject
{
public:
    FakeFileSystem() : FileSystemObject(CLSID_FTPFileSystem) {}

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
