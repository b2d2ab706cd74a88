#include "subversion/svnobjects.h"

namespace tarnwell
{

HRESULT SVNFileObject::Open(std::uint32_t access, std::uint32_t disposition, IFileStream** stream)
{
    if (stream != nullptr)
        *stream = nullptr;
    return AtBoundary(fileReporter, [&] {
        if (access != GENERIC_READ || disposition != OPEN_EXISTING)
            throw ComException(E_INVALIDARG,
                               FormatMessageById(MessageId::OpenFailed, {Address()->GetText()}),
                               At(svnSource));
        ComPtr<IFileStream> content = SvnCat(*this, *Address());
        if (stream != nullptr)
            *stream = content.Detach();
        return S_OK;
    });
}

ComPtr<IFolderContents> SVNFolderObject::MakeContents()
{
    return MakeFolderContents<SVNFolderContentsObject>(HostObject(),
                                                       SvnListChildren(*this, *Address()));
}

HRESULT SVNFileSystemObject::HasRevisions(const OLECHAR* path, std::uint32_t, VARIANT_BOOL* has)
{
    return HasRevisionsHidingFailures(CLSID_SVNFileSystem, has,
                                      [&] { return SvnLog(*this, FromHost(path)); });
}

HRESULT SVNFileSystemObject::GetRevisions(const OLECHAR* path, std::uint32_t,
                                          IRevisions** revisions)
{
    return GetRevisionsHidingFailures(CLSID_SVNFileSystem, revisions,
                                      [&] { return SvnLog(*this, FromHost(path)); });
}

ComPtr<IFile> SVNFileSystemObject::CreateFileObject(const std::u16string& path, bool mustExist)
{
    return MakeItem<SVNFileObject, IFile>(path, mustExist);
}

ComPtr<IFolder> SVNFileSystemObject::CreateFolderObject(const std::u16string& path, bool mustExist)
{
    return MakeItem<SVNFolderObject, IFolder>(path, mustExist);
}

} // namespace tarnwell
