#include "subversion/svnobjects.h"

#include "subversion/svncommands.h"
#include "subversion/svnhistory.h"
#include "subversion/svntree.h"
#include "subversion/svnuri.h"

#include <tarnwell/classes.h>

namespace tarnwell
{

namespace
{
// Names lack the revision, unlike those of the other file systems.
constexpr AddressKind svnItems{MakeAddress<SVNUri>, svnMarker, false};
} // namespace

SVNFileObject::SVNFileObject() : ReadOnlyFileObject(CLSID_SVNFile, svnItems, svnSource) {}

ComPtr<IFileStream> SVNFileObject::GetContent()
{
    return SvnCat(*this, Address());
}

std::shared_ptr<FSItem> SVNFileObject::ReadItemInfo(const Uri& uri)
{
    return SvnReadItem(*this, uri);
}

SVNFolderObject::SVNFolderObject() : FolderObject(CLSID_SVNFolder, svnItems) {}

ComPtr<IFolderContents> SVNFolderObject::MakeContents()
{
    return MakeFolderContents<SVNFolderContentsObject>(HostObject(),
                                                       SvnListChildren(*this, Address()));
}

std::shared_ptr<FSItem> SVNFolderObject::ReadItemInfo(const Uri& uri)
{
    return SvnReadItem(*this, uri);
}

SVNFolderContentsObject::SVNFolderContentsObject()
    : FolderContentsObject(CLSID_SVNFolderContents, MakeListedItem<SVNFileObject>,
                           MakeListedItem<SVNFolderObject>)
{
}

SVNFileSystemObject::SVNFileSystemObject() : RevisionsFileSystemObject(CLSID_SVNFileSystem) {}

ComPtr<IFile> SVNFileSystemObject::CreateFileObject(const std::u16string& path, bool mustExist)
{
    return MakeItem<SVNFileObject, IFile>(path, mustExist);
}

ComPtr<IFolder> SVNFileSystemObject::CreateFolderObject(const std::u16string& path, bool mustExist)
{
    return MakeItem<SVNFolderObject, IFolder>(path, mustExist);
}

RevisionList SVNFileSystemObject::ReadRevisions(const std::u16string& path)
{
    return SvnLog(*this, path);
}

HRESULT SVNFileSystemObject::ReadHistory(const OLECHAR* path, const OLECHAR* revision,
                                         const HistoryOptions* options, IHistorySink* sink)
{
    const auto read = [this](const HistoryQuestion& question, HistoryTaker& taker) {
        ReadSvnHistory(*this, question, taker);
    };
    return ReadHistoryForHost({ClassId(), IID_IFileSystemHistory}, svnSource, path, revision,
                              options, sink, read);
}

HRESULT SVNFileSystemObject::OpenTree(const OLECHAR* path, const OLECHAR* revision,
                                      ICopyProgress* progress, ITree** tree)
{
    const auto open = [this](const std::u16string& asked,
                             const std::optional<std::u16string>& wanted, Patience& patience) {
        return OpenSvnTree(*this, asked, wanted, patience);
    };
    return OpenTreeForHost({ClassId(), IID_IFileSystemTrees}, svnSource, path, revision, progress,
                           tree, open);
}

} // namespace tarnwell
