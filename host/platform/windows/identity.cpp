#include "identity.h"

#include "errors.h"
#include "platform/windows/units.h"
#include "words.h"

#include <windows.h>

namespace tarnwell::host
{

namespace
{

// Devices and pipes have none.
std::optional<FileIdentity> IdentityIn(HANDLE file)
{
    BY_HANDLE_FILE_INFORMATION facts{};
    if (GetFileType(file) != FILE_TYPE_DISK || !GetFileInformationByHandle(file, &facts))
        return std::nullopt;
    return FileIdentity{facts.dwVolumeSerialNumber,
                        std::uint64_t{facts.nFileIndexHigh} << 32 | facts.nFileIndexLow};
}

bool MeansNone(DWORD error)
{
    return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND ||
           error == ERROR_INVALID_NAME || error == ERROR_BAD_PATHNAME;
}

} // namespace

std::optional<FileIdentity> IdentityOf(const std::u16string& path)
{
    // No access at all is asked for, so that nobody's sharing is in the way.
    const HANDLE file =
        CreateFileW(ToWide(path).c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                    nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (file == INVALID_HANDLE_VALUE)
    {
        const DWORD error = GetLastError();
        if (MeansNone(error))
            return std::nullopt;
        throw Failure{HRESULT_FROM_WIN32(error), Say(Word::FileUnknown, {path})};
    }
    const std::optional<FileIdentity> identity = IdentityIn(file);
    CloseHandle(file);
    return identity;
}

std::optional<FileIdentity> IdentityOfInput()
{
    return IdentityIn(GetStdHandle(STD_INPUT_HANDLE));
}

} // namespace tarnwell::host
