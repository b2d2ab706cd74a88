// The file of a URI-addressed file system. A backend derives from it and supplies `Open`,
// `ReadItemInfo` and, where addresses carry revisions, `FindRevisionMarker`.
#pragma once

#include "addressed/uriitem.h"
#include "frame/comobject.h"

namespace tarnwell
{

// `Address` is the backend's Uri class, `classId` the class that a failure names.
template <class Address, const GUID& classId>
class FileObject : public IFile,
                   public ErrorInfoFor<IFileSystemItem, IFile>,
                   public IUriFileSystemItemImpl<classId>
{
public:
    using Interfaces =
        InterfaceList<IFileSystemItem, IFileSystemItemComparableUrl, IFile, ::ISupportErrorInfo>;

    HRESULT STDMETHODCALLTYPE GetSizeLow(std::uint32_t* size) final
    {
        return GiveSize(size, 0);
    }
    HRESULT STDMETHODCALLTYPE GetSizeHigh(std::uint32_t* size) final
    {
        return GiveSize(size, 32);
    }

    void Initialize(::IUnknown* host, const std::u16string& path, bool mustExist)
    {
        this->InitializeItem(host, std::make_shared<Address>(path), mustExist, false);
    }
    void InitializeFromItem(::IUnknown* host, const FSItem& item)
    {
        this->InitializeItem(host, std::make_shared<Address>(item.text), item);
    }

protected:
    ~FileObject() override = default;

    static constexpr Reporter fileReporter{classId, IID_IFile};

private:
    HRESULT GiveSize(std::uint32_t* size, unsigned shift)
    {
        return AtBoundary(fileReporter, NullPointer::Published, size, [&] {
            *size = static_cast<std::uint32_t>(this->Facts().size >> shift);
            return S_OK;
        });
    }
};

} // namespace tarnwell
