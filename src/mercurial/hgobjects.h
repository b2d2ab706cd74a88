// The Mercurial file system as the host sees it.
#pragma once

#include "workingcopy/workingcopyobjects.h"

namespace tarnwell
{

class HGFileObject : public WorkingCopyFileObject
{
public:
    HGFileObject();

protected:
    ~HGFileObject() override = default;

    ComPtr<IFileStream> GetContent() override;
};

class HGFileSystemObject : public WorkingCopyFileSystemObject
{
public:
    HGFileSystemObject();

protected:
    ~HGFileSystemObject() = default;

    ComPtr<IFile> CreateFileObject(const std::u16string& path, bool mustExist) override;
    std::vector<RevisionRecord> ReadRevisions(const std::u16string& path) override;
};

} // namespace tarnwell
