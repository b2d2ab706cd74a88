#include "support/files.h"

#include <stdexcept>
#include <vector>

namespace tarnwell::bench
{

namespace
{

constexpr std::uint32_t readAccess = 0x80000000;
constexpr std::uint32_t openExisting = 3;

} // namespace

std::u16string Widened(const std::string& ascii)
{
    return {ascii.begin(), ascii.end()};
}

std::uint64_t ReadThrough(IFileSystem* system, const std::u16string& address)
{
    ComPtr<IFile> file;
    ComPtr<IFileStream> stream;
    if (FAILED(system->GetFile(address.c_str(), VARIANT_FALSE, file.Out())) ||
        FAILED(file->Open(readAccess, openExisting, stream.Out())))
        throw std::runtime_error("the module can't open the file");
    const auto data = stream.As<::ISequentialStream>();
    static std::vector<char> buffer(pieceSize);
    std::uint64_t total = 0;
    std::uint32_t count = 0;
    do
    {
        if (FAILED(data->Read(buffer.data(), pieceSize, &count)))
            throw std::runtime_error("the module can't read the file");
        total += count;
    } while (count > 0);
    return total;
}

} // namespace tarnwell::bench
