#include "runner/readstream.h"

#include "frame/exception.h"
#include "frame/messages.h"

namespace tarnwell
{

HRESULT ReadStreamObject::Close()
{
    file_.reset();
    return S_OK;
}

HRESULT ReadStreamObject::Read(void* buffer, ULONG size, ULONG* read)
{
    DWORD count = 0;
    if (read != nullptr)
        *read = 0;
    const HANDLE file = file_ ? file_->Get() : INVALID_HANDLE_VALUE;
    if (!ReadFile(file, buffer, size, &count, nullptr))
        return EnsureFailed(StatusFromLastError());
    if (read != nullptr)
        *read = count;
    return S_OK;
}

HRESULT ReadStreamObject::Write(const void*, ULONG, ULONG* written)
{
    if (written == nullptr)
        return E_POINTER;
    *written = 0;
    return E_NOTIMPL;
}

ComPtr<IFileStream> MakeReadStream(std::shared_ptr<OsHandle> file, const char16_t* source)
{
    ComPtr<ComObject<ReadStreamObject>> stream;
    const HRESULT status = MakeObject<ReadStreamObject>(stream);
    if (FAILED(status))
    {
        throw ComException(status, FormatMessageWithStatus(MessageId::SupportObjectFailed, status),
                           At(source));
    }
    stream->Attach(std::move(file));
    return ComPtr<IFileStream>::Adopt(stream.Detach());
}

} // namespace tarnwell
