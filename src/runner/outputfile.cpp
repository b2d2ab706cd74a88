#include "runner/outputfile.h"

#include "frame/exception.h"
#include "frame/messages.h"
#include "frame/status.h"
#include "platform/newfile.h"

#include <algorithm>

namespace tarnwell
{

std::shared_ptr<OsHandle> MakeOutputFile(const std::u16string& address, const char16_t* source)
{
    std::u16string unopened;
    OsHandle file(CreateOutputFile(unopened));
    if (file)
        return std::make_shared<OsHandle>(std::move(file));
    const HRESULT status = EnsureFailed(StatusFromLastError());
    const std::u16string text =
        unopened.empty()
            ? FormatMessageWithStatus(MessageId::TemporaryFileFailed, status, {address})
            : FormatMessageWithStatus(MessageId::OpenFailed, status, {unopened});
    throw ComException(status, text, At(source));
}

bool Rewind(const OsHandle& file)
{
    return SetFilePointer(file.Get(), 0, nullptr, FILE_BEGIN) == 0;
}

std::string ReadOutput(HANDLE file)
{
    // Memory is taken once, and no more than that.
    LARGE_INTEGER start{};
    LARGE_INTEGER size{};
    if (!SetFilePointerEx(file, start, &size, FILE_END) ||
        !SetFilePointerEx(file, start, nullptr, FILE_BEGIN))
        return {};
    constexpr std::size_t most = std::size_t{1} << 30;
    std::string bytes(static_cast<std::size_t>(size.QuadPart), '\0');
    std::size_t filled = 0;
    for (DWORD count = 1; count > 0 && filled < bytes.size(); filled += count)
    {
        const auto room = static_cast<DWORD>(std::min(bytes.size() - filled, most));
        if (!ReadFile(file, bytes.data() + filled, room, &count, nullptr))
            break;
    }
    bytes.resize(filled);
    return bytes;
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
