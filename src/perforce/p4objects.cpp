#include "perforce/p4objects.h"

#include "perforce/p4commands.h"
#include "perforce/p4history.h"
#include "perforce/p4tree.h"
#include "perforce/p4uri.h"

#include <tarnwell/classes.h>

namespace tarnwell
{

namespace
{
constexpr AddressKind p4Items{MakeAddress<P4Uri>, p4Marker};
} // namespace

P4FileObject::P4FileObject() : ReadOnlyFileObject(CLSID_P4File, p4Items, p4Source) {}

ComPtr<IFileStream> P4FileObject::GetContent()
{
    return P4Print(*this, Address());
}

std::shared_ptr<FSItem> P4FileObject::ReadItemInfo(const Uri& uri)
{
    return P4FindItem(*this, uri);
}

P4FolderObject::P4FolderObject() : FolderObject(CLSID_P4Folder, p4Items) {}

ComPtr<IFolderContents> P4FolderObject::MakeContents()
{
    return MakeFolderContents<P4FolderContentsObject>(HostObject(), P4ListFolder(*this, Address()));
}

std::shared_ptr<FSItem> P4FolderObject::ReadItemInfo(const Uri& uri)
{
    return P4FindItem(*this, uri);
}

P4FolderContentsObject::P4FolderContentsObject()
    : FolderContentsObject(CLSID_P4FolderContents, MakeListedItem<P4FileObject>,
                           MakeListedItem<P4FolderObject>)
{
}

P4FileSystemObject::P4FileSystemObject() : RevisionsFileSystemObject(CLSID_P4FileSystem) {}

ComPtr<IFile> P4FileSystemObject::CreateFileObject(const std::u16string& path, bool mustExist)
{
    return MakeItem<P4FileObject, IFile>(path, mustExist);
}

ComPtr<IFolder> P4FileSystemObject::CreateFolderObject(const std::u16string& path, bool mustExist)
{
    return MakeItem<P4FolderObject, IFolder>(path, mustExist);
}

RevisionList P4FileSystemObject::ReadRevisions(const std::u16string& path)
{
    return P4History(*this, path);
}

HRESULT P4FileSystemObject::ReadHistory(const OLECHAR* path, const OLECHAR* revision,
                                        const HistoryOptions* options, IHistorySink* sink)
{
    const auto read = [&](const HistoryQuestion& question, HistoryTaker& taker) {
        ReadP4History(*this, question, taker);
    };
    return ReadHistoryForHost({ClassId(), IID_IFileSystemHistory}, p4Source, path, revision,
                              options, sink, read);
}

HRESULT P4FileSystemObject::OpenTree(const OLECHAR* path, const OLECHAR* revision,
                                     ICopyProgress* progress, ITree** tree)
{
    const auto open = [&](const std::u16string& address,
                          const std::optional<std::u16string>& wanted, Patience& patience) {
        return OpenP4Tree(*this, P4ItemOf(address, wanted), patience);
    };
    return OpenTreeForHost({ClassId(), IID_IFileSystemTrees}, p4Source, path, revision, progress,
                           tree, open);
}

} // namespace tarnwell
