#include "platform/posix/internet/ftpfind.h"

#include "platform/posix/calendar/filetime.h"
#include "platform/posix/calendar/localtime.h"
#include "platform/posix/internet/internetfailure.h"

#include <tarnwell/text.h>

#include <algorithm>

namespace tarnwell::posix
{
namespace
{

// ---- Records ----

FILETIME WriteTimeOf(const ListedEntry& entry)
{
    if (!entry.time)
        return {};
    return FileTimeOf(*entry.time + (entry.isUtc ? LocalAdvance() : 0), entry.fraction);
}

// False if the name is longer than a record's can be.
bool Fill(WIN32_FIND_DATAW& record, const ListedEntry& entry)
{
    const std::u16string name = DecodeName(entry.name);
    if (name.size() >= MAX_PATH)
        return false;
    record = {};
    record.dwFileAttributes |= entry.isFolder ? FILE_ATTRIBUTE_DIRECTORY : 0;
    record.dwFileAttributes |= entry.isLink ? FILE_ATTRIBUTE_REPARSE_POINT : 0;
    record.dwFileAttributes |= entry.isReadOnly ? FILE_ATTRIBUTE_READONLY : 0;
    if (record.dwFileAttributes == 0)
        record.dwFileAttributes = FILE_ATTRIBUTE_NORMAL;
    record.ftLastWriteTime = WriteTimeOf(entry);
    const std::uint64_t size = entry.isFolder ? 0 : entry.size;
    record.nFileSizeHigh = static_cast<DWORD>(size >> 32);
    record.nFileSizeLow = static_cast<DWORD>(size);
    name.copy(record.cFileName, name.size());
    return true;
}

// ---- Entries ----

std::string Without(std::string path, std::string_view endings)
{
    while (path.size() > 1 && endings.find(path.back()) != std::string_view::npos)
        path.pop_back();
    return path;
}

std::vector<ListedEntry> EntriesOf(FtpConnection& ftp, const std::string& folder)
{
    std::vector<ListedEntry> entries;
    bool isMissing = false;
    Check(ftp.List(folder, entries, isMissing), ftp);
    return entries;
}

// The one entry itself, out of its folder's listing.
std::vector<ListedEntry> EntryItself(FtpConnection& ftp, const std::string& path)
{
    const std::size_t slash = path.rfind('/');
    const std::string leaf = path.substr(slash == std::string::npos ? 0 : slash + 1);
    // The login folder and the root are entries of nothing, and there.
    if (leaf.empty())
        return {{.name = "/", .isFolder = true}};
    const std::string folder =
        slash == std::string::npos ? "" : Without(path.substr(0, slash + 1), "/");
    std::vector<ListedEntry> entries;
    bool isMissing = false;
    const DWORD code = ftp.List(folder, entries, isMissing);
    Check(!isMissing, ERROR_FILE_NOT_FOUND);
    Check(code, ftp);
    std::erase_if(entries, [&](const ListedEntry& entry) { return entry.name != leaf; });
    Check(!entries.empty(), ERROR_FILE_NOT_FOUND);
    return entries;
}

std::vector<ListedEntry> EntriesFor(FtpConnection& ftp, const std::string& pattern)
{
    if (pattern == "*")
        return EntriesOf(ftp, "");
    if (pattern.ends_with("/*"))
        return EntriesOf(ftp, Without(pattern.substr(0, pattern.size() - 1), "/"));
    return EntryItself(ftp, Without(pattern, "/"));
}

} // namespace

FtpFind::FtpFind(FtpConnection& ftp, const std::string& pattern)
    : entries_(EntriesFor(ftp, pattern))
{
}

bool FtpFind::Next(WIN32_FIND_DATAW& record)
{
    while (next_ < entries_.size())
    {
        const ListedEntry& entry = entries_[next_++];
        if (entry.name != "." && entry.name != ".." && Fill(record, entry))
            return true;
    }
    return false;
}

} // namespace tarnwell::posix
