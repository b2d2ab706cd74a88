#include "workingcopy/workingcopyobjects.h"

namespace tarnwell
{

HRESULT WorkingCopyFileObject::Open(std::uint32_t access, std::uint32_t disposition,
                                    IFileStream** stream)
{
    return stream == nullptr ? E_POINTER : ReadOnlyFileObject::Open(access, disposition, stream);
}

std::shared_ptr<FSItem> WorkingCopyFileObject::ReadItemInfo(const Uri&)
{
    ThrowIfNotMade(E_NOTIMPL);
    return nullptr;
}

ComPtr<IFolder> WorkingCopyFileSystemObject::CreateFolderObject(const std::u16string&, bool)
{
    ThrowIfNotMade(E_NOTIMPL);
    return {};
}

} // namespace tarnwell
