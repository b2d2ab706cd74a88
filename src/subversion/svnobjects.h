// The Subversion file system as the host sees it. It reads and never writes.
#pragma once

#include "addressed/fileobject.h"
#include "addressed/filesystemobject.h"
#include "addressed/foldercontentsobject.h"
#include "addressed/folderobject.h"

#include <tarnwell/history.h>
#include <tarnwell/trees.h>

namespace tarnwell
{

class SVNFileObject : public ReadOnlyFileObject
{
public:
    SVNFileObject();

protected:
    ~SVNFileObject() override = default;

    ComPtr<IFileStream> GetContent() override;
    std::shared_ptr<FSItem> ReadItemInfo(const Uri& uri) override;
};

class SVNFolderObject : public FolderObject
{
public:
    SVNFolderObject();

protected:
    ~SVNFolderObject() override = default;

    ComPtr<IFolderContents> MakeContents() override;
    std::shared_ptr<FSItem> ReadItemInfo(const Uri& uri) override;
};

class SVNFolderContentsObject : public FolderContentsObject
{
public:
    SVNFolderContentsObject();

protected:
    ~SVNFolderContentsObject() = default;
};

class SVNFileSystemObject : public RevisionsFileSystemObject,
                            public IFileSystemHistory,
                            public IFileSystemTrees
{
public:
    using Interfaces = InterfaceList<IFileSystemRevisions, IFileSystemInit, IFileSystem,
                                     IFileSystemHistory, IFileSystemTrees, ::ISupportErrorInfo>;

    SVNFileSystemObject();

    HRESULT STDMETHODCALLTYPE ReadHistory(const OLECHAR* path, const OLECHAR* revision,
                                          const HistoryOptions* options,
                                          IHistorySink* sink) override;
    HRESULT STDMETHODCALLTYPE OpenTree(const OLECHAR* path, const OLECHAR* revision,
                                       ICopyProgress* progress, ITree** tree) override;

protected:
    ~SVNFileSystemObject() = default;

    ComPtr<IFile> CreateFileObject(const std::u16string& path, bool mustExist) override;
    ComPtr<IFolder> CreateFolderObject(const std::u16string& path, bool mustExist) override;
    RevisionList ReadRevisions(const std::u16string& path) override;
};

} // namespace tarnwell
