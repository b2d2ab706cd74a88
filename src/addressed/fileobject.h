// The files of the file systems of addresses.
#pragma once

#include "addressed/uriitem.h"
#include "frame/comobject.h"

namespace tarnwell
{

// A backend derives from it and supplies `Open` and `ReadItemInfo`.
class FileObject : public IFile,
                   public ErrorInfoFor<IFileSystemItem, IFile>,
                   public IUriFileSystemItemImpl
{
public:
    using Interfaces =
        InterfaceList<IFileSystemItem, IFileSystemItemComparableUrl, IFile, ::ISupportErrorInfo>;

    HRESULT STDMETHODCALLTYPE GetSizeLow(std::uint32_t* size) final;
    HRESULT STDMETHODCALLTYPE GetSizeHigh(std::uint32_t* size) final;

protected:
    FileObject(const GUID& classId, const AddressKind& addresses)
        : IUriFileSystemItemImpl(classId, addresses, false)
    {
    }
    ~FileObject() override = default;

private:
    HRESULT GiveSize(std::uint32_t* size, unsigned shift);
};

// The file of a file system that reads and never writes. A backend supplies `GetContent` in the
// place of `Open`.
class ReadOnlyFileObject : public FileObject
{
public:
    // Without a `stream` to fill, the content is fetched and dropped.
    HRESULT STDMETHODCALLTYPE Open(std::uint32_t access, std::uint32_t disposition,
                                   IFileStream** stream) override;

protected:
    // `source` is the file system's name in positions of failures.
    ReadOnlyFileObject(const GUID& classId, const AddressKind& addresses, const char16_t* source)
        : FileObject(classId, addresses), source_(source)
    {
    }
    ~ReadOnlyFileObject() override = default;

    // Fetches the content now. Throws if that fails.
    virtual ComPtr<IFileStream> GetContent() = 0;

private:
    const char16_t* source_;
};

} // namespace tarnwell
