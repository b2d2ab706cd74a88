#include "mercurial/hgobjects.h"

#include "mercurial/hgcommands.h"
#include "mercurial/hghistory.h"
#include "mercurial/hgtree.h"
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

RevisionList HGFileSystemObject::ReadRevisions(const std::u16string& path)
{
    return GetHgLog(path);
}

HRESULT HGFileSystemObject::ReadHistory(const OLECHAR* path, const OLECHAR* revision,
                                        const HistoryOptions* options, IHistorySink* sink)
{
    return ReadHistoryForHost({ClassId(), IID_IFileSystemHistory}, mercurialAddresses.source, path,
                              revision, options, sink, ReadHgHistory);
}

HRESULT HGFileSystemObject::OpenTree(const OLECHAR* path, const OLECHAR* revision,
                                     ICopyProgress* progress, ITree** tree)
{
    return OpenTreeForHost({ClassId(), IID_IFileSystemTrees}, mercurialAddresses.source, path,
                           revision, progress, tree, OpenHgTree);
}

} // namespace tarnwell
