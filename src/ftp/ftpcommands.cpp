#include "ftp/ftpcommands.h"

#include "addressed/interfaceimpl.h"
#include "frame/filetimes.h"
#include "frame/messages.h"
#include "frame/text.h"
#include "ftp/ftpline.h"
#include "ftp/ftpreply.h"
#include "ftp/ftptree.h"
#include "platform/wide.h"

#include <algorithm>

namespace tarnwell
{

namespace
{

// A server may call an item anything. Only a name that leads into the folder, and to another item
// than the folder, makes one.
bool IsItemName(std::u16string_view name)
{
    return !name.empty() && name != u"." && name != u".." &&
           name.find(u'/') == std::u16string_view::npos;
}

// Listings tell local times. One of 0 is unknown, and so is what can't be converted.
std::uint64_t TimeOfEntry(const WIN32_FIND_DATAW& record)
{
    FILETIME time{};
    if (TimeOf(record.ftLastWriteTime) == 0 ||
        !LocalFileTimeToFileTime(&record.ftLastWriteTime, &time))
        return 0;
    return TimeOf(time);
}

std::shared_ptr<FSItem> ItemOf(const WIN32_FIND_DATAW& record, const std::u16string& address)
{
    auto item = std::make_shared<FSItem>();
    item->text = address;
    item->modifiedTime = TimeOfEntry(record);
    item->isDirectory = (record.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    if (item->isDirectory)
        return item;
    item->size = (std::uint64_t{record.nFileSizeHigh} << 32) | record.nFileSizeLow;
    item->isReadOnly = (record.dwFileAttributes & FILE_ATTRIBUTE_READONLY) != 0;
    return item;
}

std::u16string UriFact(const Uri& uri)
{
    return u"uri: \"" + uri.GetText() + u"\"";
}

[[noreturn]] void ThrowNotListed(const Uri& folder, const std::u16string& pattern,
                                 const std::u16string& reason)
{
    ThrowNotFound(folder.GetPath(), {UriFact(folder), u"searchPattern: " + pattern, reason});
}

std::u16string ErrorFact(DWORD error)
{
    return u"GetLastError(): " + Decimal(error);
}

// The session stays, since what isn't there is an ordinary answer; but its connection goes if
// it may be a dead one.
[[noreturn]] void ThrowFailedListing(FTPSession& session, const Uri& folder,
                                     const std::u16string& pattern, DWORD error)
{
    const std::u16string reply = ReadLastResponse();
    const bool wasRefused = error == ERROR_INTERNET_EXTENDED_ERROR;
    const bool answered = wasRefused || error == ERROR_FILE_NOT_FOUND;
    if (!answered || reply.starts_with(u"421"))
        session.ResetHandles();
    ThrowNotListed(folder, pattern, wasRefused ? u"ExtendedError: " + reply : ErrorFact(error));
}

// A search for what isn't there may fail as one in an empty folder does.
bool MeansNothingThere(DWORD error)
{
    return error == ERROR_FILE_NOT_FOUND || error == ERROR_NO_MORE_FILES;
}

void RefuseExisting(HINTERNET connection, const std::u16string& path)
{
    WIN32_FIND_DATAW record{};
    const InternetHandle find(
        FtpFindFirstFileW(connection, Wide(path), &record, INTERNET_FLAG_RELOAD, 0));
    if (find)
        ThrowInternetError(ERROR_ALREADY_EXISTS, std::u16string());
    const DWORD error = GetLastError();
    if (!MeansNothingThere(error))
        ThrowInternetError(error, MessageId::AttributesFailed, {path});
}

// 0, or the error. A refusal whose words say that the folder is there already counts as that.
DWORD CreateOne(HINTERNET connection, const std::u16string& path)
{
    if (FtpCreateDirectoryW(connection, Wide(path)))
        return ERROR_SUCCESS;
    const DWORD error = GetLastError();
    return error == ERROR_INTERNET_EXTENDED_ERROR && ResponseSaysExists() ? ERROR_ALREADY_EXISTS
                                                                          : error;
}

} // namespace

FSItems FtpList(FTPSession& session, const HostUIUser& host, const Uri& folder)
{
    UriParts parts = folder.GetParts();
    if (!parts.path.ends_with(u'/'))
        parts.path += u'/';
    const std::u16string pattern = parts.path + u"*";
    if (!FitsInLine(pattern))
        ThrowNotListed(folder, pattern, ErrorFact(ERROR_INVALID_PARAMETER));
    const HINTERNET connection = session.Connection(host);
    WIN32_FIND_DATAW record{};
    const InternetHandle find(
        FtpFindFirstFileW(connection, Wide(pattern), &record, INTERNET_FLAG_RELOAD, 0));
    if (!find)
    {
        const DWORD error = GetLastError();
        if (error == ERROR_NO_MORE_FILES)
            return {};
        ThrowFailedListing(session, folder, pattern, error);
    }
    const std::u16string base = folder.Compose(parts)->GetText();
    FSItems items;
    do
    {
        const std::u16string_view name = Units(record.cFileName);
        if (IsItemName(name))
            items.push_back(ItemOf(record, base + std::u16string(name)));
    } while (InternetFindNextFileW(find.Get(), &record));
    return items;
}

std::shared_ptr<FSItem> FtpFind(FTPSession& session, const HostUIUser& host, const Uri& uri)
{
    UriParts parts = uri.GetParts();
    const std::shared_ptr<Uri> parent = uri.ComposeParent(parts);
    const std::u16string wanted = uri.Compose(parts)->GetText();
    // Items of the root are listed with one slash more than addresses are written with.
    if (parent->GetPath().empty() && !parts.path.starts_with(u'/'))
        parts.path.insert(0, 1, u'/');
    const std::u16string asListed = uri.Compose(parts)->GetText();
    const FSItems items = FtpList(session, host, *parent);
    const auto found = std::find_if(items.begin(), items.end(), [&](const auto& item) {
        return item->text == wanted || item->text == asListed;
    });
    if (found == items.end())
        ThrowNotFound(uri.GetPath(), {UriFact(uri)});
    return *found;
}

void FtpCreateFolder(FTPSession& session, const HostUIUser& host, const Uri& uri, bool recursive)
{
    const std::u16string path = uri.GetPath();
    RequireLine(path, recursive ? MessageId::AttributesFailed : MessageId::FolderCreationFailed);
    const HINTERNET connection = session.Connection(host);
    if (!recursive)
    {
        const DWORD error = CreateOne(connection, path);
        if (error != ERROR_SUCCESS)
            ThrowInternetError(error, MessageId::FolderCreationFailed, {path});
        return;
    }
    RefuseExisting(connection, path);
    for (const std::u16string& prefix : SplitFolderPrefixes(path))
    {
        const DWORD error = CreateOne(connection, prefix);
        if (error != ERROR_SUCCESS && error != ERROR_ALREADY_EXISTS)
            ThrowInternetError(error, MessageId::FolderCreationFailed, {prefix});
    }
}

void FtpDeleteItem(FTPSession& session, const HostUIUser& host, const Uri& uri, bool recursive)
{
    const std::u16string path = uri.GetPath();
    RequireLine(path, MessageId::DeleteFailed);
    const std::shared_ptr<FSItem> item = FtpFind(session, host, uri);
    if (item->isDirectory && recursive)
        return FtpDeleteTree(session, host, uri);
    const HINTERNET connection = session.Connection(host);
    if (item->isDirectory ? !FtpRemoveDirectoryW(connection, Wide(path))
                          : !FtpDeleteFileW(connection, Wide(path)))
        ThrowLastInternetError(MessageId::DeleteFailed, path);
}

std::vector<std::u16string> SplitFolderPrefixes(std::u16string_view path)
{
    std::vector<std::u16string> prefixes;
    for (std::size_t slash = path.find(u'/', 1); slash != std::u16string_view::npos;
         slash = path.find(u'/', slash + 1))
        prefixes.emplace_back(path.substr(0, slash));
    if (!path.ends_with(u'/'))
        prefixes.emplace_back(path);
    return prefixes;
}

} // namespace tarnwell
