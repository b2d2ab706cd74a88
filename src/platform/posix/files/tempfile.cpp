// GetTempPathW and GetTempFileNameW.
#include "platform/posix/errors/lasterror.h"
#include "platform/posix/files/filehandle.h"
#include "platform/posix/files/nativepath.h"

#include <tarnwell/text.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <new>
#include <sys/random.h>

namespace tarnwell::posix
{
namespace
{

constexpr std::u16string_view extension = u".tmp";
constexpr int attempts = 100;

std::u16string WithSeparator(std::u16string folder)
{
    if (folder.empty() || folder.back() != u'/')
        folder += u'/';
    return folder;
}

std::u16string TempFolder()
{
    const char* const named = std::getenv("TMPDIR");
    const bool isUsable = named != nullptr && *named == '/';
    return WithSeparator(DecodeName(isUsable ? named : "/tmp"));
}

// Copies the text with its terminator, if there is room for it.
bool Put(const std::u16string& text, LPWSTR buffer, std::size_t size)
{
    if (text.size() >= size)
        return false;
    text.copy(buffer, text.size());
    buffer[text.size()] = 0;
    return true;
}

// Eight digits.
std::u16string Hexadecimal(std::uint32_t number)
{
    std::u16string digits;
    for (int shift = 28; shift >= 0; shift -= 4)
        digits += u"0123456789abcdef"[(number >> shift) & 0xF];
    return digits;
}

// Never 0, as that would tell the caller of a failure.
UINT RandomNumber()
{
    UINT number = 0;
    while (number == 0)
    {
        if (getrandom(&number, sizeof number, 0) != sizeof number)
            return 0;
    }
    return number;
}

// Whether there is now a new file of that name; an errno tells why not.
bool Create(const std::string& path)
{
    FileDescriptor file;
    do
        file = FileDescriptor(open(path.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, 0600));
    while (!file && errno == EINTR);
    return static_cast<bool>(file);
}

UINT MakeFile(const std::u16string& start, LPWSTR path)
{
    for (int attempt = 0; attempt < attempts; ++attempt)
    {
        const UINT number = RandomNumber();
        if (number == 0)
            return static_cast<UINT>(FailWithErrno());
        const std::u16string whole = start + Hexadecimal(number) + std::u16string(extension);
        const std::optional<std::string> native = NativePath(whole.c_str());
        if (!native)
            return 0;
        // Before there is a file that nobody would know of.
        if (!Put(whole, path, MAX_PATH))
            return static_cast<UINT>(Fail(ERROR_BUFFER_OVERFLOW));
        if (Create(*native))
            return number;
        if (errno == ENOENT || errno == ENOTDIR)
            return static_cast<UINT>(Fail(ERROR_DIRECTORY));
        if (errno != EEXIST)
            return static_cast<UINT>(FailWithErrno());
    }
    return static_cast<UINT>(Fail(ERROR_FILE_EXISTS));
}

} // namespace
} // namespace tarnwell::posix

using namespace tarnwell::posix;

extern "C" DWORD GetTempPathW(DWORD size, LPWSTR buffer)
{
    try
    {
        const std::u16string folder = TempFolder();
        if (Put(folder, buffer, size))
            return static_cast<DWORD>(folder.size());
        return static_cast<DWORD>(Fail(ERROR_INSUFFICIENT_BUFFER));
    }
    catch (const std::bad_alloc&)
    {
        return static_cast<DWORD>(Fail(ERROR_NOT_ENOUGH_MEMORY));
    }
}

extern "C" UINT GetTempFileNameW(LPCWSTR folder, LPCWSTR prefix, UINT unique, LPWSTR path)
{
    if (folder == nullptr || prefix == nullptr || path == nullptr)
        return static_cast<UINT>(Fail(ERROR_INVALID_PARAMETER));
    if (unique != 0)
        return static_cast<UINT>(Fail(ERROR_NOT_SUPPORTED));
    if (*folder == 0)
        return static_cast<UINT>(Fail(ERROR_DIRECTORY));
    try
    {
        return MakeFile(WithSeparator(folder) + prefix, path);
    }
    catch (const std::bad_alloc&)
    {
        return static_cast<UINT>(Fail(ERROR_NOT_ENOUGH_MEMORY));
    }
}
