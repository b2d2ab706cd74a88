#include "addressed/folderobject.h"

#include "frame/boundary.h"

namespace tarnwell
{

HRESULT FolderObject::GetContents(IFolderContents** contents)
{
    return AtBoundary({ClassId(), IID_IFolder}, NullPointer::Bare, contents, [&] {
        *contents = MakeContents().Detach();
        return S_OK;
    });
}

HRESULT FolderObject::Create(VARIANT_BOOL)
{
    return E_NOTIMPL;
}

} // namespace tarnwell
