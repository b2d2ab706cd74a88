#include "ftp/ftpcopy.h"

#include "frame/amounts.h"
#include "frame/exception.h"
#include "frame/publish.h"
#include "ftp/ftpoperations.h"
#include "ftp/ftpuri.h"

#include <optional>
#include <vector>

namespace tarnwell
{

namespace
{

ComPtr<::ISequentialStream> BytesOf(IFileStream* stream)
{
    auto bytes = ComPtr<IFileStream>::Share(stream).As<::ISequentialStream>();
    if (!bytes)
        throw ComException(E_NOINTERFACE, FormatMessageById(MessageId::StreamInterfaceMissing),
                           At(ftpSource));
    return bytes;
}

// With the text that `object` left, if it left one.
void Check(HRESULT status, MessageId id, ::IUnknown* object, const GUID& interfaceId,
           std::uint32_t line = __builtin_LINE())
{
    ThrowOnFailure(status, id, object, interfaceId, ftpSource, line);
}

// Whoever can't be asked wants to go on.
bool IsCancelled(ICopyProgress* progress)
{
    VARIANT_BOOL keepGoing = VARIANT_TRUE;
    return progress != nullptr && SUCCEEDED(progress->QueryContinue(&keepGoing)) &&
           keepGoing == VARIANT_FALSE;
}

// What a listing says; nothing where it says nothing.
std::optional<std::uint64_t> SizeOf(const HostUIUser& host, const Uri& uri)
{
    try
    {
        return FtpQueryItem(host, uri)->size;
    }
    catch (const ComException&)
    {
        return std::nullopt;
    }
}

} // namespace

void CopyStream(IFileStream* source, IFileStream* destination, ICopyProgress* progress,
                std::optional<std::uint64_t> total)
{
    const Amounts amounts(progress);
    const auto from = BytesOf(source);
    const auto to = BytesOf(destination);
    std::vector<char> buffer(65536);
    std::uint64_t done = 0;
    amounts.Report(done, total);
    for (;;)
    {
        ULONG count = 0;
        Check(from->Read(buffer.data(), static_cast<ULONG>(buffer.size()), &count),
              MessageId::StreamReadFailed, from.Get(), IidOf<::ISequentialStream>());
        if (count == 0)
            break;
        // How much was taken isn't looked at: a connection takes all, or fails.
        Check(to->Write(buffer.data(), count, nullptr), MessageId::StreamWriteFailed, to.Get(),
              IidOf<::ISequentialStream>());
        done += count;
        amounts.Report(done, total);
        if (IsCancelled(progress))
            throw ComException(E_ABORT, FormatMessageById(MessageId::OperationCancelled),
                               At(ftpSource));
    }
    Check(destination->Close(), MessageId::StreamWriteFailed, destination, IID_IFileStream);
    source->Close();
}

void FtpCopyUri(const HostUIUser& host, const Uri& source, const Uri& destination,
                ICopyProgress* progress)
{
    const auto from = FtpOpenUri(host, source, GENERIC_READ);
    // By a session of its own, which the target may use next.
    const auto total = Amounts(progress).AreWanted() ? SizeOf(host, source) : std::nullopt;
    const auto to = FtpOpenUri(host, destination, GENERIC_WRITE);
    CopyStream(from.Get(), to.Get(), progress, total);
}

} // namespace tarnwell
