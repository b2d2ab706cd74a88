#include "platform/newfile.h"

#include "platform/posix/errors/errnotable.h"
#include "platform/posix/errors/lasterror.h"
#include "platform/posix/files/filehandle.h"
#include "platform/posix/files/nativepath.h"
#include "platform/posix/files/permissions.h"
#include "platform/posix/files/tempfolder.h"

#include <cerrno>
#include <cstdio>
#include <new>
#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tarnwell
{

bool MayTryAnotherName(DWORD error)
{
    return error == ERROR_FILE_EXISTS;
}

namespace posix
{
namespace
{

constexpr mode_t ownersOnly = S_IRUSR | S_IWUSR;

// The permission bits of the regular file at `path`; nothing if there is none. A failure to see it
// leaves the last error set.
struct Bits
{
    bool isKnown;
    std::optional<mode_t> mode;
};

Bits BitsOf(const std::u16string& path)
{
    const std::optional<std::string> native =
        path.empty() ? std::string(".") : NativePath(path.c_str());
    struct stat found;
    if (!native)
        return {false, std::nullopt};
    if (stat(native->c_str(), &found) != 0)
    {
        if (IsDangling(errno))
            return {true, std::nullopt};
        FailWithErrno();
        return {false, std::nullopt};
    }
    if (!S_ISREG(found.st_mode))
        return {true, std::nullopt};
    return {true, PlainMode(*native, found.st_mode) & permissionBits};
}

// Not every file system keeps such bits; there all files are as open as the other one.
bool GiveBits(int file, mode_t mode)
{
    struct stat made;
    if (fchmod(file, mode) == 0)
        return true;
    const int number = errno;
    const bool isClosed = fstat(file, &made) == 0 && (made.st_mode & permissionBits & ~mode) == 0;
    errno = number;
    return isClosed;
}

BOOL MakeFile(const std::string& path, const std::optional<mode_t>& mode)
{
    constexpr mode_t asTheUmaskSays = 0666;
    // Until it has its bits, nobody else can open it.
    const FileDescriptor file =
        Open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL, mode ? ownersOnly & *mode : asTheUmaskSays);
    if (!file)
        return Fail(LookupError(path, errno));
    if (!mode || GiveBits(file.Get(), *mode))
        return 1;
    FailWithErrno();
    unlink(path.c_str());
    return 0;
}

// For file systems that know no files without a name. The descriptor that made the file is the only
// one there ever is.
FileDescriptor OpenAndUnlink(const std::string& folder)
{
    constexpr int attempts = 100;
    FileDescriptor file;
    for (int attempt = 0; attempt < attempts && !file; ++attempt)
    {
        unsigned number = 0;
        if (getrandom(&number, sizeof number, 0) != sizeof number)
            return {};
        char name[32];
        std::snprintf(name, sizeof name, "/vrl%08x.tmp", number);
        const std::string path = folder + name;
        file = Open(path.c_str(), O_RDWR | O_CREAT | O_EXCL, ownersOnly);
        if (!file && errno != EEXIST)
            return {};
        if (file && unlink(path.c_str()) != 0)
            return {};
    }
    return file;
}

FileDescriptor OpenWithoutName(const std::string& folder)
{
    // O_EXCL: the file can't be given a name later.
    FileDescriptor file = Open(folder.c_str(), O_TMPFILE | O_EXCL | O_RDWR, ownersOnly);
    const bool isUnknown = !file && (errno == EOPNOTSUPP || errno == EISDIR);
    return isUnknown ? OpenAndUnlink(folder) : std::move(file);
}

} // namespace
} // namespace posix
} // namespace tarnwell

using namespace tarnwell::posix;

extern "C" BOOL MakeFileBeside(const std::u16string& path, const std::u16string& beside)
{
    const std::optional<std::string> native = NativePath(path.c_str());
    if (!native)
        return 0;
    const Bits bits = BitsOf(beside);
    return bits.isKnown ? MakeFile(*native, bits.mode) : 0;
}

extern "C" HANDLE CreateOutputFile(std::u16string&)
{
    try
    {
        FileDescriptor file = OpenWithoutName(TemporaryFolder());
        if (file)
            return HandleOf(file.Detach(), false);
        Fail(errno == ENOENT || errno == ENOTDIR ? ERROR_DIRECTORY : ErrorFromErrno(errno));
    }
    catch (const std::bad_alloc&)
    {
        Fail(ERROR_NOT_ENOUGH_MEMORY);
    }
    return INVALID_HANDLE_VALUE;
}
