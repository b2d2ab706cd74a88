#include "local/filestream.h"

#include "frame/boundary.h"

#include <tarnwell/classes.h>

namespace tarnwell
{

namespace
{

constexpr Reporter streamReporter{CLSID_Win32File, IID_IFileStream};
constexpr Reporter dataReporter{CLSID_Win32File, IID_ISequentialStream};

HRESULT Failed(const Reporter& reporter, MessageId id)
{
    const HRESULT status = StatusFromLastError();
    return AtBoundary(reporter, [&] { return PublishFailure(reporter, id, status); });
}

} // namespace

// A failure has nobody to return to; its text is published all the same.
CFileStream::~CFileStream()
{
    CFileStream::Close();
}

HRESULT CFileStream::Close()
{
    return handle_.Close() ? S_OK : Failed(streamReporter, MessageId::StreamCloseFailed);
}

HRESULT CFileStream::ReadData(void* buffer, ULONG size, ULONG* read)
{
    return ReadFile(handle_.Get(), buffer, size, read, nullptr)
               ? S_OK
               : Failed(dataReporter, MessageId::StreamReadFailed);
}

HRESULT CFileStream::Write(const void* buffer, ULONG size, ULONG* written)
{
    return WriteFile(handle_.Get(), buffer, size, written, nullptr)
               ? S_OK
               : Failed(dataReporter, MessageId::StreamWriteFailed);
}

HRESULT CFileStream::ReadForArchive(void* buffer, std::uint32_t size, std::uint32_t* processed)
{
    if (processed == nullptr)
        return RefuseNull(dataReporter, NullPointer::Published);
    *processed = 0;
    ULONG read = 0;
    const HRESULT status = ReadData(buffer, size, &read);
    if (SUCCEEDED(status))
        *processed = read;
    return status;
}

HRESULT CFileStream::Seek(std::int64_t offset, std::uint32_t origin, std::uint64_t* newPosition)
{
    if (newPosition != nullptr)
        *newPosition = 0;
    LARGE_INTEGER distance{};
    distance.QuadPart = offset;
    LARGE_INTEGER position{};
    if (!SetFilePointerEx(handle_.Get(), distance, &position, origin))
        return EnsureFailed(StatusFromLastError());
    if (newPosition != nullptr)
        *newPosition = static_cast<std::uint64_t>(position.QuadPart);
    return S_OK;
}

} // namespace tarnwell
