// The Perforce file system as the host sees it. It reads and never writes.
#pragma once

#include "addressed/fileobject.h"
#include "addressed/filesystemobject.h"
#include "addressed/foldercontentsobject.h"
#include "addressed/folderobject.h"

#include <tarnwell/history.h>
#include <tarnwell/trees.h>

namespace tarnwell
{

class P4FileObject : public ReadOnlyFileObject
{
public:
    P4FileObject();

protected:
    ~P4FileObject() override = default;

    ComPtr<IFileStream> GetContent() override;
    std::shared_ptr<FSItem> ReadItemInfo(const Uri& uri) override;
};

class P4FolderObject : public FolderObject
{
public:
    P4FolderObject();

protected:
    ~P4FolderObject() override = default;

    ComPtr<IFolderContents> MakeContents() override;
    std::shared_ptr<FSItem> ReadItemInfo(const Uri& uri) override;
};

class P4FolderContentsObject : public FolderContentsObject
{
public:
    P4FolderContentsObject();

protected:
    ~P4FolderContentsObject() = default;
};

class P4FileSystemObject : public RevisionsFileSystemObject,
                           public IFileSystemHistory,
                           public IFileSystemTrees
{
public:
    using Interfaces = InterfaceList<IFileSystemRevisions, IFileSystemInit, IFileSystem,
                                     IFileSystemHistory, IFileSystemTrees, ::ISupportErrorInfo>;

    P4FileSystemObject();

    HRESULT STDMETHODCALLTYPE ReadHistory(const OLECHAR* path, const OLECHAR* revision,
                                          const HistoryOptions* options,
                                          IHistorySink* sink) override;
    HRESULT STDMETHODCALLTYPE OpenTree(const OLECHAR* path, const OLECHAR* revision,
                                       ICopyProgress* progress, ITree** tree) override;

protected:
    ~P4FileSystemObject() = default;

    ComPtr<IFile> CreateFileObject(const std::u16string& path, bool mustExist) override;
    ComPtr<IFolder> CreateFolderObject(const std::u16string& path, bool mustExist) override;
    RevisionList ReadRevisions(const std::u16string& path) override;
};

} // namespace tarnwell
