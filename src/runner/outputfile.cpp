#include "runner/outputfile.h"

#include "frame/exception.h"
#include "frame/messages.h"
#include "frame/status.h"
#include "platform/wide.h"

#include <array>

namespace tarnwell
{

namespace
{

// The folder for temporary files; the current one if there is none that fits.
std::u16string TemporaryFolder()
{
    std::array<WCHAR, MAX_PATH> folder{};
    const DWORD length = GetTempPathW(static_cast<DWORD>(folder.size()), folder.data());
    const bool fits = length > 0 && length < folder.size();
    return fits ? std::u16string(Units(folder.data())) : u".";
}

// Makes the file, empty.
std::u16string NewFileName(const std::u16string& address, const char16_t* source)
{
    std::array<WCHAR, MAX_PATH> name{};
    const std::u16string folder = TemporaryFolder();
    if (GetTempFileNameW(Wide(folder), Wide(u"vrl"), 0, name.data()) != 0)
        return std::u16string(Units(name.data()));
    const HRESULT status = EnsureFailed(StatusFromLastError());
    throw ComException(status,
                       FormatMessageWithStatus(MessageId::TemporaryFileFailed, status, {address}),
                       At(source));
}

} // namespace

std::shared_ptr<OsHandle> MakeOutputFile(const std::u16string& address, const char16_t* source)
{
    const std::u16string name = NewFileName(address, source);
    SECURITY_ATTRIBUTES inheritable{sizeof(SECURITY_ATTRIBUTES), nullptr, 1};
    auto file = std::make_shared<OsHandle>(
        CreateFileW(Wide(name), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ, &inheritable,
                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL | FILE_FLAG_DELETE_ON_CLOSE, nullptr));
    if (*file)
        return file;
    const HRESULT status = EnsureFailed(StatusFromLastError());
    DeleteFileW(Wide(name));
    throw ComException(status, FormatMessageWithStatus(MessageId::OpenFailed, status, {name}),
                       At(source));
}

void Rewind(const OsHandle& file)
{
    SetFilePointer(file.Get(), 0, nullptr, FILE_BEGIN);
}

} // namespace tarnwell
