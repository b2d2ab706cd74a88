// The Subversion file system as the host sees it. It reads and never writes.
#pragma once

#include "addressed/fileobject.h"
#include "addressed/filesystemobject.h"
#include "addressed/foldercontentsobject.h"
#include "addressed/folderobject.h"
#include "addressed/revisioncalls.h"
#include "subversion/svncommands.h"
#include "subversion/svnuri.h"

#include <tarnwell/classes.h>

namespace tarnwell
{

// What its files and folders have in common. Their names lack the revision, unlike those of the
// other file systems.
template <class Base> class SVNItem : public Base
{
protected:
    ~SVNItem() override = default;

    std::ptrdiff_t FindRevisionMarker(std::u16string_view text) const final
    {
        return SvnMarkerOf(text);
    }
    std::u16string NameOf(std::u16string_view leaf) const final
    {
        return std::u16string(StripSvnRevision(leaf));
    }
    std::shared_ptr<FSItem> ReadItemInfo(const std::shared_ptr<Uri>& uri) final
    {
        return SvnReadItem(*this, *uri);
    }
};

class SVNFileObject : public SVNItem<FileObject<SVNUri, CLSID_SVNFile>>
{
public:
    // For reading only. Without a `stream` to fill, the content is fetched and dropped.
    HRESULT STDMETHODCALLTYPE Open(std::uint32_t access, std::uint32_t disposition,
                                   IFileStream** stream) override;

protected:
    ~SVNFileObject() override = default;
};

class SVNFolderObject : public SVNItem<FolderObject<SVNUri, CLSID_SVNFolder>>
{
protected:
    ~SVNFolderObject() override = default;

    ComPtr<IFolderContents> MakeContents() override;
};

using SVNFolderContentsObject =
    FolderContentsObject<SVNFileObject, SVNFolderObject, CLSID_SVNFolderContents>;

class SVNFileSystemObject : public FileSystemObject<CLSID_SVNFileSystem>,
                            public IFileSystemRevisions
{
public:
    using Interfaces =
        InterfaceList<IFileSystemRevisions, IFileSystemInit, IFileSystem, ::ISupportErrorInfo>;

    HRESULT STDMETHODCALLTYPE HasRevisions(const OLECHAR* path, std::uint32_t reserved,
                                           VARIANT_BOOL* has) override;
    HRESULT STDMETHODCALLTYPE GetRevisions(const OLECHAR* path, std::uint32_t reserved,
                                           IRevisions** revisions) override;

protected:
    ~SVNFileSystemObject() = default;

    ComPtr<IFile> CreateFileObject(const std::u16string& path, bool mustExist) override;
    ComPtr<IFolder> CreateFolderObject(const std::u16string& path, bool mustExist) override;
};

} // namespace tarnwell
