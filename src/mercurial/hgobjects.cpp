#include "mercurial/hgobjects.h"

#include "mercurial/hgcommands.h"
#include "mercurial/hguri.h"

#include <tarnwell/classes.h>

namespace tarnwell
{

namespace
{
constexpr AddressKind mercurialItems{MakeAddress<HGUri>, workingCopyMarker};
}

HGFileObject::HGFileObject()
    : WorkingCopyFileObject(CLSID_HGFile, mercurialItems, mercurialAddresses.source)
{
}

ComPtr<IFileStream> HGFileObject::GetContent()
{
    return GetHgContent(Address());
}

HGFileSystemObject::HGFileSystemObject() : WorkingCopyFileSystemObject(CLSID_HGFileSystem) {}

ComPtr<IFile> HGFileSystemObject::CreateFileObject(const std::u16string& path, bool mustExist)
{
    return MakeItem<HGFileObject, IFile>(path, mustExist);
}

std::vector<RevisionRecord> HGFileSystemObject::ReadRevisions(const std::u16string& path)
{
    return GetHgLog(path);
}

} // namespace tarnwell
