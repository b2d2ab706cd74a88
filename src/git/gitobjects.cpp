#include "git/gitobjects.h"

#include "frame/text.h"
#include "git/gitcommands.h"
#include "git/githistory.h"
#include "git/gittree.h"
#include "git/gituri.h"

#include <tarnwell/classes.h>

namespace tarnwell
{

namespace
{
constexpr AddressKind gitItems{MakeAddress<GITUri>, workingCopyMarker};
}

GITFileObject::GITFileObject() : WorkingCopyFileObject(CLSID_GITFile, gitItems, gitAddresses.source)
{
}

ComPtr<IFileStream> GITFileObject::GetContent()
{
    return GetGitContent(Address());
}

GITFileSystemObject::GITFileSystemObject() : WorkingCopyFileSystemObject(CLSID_GITFileSystem) {}

ComPtr<IFile> GITFileSystemObject::CreateFileObject(const std::u16string& path, bool mustExist)
{
    return MakeItem<GITFileObject, IFile>(path, mustExist);
}

RevisionList GITFileSystemObject::ReadRevisions(const std::u16string& path)
{
    return GetGitLog(path);
}

HRESULT GITFileSystemObject::ReadHistory(const OLECHAR* path, const OLECHAR* revision,
                                         const HistoryOptions* options, IHistorySink* sink)
{
    return ReadHistoryForHost({ClassId(), IID_IFileSystemHistory}, gitAddresses.source, path,
                              revision, options, sink, ReadGitHistory);
}

HRESULT GITFileSystemObject::OpenTree(const OLECHAR* path, const OLECHAR* revision,
                                      ICopyProgress* progress, ITree** tree)
{
    return OpenTreeForHost({ClassId(), IID_IFileSystemTrees}, gitAddresses.source, path, revision,
                           progress, tree, OpenGitTree);
}

} // namespace tarnwell
