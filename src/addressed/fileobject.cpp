#include "addressed/fileobject.h"

#include "frame/boundary.h"

namespace tarnwell
{

HRESULT FileObject::GetSizeLow(std::uint32_t* size)
{
    return GiveSize(size, 0);
}

HRESULT FileObject::GetSizeHigh(std::uint32_t* size)
{
    return GiveSize(size, 32);
}

HRESULT FileObject::GiveSize(std::uint32_t* size, unsigned shift)
{
    return AtBoundary({ClassId(), IID_IFile}, NullPointer::Published, size, [&] {
        *size = static_cast<std::uint32_t>(Facts().size >> shift);
        return S_OK;
    });
}

HRESULT ReadOnlyFileObject::Open(std::uint32_t access, std::uint32_t disposition,
                                 IFileStream** stream)
{
    if (stream != nullptr)
        *stream = nullptr;
    return AtBoundary({ClassId(), IID_IFile}, [&] {
        if (access != GENERIC_READ || disposition != OPEN_EXISTING)
        {
            throw ComException(E_INVALIDARG,
                               FormatMessageById(MessageId::OpenFailed, {Address().GetText()}),
                               At(source_));
        }
        ComPtr<IFileStream> content = GetContent();
        if (stream != nullptr)
            *stream = content.Detach();
        return S_OK;
    });
}

} // namespace tarnwell
