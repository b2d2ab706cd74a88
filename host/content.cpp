#include "content.h"

#include "words.h"

#include <tarnwell/constants.h>

#include <utility>

namespace tarnwell::host
{

namespace
{

inline constexpr std::size_t blockSize = 0x10000;

ComPtr<IFileStream> OpenStream(const ComPtr<IFile>& file, std::uint32_t access,
                               std::uint32_t disposition)
{
    ComPtr<IFileStream> stream;
    Call([&] { return file->Open(access, disposition, stream.Out()); });
    return stream;
}

} // namespace

Reader::Reader(const ComPtr<IFile>& file) : Reader(OpenStream(file, AccessRead, OpenExisting)) {}

Reader::Reader(const ComPtr<IFileStream>& stream)
    : stream_(Need<ISequentialStream>(stream)), block_(blockSize)
{
}

Reader::Reader(std::string_view bytes) : block_(bytes.begin(), bytes.end()), left_(block_.size()) {}

std::span<const char> Reader::Next()
{
    if (!stream_)
        return {block_.data(), std::exchange(left_, 0)};
    std::size_t filled = 0;
    while (filled < block_.size())
    {
        const std::size_t read = Read(filled);
        if (read == 0)
            break;
        filled += read;
    }
    return {block_.data(), filled};
}

std::size_t Reader::Read(std::size_t filled)
{
    ULONG read = 0;
    const ULONG wanted = static_cast<ULONG>(block_.size() - filled);
    Call([&] { return stream_->Read(block_.data() + filled, wanted, &read); });
    return read;
}

Writer::Writer(const ComPtr<IFile>& file)
    : file_(OpenStream(file, AccessWrite, CreateAlways)), stream_(Need<ISequentialStream>(file_))
{
}

void Writer::Write(std::span<const char> bytes)
{
    while (!bytes.empty())
    {
        ULONG written = 0;
        const ULONG size = static_cast<ULONG>(bytes.size());
        Call([&] { return stream_->Write(bytes.data(), size, &written); });
        if (written == 0)
            throw Failure{E_FAIL, Say(Word::TakesNoMore)};
        bytes = bytes.subspan(written);
    }
}

void Writer::Close()
{
    Call([&] { return file_->Close(); });
}

} // namespace tarnwell::host
