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

// With its terminator. An array and no string, since between the making of the file and its opening
// nothing may fail, memory included.
using FileName = std::array<WCHAR, MAX_PATH>;

// The folder for temporary files; the current one if the system tells none, or a too long one.
std::u16string TemporaryFolder()
{
    std::array<WCHAR, MAX_PATH> folder{};
    const DWORD length = GetTempPathW(static_cast<DWORD>(folder.size()), folder.data());
    const bool fits = length > 0 && length < folder.size();
    return fits ? std::u16string(Units(folder.data())) : u".";
}

// Makes the file, empty.
FileName NewFile(const std::u16string& address, const char16_t* source)
{
    FileName name{};
    const std::u16string folder = TemporaryFolder();
    if (GetTempFileNameW(Wide(folder), Wide(u"vrl"), 0, name.data()) != 0)
        return name;
    const HRESULT status = EnsureFailed(StatusFromLastError());
    throw ComException(status,
                       FormatMessageWithStatus(MessageId::TemporaryFileFailed, status, {address}),
                       At(source));
}

} // namespace

std::shared_ptr<OsHandle> MakeOutputFile(const std::u16string& address, const char16_t* source)
{
    const FileName name = NewFile(address, source);
    SECURITY_ATTRIBUTES inheritable{sizeof(SECURITY_ATTRIBUTES), nullptr, 1};
    OsHandle file(CreateFileW(name.data(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ,
                              &inheritable, OPEN_EXISTING,
                              FILE_ATTRIBUTE_NORMAL | FILE_FLAG_DELETE_ON_CLOSE, nullptr));
    if (file)
        return std::make_shared<OsHandle>(std::move(file));
    const HRESULT status = EnsureFailed(StatusFromLastError());
    DeleteFileW(name.data());
    throw ComException(status,
                       FormatMessageWithStatus(MessageId::OpenFailed, status,
                                               {std::u16string(Units(name.data()))}),
                       At(source));
}

bool Rewind(const OsHandle& file)
{
    return SetFilePointer(file.Get(), 0, nullptr, FILE_BEGIN) == 0;
}

void RunIntoFile(const ClientRow& row, ClientCall call, const OsHandle& file,
                 const OutcomeCheck& check)
{
    call.outputFile = file.Get();
    check(RunClient(row, call));
    if (!Rewind(file))
        ThrowClientFailure(row, row.communication, GetLastError());
}

} // namespace tarnwell
