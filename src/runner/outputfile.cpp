#include "runner/outputfile.h"

#include "frame/exception.h"
#include "frame/messages.h"
#include "frame/status.h"
#include "platform/newfile.h"

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

void RunIntoFile(const ClientRow& row, ClientCall call, const OsHandle& file,
                 const OutcomeCheck& check)
{
    call.outputFile = file.Get();
    check(RunClient(row, call));
    if (!Rewind(file))
        ThrowClientFailure(row, row.communication, GetLastError());
}

} // namespace tarnwell
