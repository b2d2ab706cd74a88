// The Git file system as the host sees it.
#pragma once

#include "workingcopy/workingcopyobjects.h"

#include <tarnwell/history.h>
#include <tarnwell/trees.h>

namespace tarnwell
{

class GITFileObject : public WorkingCopyFileObject
{
public:
    GITFileObject();

protected:
    ~GITFileObject() override = default;

    ComPtr<IFileStream> GetContent() override;
};

class GITFileSystemObject : public WorkingCopyFileSystemObject,
                            public IFileSystemHistory,
                            public IFileSystemTrees
{
public:
    using Interfaces = InterfaceList<IFileSystemRevisions, IFileSystemInit, IFileSystem,
                                     IFileSystemHistory, IFileSystemTrees, ::ISupportErrorInfo>;

    GITFileSystemObject();

    HRESULT STDMETHODCALLTYPE ReadHistory(const OLECHAR* path, const OLECHAR* revision,
                                          const HistoryOptions* options,
                                          IHistorySink* sink) override;
    HRESULT STDMETHODCALLTYPE OpenTree(const OLECHAR* path, const OLECHAR* revision,
                                       ICopyProgress* progress, ITree** tree) override;

protected:
    ~GITFileSystemObject() = default;

    ComPtr<IFile> CreateFileObject(const std::u16string& path, bool mustExist) override;
    RevisionList ReadRevisions(const std::u16string& path) override;
};

} // namespace tarnwell
