// The classes of a file system of working copies. They offer files only: the content of a
// revision, and the list of revisions.
#pragma once

#include "addressed/fileobject.h"
#include "addressed/filesystemobject.h"

namespace tarnwell
{

class WorkingCopyFileObject : public ReadOnlyFileObject
{
public:
    // Without a `stream` to fill, nothing is fetched.
    HRESULT STDMETHODCALLTYPE Open(std::uint32_t access, std::uint32_t disposition,
                                   IFileStream** stream) final;

protected:
    using ReadOnlyFileObject::ReadOnlyFileObject;
    ~WorkingCopyFileObject() override = default;

    // Throws: the clients are never asked for facts.
    std::shared_ptr<FSItem> ReadItemInfo(const Uri& uri) final;
};

class WorkingCopyFileSystemObject : public RevisionsFileSystemObject
{
protected:
    using RevisionsFileSystemObject::RevisionsFileSystemObject;
    ~WorkingCopyFileSystemObject() = default;

    // Throws: there are no folders.
    ComPtr<IFolder> CreateFolderObject(const std::u16string& path, bool mustExist) final;
};

} // namespace tarnwell
