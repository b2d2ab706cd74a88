#include "platform/newfile.h"

#include "platform/wide.h"

#include <array>

namespace tarnwell
{

// The platform doesn't always say that a name is taken, as with that of a folder.
bool MayTryAnotherName(DWORD error)
{
    return error != ERROR_ACCESS_DENIED;
}

namespace
{

// With its terminator. No text of its own size: nothing may fail between a file's making and its
// opening.
using FileName = std::array<WCHAR, MAX_PATH>;

FileName TemporaryFolder()
{
    FileName folder{};
    const DWORD length = GetTempPathW(static_cast<DWORD>(folder.size()), folder.data());
    const bool fits = length > 0 && length < folder.size();
    return fits ? folder : FileName{L'.'};
}

} // namespace
} // namespace tarnwell

using namespace tarnwell;

extern "C" BOOL MakeFileBeside(const std::u16string& path, const std::u16string&)
{
    const HANDLE file = CreateFileW(Wide(path), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    return file != INVALID_HANDLE_VALUE && CloseHandle(file);
}

extern "C" HANDLE CreateOutputFile(std::u16string& unopened)
{
    FileName name{};
    if (GetTempFileNameW(TemporaryFolder().data(), L"vrl", 0, name.data()) == 0)
        return INVALID_HANDLE_VALUE;
    SECURITY_ATTRIBUTES inheritable{sizeof(SECURITY_ATTRIBUTES), nullptr, 1};
    const HANDLE file =
        CreateFileW(name.data(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ, &inheritable,
                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    if (file != INVALID_HANDLE_VALUE)
        return file;
    const DWORD error = GetLastError();
    DeleteFileW(name.data());
    unopened = Units(name.data());
    SetLastError(error);
    return file;
}
