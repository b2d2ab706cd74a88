#include "local/file.h"

#include "frame/boundary.h"
#include "frame/handle.h"
#include "frame/text.h"
#include "local/filestream.h"
#include "local/findrecord.h"
#include "platform/icons.h"

namespace tarnwell
{

namespace
{

constexpr Reporter fileReporter{CLSID_Win32File, IID_IFile};
constexpr Reporter iconReporter{CLSID_Win32File, IID_IFileSystemItemIcon};
constexpr Reporter extReporter{CLSID_Win32File, IID_IFileSystemItemExt};

// 3 (others may read and write) for reading, with or without writing; 1 (others may read) for
// writing alone. Nobody may delete the file meanwhile.
constexpr DWORD ShareModeFor(DWORD access)
{
    return (access | GENERIC_WRITE) >> 30;
}

HRESULT OpenFailed(const std::u16string& path)
{
    const HRESULT status = StatusFromLastError();
    return PublishFailure(fileReporter, MessageId::OpenFailed, status, {path});
}

HRESULT MakeStream(OsHandle handle, IFileStream** out)
{
    ComPtr<ComObject<CFileStream>> stream;
    HRESULT status = MakeObject<CFileStream>(stream);
    if (SUCCEEDED(status))
    {
        stream->Attach(std::move(handle));
        status = stream->QueryInterface(IID_IFileStream, reinterpret_cast<void**>(out));
    }
    if (FAILED(status))
        return PublishFailure(fileReporter, MessageId::SupportObjectFailed, status);
    return S_OK;
}

HRESULT OpenStream(const std::u16string& path, DWORD access, DWORD disposition, IFileStream** out)
{
    if ((access & (GENERIC_READ | GENERIC_WRITE)) == 0)
        return PublishMessage(fileReporter, MessageId::InvalidOpenMode, E_INVALIDARG, {path});
    OsHandle handle(CreateFileW(Wide(path), access, ShareModeFor(access), nullptr, disposition,
                                FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!handle)
        return OpenFailed(path);
    // Its outcome doesn't matter, on purpose: as a rule the platform has emptied the file.
    if (disposition == CREATE_ALWAYS)
        SetEndOfFile(handle.Get());
    return MakeStream(std::move(handle), out);
}

HRESULT SetWriteTime(const std::u16string& path, std::uint64_t fileTime)
{
    const auto failed = [&] {
        const HRESULT status = StatusFromLastError();
        return PublishFailure(extReporter, MessageId::OpenFailed, status, {path});
    };
    const OsHandle handle(CreateFileW(Wide(path), FILE_WRITE_ATTRIBUTES,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                      nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!handle)
        return failed();
    const FILETIME time = FileTimeOf(fileTime);
    return SetFileTime(handle.Get(), nullptr, nullptr, &time) ? S_OK : failed();
}

HRESULT GiveIcon(const std::u16string& path, std::int32_t* iconIndex, void** imageList)
{
    if (FindIcon(path, *iconIndex, *imageList))
        return S_OK;
    return PublishFailure(iconReporter, MessageId::IconFailed,
                          StatusFromError(ERROR_FILE_NOT_FOUND), {path});
}

// What has the attribute of a folder has no size, whatever was found.
HRESULT GiveSize(const LocalFacts& facts, std::uint32_t part, std::uint32_t* out)
{
    return AtBoundary(fileReporter, NullPointer::Published, out, [&] {
        const bool folder = (facts.attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
        *out = folder ? 0 : part;
        return S_OK;
    });
}

} // namespace

HRESULT CWin32FileObject::GetIcon(std::uint32_t, std::int32_t* iconIndex, void** imageList)
{
    if (iconIndex != nullptr)
        *iconIndex = 0;
    if (imageList == nullptr)
        return RefuseNull(iconReporter, NullPointer::Published);
    *imageList = nullptr;
    return AtBoundary(iconReporter, NullPointer::Published, iconIndex,
                      [&] { return GiveIcon(facts_.Path(), iconIndex, imageList); });
}

HRESULT CWin32FileObject::SetModifiedTime(std::uint64_t fileTime)
{
    return AtBoundary(extReporter, [&] { return SetWriteTime(facts_.Path(), fileTime); });
}

HRESULT CWin32FileObject::GetSizeLow(std::uint32_t* size)
{
    return GiveSize(facts_, facts_.sizeLow, size);
}

HRESULT CWin32FileObject::GetSizeHigh(std::uint32_t* size)
{
    return GiveSize(facts_, facts_.sizeHigh, size);
}

HRESULT CWin32FileObject::Open(std::uint32_t access, std::uint32_t disposition,
                               IFileStream** stream)
{
    return AtBoundary(fileReporter, NullPointer::Published, stream,
                      [&] { return OpenStream(facts_.Path(), access, disposition, stream); });
}

} // namespace tarnwell
