// The Git file system as the host sees it.
#pragma once

#include "workingcopy/workingcopyobjects.h"

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

class GITFileSystemObject : public WorkingCopyFileSystemObject
{
public:
    GITFileSystemObject();

protected:
    ~GITFileSystemObject() = default;

    ComPtr<IFile> CreateFileObject(const std::u16string& path, bool mustExist) override;
    std::vector<RevisionRecord> ReadRevisions(const std::u16string& path) override;
};

} // namespace tarnwell
