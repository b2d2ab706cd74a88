#include "local/copystreams.h"

#include "frame/amounts.h"
#include "frame/status.h"
#include "frame/text.h"

#include <tarnwell/pointers.h>

#include <cstddef>
#include <memory>
#include <new>
#include <optional>

namespace tarnwell
{

namespace
{

constexpr ULONG pieceSize = 0x10000;

HRESULT FindFile(IFileSystem& system, const std::u16string& path, VARIANT_BOOL mustExist,
                 ComPtr<IFile>& file)
{
    return system.GetFile(Wide(path), mustExist, file.Out());
}

HRESULT OpenData(IFile& file, DWORD access, DWORD disposition, ComPtr<::ISequentialStream>& data)
{
    ComPtr<IFileStream> stream;
    const HRESULT status = file.Open(access, disposition, stream.Out());
    if (FAILED(status))
        return status;
    return stream->QueryInterface(IidOf<::ISequentialStream>(), data.OutVoid());
}

HRESULT WriteWhole(::ISequentialStream& target, const std::byte* bytes, ULONG size)
{
    ULONG written = 0;
    const HRESULT status = target.Write(bytes, size, &written);
    if (written != size && SUCCEEDED(status))
        return StatusFromError(ERROR_DISK_FULL);
    return status;
}

// Preset to no, unlike copies by the platform (copy.cpp), on purpose.
bool GoesOn(ICopyProgress* progress)
{
    if (progress == nullptr)
        return true;
    VARIANT_BOOL keepGoing = VARIANT_FALSE;
    progress->QueryContinue(&keepGoing);
    return IsTrue(keepGoing);
}

// Nothing if the file doesn't tell.
std::optional<std::uint64_t> SizeOf(IFile& file)
{
    std::uint32_t low = 0;
    std::uint32_t high = 0;
    if (FAILED(file.GetSizeLow(&low)) || FAILED(file.GetSizeHigh(&high)))
        return std::nullopt;
    return std::uint64_t{high} << 32 | low;
}

// What the host sees of the copy.
class Telling
{
public:
    // Nobody's size is asked for in vain.
    Telling(IFile& source, ICopyProgress* progress)
        : progress_(progress), amounts_(progress),
          total_(amounts_.AreWanted() ? SizeOf(source) : std::nullopt)
    {
        amounts_.Report(0, total_);
    }

    // So many bytes more have arrived. Whether the copy goes on.
    bool Add(ULONG bytes)
    {
        done_ += bytes;
        amounts_.Report(done_, total_);
        return GoesOn(progress_);
    }

private:
    ICopyProgress* progress_;
    Amounts amounts_;
    std::optional<std::uint64_t> total_;
    std::uint64_t done_ = 0;
};

// A short piece is the last one: nothing more is read behind it.
HRESULT CopyData(::ISequentialStream& source, ::ISequentialStream& target, Telling telling)
{
    const std::unique_ptr<std::byte[]> buffer(new (std::nothrow) std::byte[pieceSize]);
    if (!buffer)
        return E_OUTOFMEMORY;
    HRESULT status = S_OK;
    ULONG read = pieceSize;
    while (read == pieceSize && status == S_OK)
    {
        status = source.Read(buffer.get(), pieceSize, &read);
        if (read == 0 || FAILED(status))
            break;
        status = WriteWhole(target, buffer.get(), read);
        if (!telling.Add(read))
            break;
    }
    return status;
}

} // namespace

HRESULT CopyThroughStreams(IFileSystem& system, const std::u16string& source,
                           const std::u16string& destination, ICopyProgress* progress)
{
    ComPtr<IFile> from;
    ComPtr<IFile> to;
    ComPtr<::ISequentialStream> input;
    ComPtr<::ISequentialStream> output;
    HRESULT status = FindFile(system, source, VARIANT_TRUE, from);
    if (SUCCEEDED(status))
        status = FindFile(system, destination, VARIANT_FALSE, to);
    if (SUCCEEDED(status))
        status = OpenData(*from.Get(), GENERIC_READ, OPEN_EXISTING, input);
    if (SUCCEEDED(status))
        status = OpenData(*to.Get(), GENERIC_WRITE, CREATE_ALWAYS, output);
    if (SUCCEEDED(status))
        status = CopyData(*input.Get(), *output.Get(), Telling(*from.Get(), progress));
    return status;
}

} // namespace tarnwell
