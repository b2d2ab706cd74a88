// Listing a folder. This runs once per entry of folders with hundreds of thousands of them: no
// allocation, and the record is filled in place.
#include "platform/ascii.h"
#include "platform/posix/calendar/filetime.h"
#include "platform/posix/errors/errnotable.h"
#include "platform/posix/errors/lasterror.h"
#include "platform/posix/files/attributes.h"
#include "platform/posix/files/descriptor.h"
#include "platform/posix/files/dirstream.h"
#include "platform/posix/files/nativepath.h"
#include "platform/posix/messages/utf16.h"

#include <tarnwell/text.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <new>
#include <utility>

namespace tarnwell::posix
{
namespace
{

constexpr unsigned wantedFacts =
    STATX_TYPE | STATX_MODE | STATX_SIZE | STATX_ATIME | STATX_MTIME | STATX_BTIME;

// The entries of an open folder. The C library's reader takes a lock for each entry, which is
// dearer than all else that it does.
class Entries
{
public:
    explicit Entries(FileDescriptor folder) : folder_(std::move(folder)) {}

    int Folder() const
    {
        return folder_.Get();
    }

    // Valid until the one after it. Null behind the last, and with errno set when they can't be
    // had.
    const dirent64* Next()
    {
        if (at_ == end_ && !ReadBlock())
            return nullptr;
        const auto* const entry = reinterpret_cast<const dirent64*>(block_.data() + at_);
        at_ += entry->d_reclen;
        return entry;
    }

private:
    bool ReadBlock()
    {
        const ssize_t size =
            Restarted([&] { return getdents64(folder_.Get(), block_.data(), block_.size()); });
        // A folder that was removed meanwhile has no more entries.
        errno = size < 0 && errno != ENOENT ? errno : 0;
        at_ = 0;
        end_ = size > 0 ? static_cast<std::size_t>(size) : 0;
        return size > 0;
    }

    FileDescriptor folder_;
    std::size_t at_ = 0;
    std::size_t end_ = 0;
    alignas(dirent64) std::array<char, std::size_t{32} * 1024> block_; // set as far as it is used
};

// The object behind a find handle.
struct Find
{
    // Null where the entry itself was asked for: then there is only the one.
    std::unique_ptr<Entries> entries;
    // The platform lists "." and ".." before all else, the system anywhere.
    int dotsGiven = 0;
};

// Some network file systems have names that are longer than the record's: not representable.
bool SetName(WIN32_FIND_DATAW& record, std::string_view name)
{
    WCHAR* out = record.cFileName;
    const WCHAR* const last = out + MAX_PATH - 1;
    while (!name.empty())
    {
        // Nearly all of nearly all names.
        const auto room = static_cast<std::size_t>(last - out);
        const std::size_t ascii = WidenAscii(name.substr(0, room), out);
        out += ascii;
        name.remove_prefix(ascii);
        if (name.empty())
            break;
        const detail::DecodedPoint next = detail::DecodePoint(name);
        const auto lone = static_cast<char32_t>(0xDC00 + static_cast<unsigned char>(name[0]));
        if (!PutUtf16(out, last, next.bytes == 0 ? lone : next.point))
            return false;
        name.remove_prefix(next.bytes == 0 ? 1 : next.bytes);
    }
    *out = 0;
    record.cAlternateFileName[0] = 0;
    return true;
}

void SetFacts(WIN32_FIND_DATAW& record, const struct statx& entry, std::string_view leaf,
              bool isLink)
{
    // To the platform a folder has no size, and neither has a link's own text.
    const bool hasSize = !S_ISDIR(entry.stx_mode) && !S_ISLNK(entry.stx_mode);
    const std::uint64_t size = hasSize ? entry.stx_size : 0;
    record.dwFileAttributes = AttributesOf(entry.stx_mode, leaf, isLink);
    record.ftCreationTime = CreationTimeOf(entry);
    record.ftLastAccessTime = FileTimeOf(entry.stx_atime);
    record.ftLastWriteTime = FileTimeOf(entry.stx_mtime);
    record.nFileSizeHigh = static_cast<DWORD>(size >> 32);
    record.nFileSizeLow = static_cast<DWORD>(size);
    record.dwReserved0 = 0;
    record.dwReserved1 = 0;
}

// An entry of which nothing can be read is listed by what the folder says of it.
void SetUnknownFacts(WIN32_FIND_DATAW& record, std::string_view leaf, unsigned char type)
{
    std::memset(&record, 0, offsetof(WIN32_FIND_DATAW, cFileName));
    const mode_t mode = static_cast<mode_t>(DTTOIF(type) | S_IWUSR);
    record.dwFileAttributes = AttributesOf(mode, leaf, type == DT_LNK);
}

// 0 or an errno. `path` is below `folder`, `leaf` its name; `type` is the entry's.
int ReadFacts(WIN32_FIND_DATAW& record, int folder, const char* path, std::string_view leaf,
              unsigned char type)
{
    struct statx entry;
    if (type != DT_LNK)
    {
        if (statx(folder, path, AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT, wantedFacts, &entry) != 0)
            return errno;
        if (!S_ISLNK(entry.stx_mode))
        {
            SetFacts(record, entry, leaf, false);
            return 0;
        }
    }
    // A link shows its target; itself only where that can't be had.
    if (statx(folder, path, AT_NO_AUTOMOUNT, wantedFacts, &entry) != 0 &&
        statx(folder, path, AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT, wantedFacts, &entry) != 0)
        return errno;
    SetFacts(record, entry, leaf, true);
    return 0;
}

BOOL GiveDots(Find& find, WIN32_FIND_DATAW& record)
{
    const char* const name = find.dotsGiven++ == 0 ? "." : "..";
    SetName(record, name);
    if (ReadFacts(record, find.entries->Folder(), name, name, DT_DIR) != 0)
        SetUnknownFacts(record, name, DT_DIR);
    return 1;
}

BOOL GiveNext(Find& find, WIN32_FIND_DATAW& record)
{
    if (!find.entries)
        return Fail(ERROR_NO_MORE_FILES);
    if (find.dotsGiven < 2)
        return GiveDots(find, record);
    for (;;)
    {
        const dirent64* const entry = find.entries->Next();
        if (entry == nullptr)
            return errno == 0 ? Fail(ERROR_NO_MORE_FILES) : FailWithErrno();
        const std::string_view name = entry->d_name;
        if (IsDots(name))
            continue;
        const int number =
            ReadFacts(record, find.entries->Folder(), entry->d_name, name, entry->d_type);
        // Gone since the folder was read.
        if (number == ENOENT)
            continue;
        if (number != 0)
            SetUnknownFacts(record, name, entry->d_type);
        return SetName(record, name) ? 1 : Fail(ERROR_FILENAME_EXCED_RANGE);
    }
}

// The code for a folder that can't be listed: a file in its place is told from a missing one.
DWORD ListError(const std::string& folder, int number)
{
    if (number == ENOENT)
        return ERROR_PATH_NOT_FOUND;
    struct stat entry;
    const std::string path(WithoutTrailingSeparators(folder));
    if (number == ENOTDIR && stat(path.c_str(), &entry) == 0)
        return ERROR_DIRECTORY;
    return ErrorFromErrno(number);
}

BOOL BeginFolder(Find& find, const std::string& folder, WIN32_FIND_DATAW& record)
{
    FileDescriptor opened = Open(folder.c_str(), O_RDONLY | O_DIRECTORY);
    if (!opened)
        return Fail(ListError(folder, errno));
    find.entries.reset(new (std::nothrow) Entries(std::move(opened)));
    if (!find.entries)
        return Fail(ERROR_NOT_ENOUGH_MEMORY);
    return GiveNext(find, record);
}

BOOL FindEntry(const std::string& path, WIN32_FIND_DATAW& record)
{
    const std::string_view leaf = LeafOf(path);
    // A root is no folder's entry.
    if (leaf.empty())
        return Fail(ERROR_FILE_NOT_FOUND);
    if (const int number = ReadFacts(record, AT_FDCWD, path.c_str(), leaf, DT_UNKNOWN); number != 0)
        return Fail(LookupError(path, number));
    return SetName(record, leaf) ? 1 : Fail(ERROR_FILENAME_EXCED_RANGE);
}

BOOL Begin(Find& find, const std::string& pattern, WIN32_FIND_DATAW& record)
{
    const bool isPattern = pattern == "*" || pattern.ends_with("/*");
    return isPattern ? BeginFolder(find, FolderOf(pattern), record) : FindEntry(pattern, record);
}

} // namespace
} // namespace tarnwell::posix

using namespace tarnwell::posix;

extern "C" HANDLE FindFirstFileW(LPCWSTR pattern, WIN32_FIND_DATAW* record)
{
    const std::optional<std::string> native = NativePath(pattern);
    if (!native)
        return INVALID_HANDLE_VALUE;
    std::unique_ptr<Find> find(new (std::nothrow) Find);
    if (!find)
    {
        Fail(ERROR_NOT_ENOUGH_MEMORY);
        return INVALID_HANDLE_VALUE;
    }
    return Begin(*find, *native, *record) != 0 ? find.release() : INVALID_HANDLE_VALUE;
}

extern "C" BOOL FindNextFileW(HANDLE find, WIN32_FIND_DATAW* record)
{
    if (find == nullptr || find == INVALID_HANDLE_VALUE)
        return Fail(ERROR_INVALID_HANDLE);
    return GiveNext(*static_cast<Find*>(find), *record);
}

extern "C" BOOL FindClose(HANDLE find)
{
    if (find == nullptr || find == INVALID_HANDLE_VALUE)
        return Fail(ERROR_INVALID_HANDLE);
    delete static_cast<Find*>(find);
    return 1;
}
