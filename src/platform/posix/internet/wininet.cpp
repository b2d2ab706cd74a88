// The names, handles and codes under which the logic reaches FTP servers.
#include "platform/posix/calendar/filetime.h"
#include "platform/posix/calendar/localtime.h"
#include "platform/posix/errors/lasterror.h"
#include "platform/posix/internet/ftpconnection.h"
#include "platform/posix/internet/proxychoice.h"

#include <tarnwell/text.h>

#include <algorithm>
#include <mutex>
#include <new>
#include <unordered_map>
#include <variant>

namespace tarnwell::posix
{
namespace
{

// ---- What handles stand for ----

struct Root
{
    // Lists as they were given.
    std::string proxy;
    std::string bypass;
};

struct Connection
{
    std::shared_ptr<FtpConnection> ftp;
};

struct Find
{
    std::vector<ListedEntry> entries;
    std::size_t next = 0;
};

// Keeps its connection alive.
class TransferHandle
{
public:
    TransferHandle(std::shared_ptr<FtpConnection> ftp, bool isUpload)
        : ftp_(std::move(ftp)), isUpload_(isUpload)
    {
    }
    TransferHandle(const TransferHandle&) = delete;
    TransferHandle& operator=(const TransferHandle&) = delete;
    // Nobody is told what comes of it.
    ~TransferHandle()
    {
        ftp_->EndTransfer();
    }

    FtpConnection& Ftp() const
    {
        return *ftp_;
    }
    bool IsUpload() const
    {
        return isUpload_;
    }

private:
    std::shared_ptr<FtpConnection> ftp_;
    bool isUpload_;
};

using Object = std::variant<Root, Connection, Find, TransferHandle>;

// Handles are numbers that are never given twice, so that a closed one is known as such.
class HandleTable
{
public:
    static HandleTable& Instance()
    {
        // Never destroyed: a stream may outlive everything static.
        static HandleTable& table = *new HandleTable;
        return table;
    }

    template <class T, class... Arguments> HINTERNET Add(Arguments&&... arguments)
    {
        auto object =
            std::make_shared<Object>(std::in_place_type<T>, std::forward<Arguments>(arguments)...);
        const std::lock_guard lock(guard_);
        // Odd, so that it is no address of anything.
        last_ += 2;
        objects_.emplace(last_, std::move(object));
        return reinterpret_cast<HINTERNET>(last_);
    }
    std::shared_ptr<Object> Find(HINTERNET handle)
    {
        const std::lock_guard lock(guard_);
        const auto found = objects_.find(reinterpret_cast<std::uintptr_t>(handle));
        return found == objects_.end() ? nullptr : found->second;
    }
    // The object goes with the caller's pointer, outside of the lock.
    std::shared_ptr<Object> Take(HINTERNET handle)
    {
        const std::lock_guard lock(guard_);
        const auto found = objects_.extract(reinterpret_cast<std::uintptr_t>(handle));
        return found.empty() ? nullptr : std::move(found.mapped());
    }

private:
    std::mutex guard_;
    std::unordered_map<std::uintptr_t, std::shared_ptr<Object>> objects_;
    std::uintptr_t last_ = 1;
};

// ---- Failures ----

// What failed an operation; caught where that ends.
struct Failure
{
    DWORD code;
};

void Check(bool isFine, DWORD code)
{
    if (!isFine)
        throw Failure{code};
}

thread_local FtpReply lastReply;

void Check(DWORD code, const FtpConnection& ftp)
{
    if (code == 0)
        return;
    if (ftp.Reply().IsRefusal())
        lastReply = ftp.Reply();
    throw Failure{code};
}

// Runs one operation: what it gives, or `none` and the last error.
template <class Result, class Body> Result Guarded(Result none, Body body)
{
    lastReply = {};
    try
    {
        return body();
    }
    catch (const Failure& failure)
    {
        Fail(failure.code);
    }
    catch (const std::bad_alloc&)
    {
        Fail(ERROR_NOT_ENOUGH_MEMORY);
    }
    return none;
}

// The object stays for as long as the operation lasts, whoever closes the handle meanwhile.
template <class T> std::shared_ptr<T> Get(HINTERNET handle)
{
    const std::shared_ptr<Object> object = HandleTable::Instance().Find(handle);
    Check(object != nullptr, ERROR_INVALID_HANDLE);
    T* const wanted = std::get_if<T>(object.get());
    Check(wanted != nullptr, ERROR_INTERNET_INCORRECT_HANDLE_TYPE);
    return {object, wanted};
}

std::shared_ptr<FtpConnection> IdleConnection(HINTERNET handle)
{
    std::shared_ptr<FtpConnection> ftp = Get<Connection>(handle)->ftp;
    Check(!ftp->IsTransferring(), ERROR_FTP_TRANSFER_IN_PROGRESS);
    return ftp;
}

// ---- Text ----

// Refused before anything is sent: what a line can't hold, as its end would begin another command,
// and the byte that some servers take for the beginning of a command to a terminal, and others not.
bool IsSendable(char unit)
{
    const auto byte = static_cast<unsigned char>(unit);
    constexpr unsigned char firstPlain = 0x20;
    constexpr unsigned char deletion = 0x7F;
    constexpr unsigned char terminalCommand = 0xFF;
    return byte >= firstPlain && byte != deletion && byte != terminalCommand;
}

std::string Bytes(LPCWSTR text)
{
    const std::optional<std::string> bytes = tarnwell::EncodeName(text == nullptr ? u"" : text);
    Check(bytes && std::all_of(bytes->begin(), bytes->end(), IsSendable), ERROR_INVALID_PARAMETER);
    return *bytes;
}

std::string PathBytes(LPCWSTR path)
{
    std::string bytes = Bytes(path);
    Check(!bytes.empty(), ERROR_INVALID_PARAMETER);
    return bytes;
}

// A host's name ends where an address goes on.
std::string HostBytes(LPCWSTR host)
{
    std::string bytes = Bytes(host);
    const bool isName = !bytes.empty() && bytes.find_first_of("/?#@\\ %") == std::string::npos;
    Check(isName, ERROR_INTERNET_NAME_NOT_RESOLVED);
    return bytes;
}

std::string Without(std::string path, std::string_view endings)
{
    while (path.size() > 1 && endings.find(path.back()) != std::string_view::npos)
        path.pop_back();
    return path;
}

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

BOOL GiveNext(Find& find, WIN32_FIND_DATAW& record)
{
    while (find.next < find.entries.size())
    {
        const ListedEntry& entry = find.entries[find.next++];
        if (entry.name != "." && entry.name != ".." && Fill(record, entry))
            return 1;
    }
    return Fail(ERROR_NO_MORE_FILES);
}

Find FindInFolder(FtpConnection& ftp, const std::string& folder)
{
    Find find;
    bool isMissing = false;
    Check(ftp.List(folder, find.entries, isMissing), ftp);
    return find;
}

// The one entry itself, out of its folder's listing.
Find FindEntry(FtpConnection& ftp, const std::string& path)
{
    const std::size_t slash = path.rfind('/');
    const std::string leaf = path.substr(slash == std::string::npos ? 0 : slash + 1);
    // The login folder and the root are entries of nothing, and there.
    if (leaf.empty())
        return {{{.name = "/", .isFolder = true}}};
    const std::string folder =
        slash == std::string::npos ? "" : Without(path.substr(0, slash + 1), "/");
    std::vector<ListedEntry> entries;
    bool isMissing = false;
    const DWORD code = ftp.List(folder, entries, isMissing);
    Check(!isMissing, ERROR_FILE_NOT_FOUND);
    Check(code, ftp);
    std::erase_if(entries, [&](const ListedEntry& entry) { return entry.name != leaf; });
    Check(!entries.empty(), ERROR_FILE_NOT_FOUND);
    return {std::move(entries)};
}

Find Begin(FtpConnection& ftp, const std::string& pattern)
{
    if (pattern == "*")
        return FindInFolder(ftp, "");
    if (pattern.ends_with("/*"))
        return FindInFolder(ftp, Without(pattern.substr(0, pattern.size() - 1), "/"));
    return FindEntry(ftp, Without(pattern, "/"));
}

// ---- Connections ----

FtpServerAddress AddressOf(const Root& root, std::string host, INTERNET_PORT port, LPCWSTR user,
                           LPCWSTR password, bool isPassive)
{
    FtpServerAddress address{.host = std::move(host), .port = port == 0 ? 21U : port};
    address.user = Bytes(user);
    address.password = Bytes(password);
    address.isPassive = isPassive;
    if (!IsBypassed(address.host, root.bypass))
        address.proxy = ProxyForFtp(root.proxy);
    return address;
}

BOOL RunCommand(HINTERNET connection, const char* word, LPCWSTR path)
{
    return Guarded(BOOL{0}, [&] {
        const std::shared_ptr<FtpConnection> ftp = IdleConnection(connection);
        Check(ftp->Command(word, PathBytes(path)), *ftp);
        return BOOL{1};
    });
}

} // namespace
} // namespace tarnwell::posix

using namespace tarnwell::posix;

extern "C" HINTERNET InternetOpenW(LPCWSTR, DWORD access, LPCWSTR proxy, LPCWSTR bypass,
                                   DWORD flags)
{
    return Guarded<HINTERNET>(nullptr, [&] {
        const bool hasProxy = access == INTERNET_OPEN_TYPE_PROXY;
        Check((hasProxy || access == INTERNET_OPEN_TYPE_PRECONFIG) && flags == 0,
              ERROR_INVALID_PARAMETER);
        return HandleTable::Instance().Add<Root>(
            Root{hasProxy ? Bytes(proxy) : "", hasProxy ? Bytes(bypass) : ""});
    });
}

extern "C" HINTERNET InternetConnectW(HINTERNET root, LPCWSTR host, INTERNET_PORT port,
                                      LPCWSTR user, LPCWSTR password, DWORD service, DWORD flags,
                                      DWORD_PTR)
{
    return Guarded<HINTERNET>(nullptr, [&] {
        Check(service == INTERNET_SERVICE_FTP && (flags & ~INTERNET_FLAG_PASSIVE) == 0,
              ERROR_INVALID_PARAMETER);
        const std::shared_ptr<Root> opened = Get<Root>(root);
        const bool isPassive = (flags & INTERNET_FLAG_PASSIVE) != 0;
        const auto ftp = std::make_shared<FtpConnection>(
            AddressOf(*opened, HostBytes(host), port, user, password, isPassive));
        Check(ftp->LogIn(), *ftp);
        return HandleTable::Instance().Add<Connection>(Connection{ftp});
    });
}

extern "C" BOOL InternetCloseHandle(HINTERNET handle)
{
    return Guarded(BOOL{0}, [&] {
        Check(HandleTable::Instance().Take(handle) != nullptr, ERROR_INVALID_HANDLE);
        return BOOL{1};
    });
}

extern "C" BOOL InternetGetLastResponseInfoW(DWORD* error, LPWSTR buffer, DWORD* length)
{
    // Not Guarded: that would clear what is asked for.
    std::u16string text;
    try
    {
        text = tarnwell::DecodeName(lastReply.text);
    }
    catch (const std::bad_alloc&)
    {
        return Fail(ERROR_NOT_ENOUGH_MEMORY);
    }
    *error = static_cast<DWORD>(lastReply.code);
    const DWORD room = *length;
    *length = static_cast<DWORD>(text.size());
    if (buffer == nullptr || text.size() >= room)
    {
        ++*length;
        return Fail(ERROR_INSUFFICIENT_BUFFER);
    }
    text.copy(buffer, text.size());
    buffer[text.size()] = 0;
    return 1;
}

extern "C" HINTERNET FtpFindFirstFileW(HINTERNET connection, LPCWSTR pattern,
                                       WIN32_FIND_DATAW* record, DWORD flags, DWORD_PTR)
{
    return Guarded<HINTERNET>(nullptr, [&]() -> HINTERNET {
        Check((flags & ~INTERNET_FLAG_RELOAD) == 0, ERROR_INVALID_PARAMETER);
        const std::shared_ptr<FtpConnection> ftp = IdleConnection(connection);
        Find find = Begin(*ftp, Bytes(pattern));
        return GiveNext(find, *record) != 0 ? HandleTable::Instance().Add<Find>(std::move(find))
                                            : nullptr;
    });
}

extern "C" BOOL InternetFindNextFileW(HINTERNET find, LPVOID record)
{
    return Guarded(BOOL{0}, [&] {
        return GiveNext(*Get<Find>(find), *static_cast<WIN32_FIND_DATAW*>(record));
    });
}

extern "C" BOOL FtpCreateDirectoryW(HINTERNET connection, LPCWSTR path)
{
    return RunCommand(connection, "MKD", path);
}

extern "C" BOOL FtpRemoveDirectoryW(HINTERNET connection, LPCWSTR path)
{
    return RunCommand(connection, "RMD", path);
}

extern "C" BOOL FtpDeleteFileW(HINTERNET connection, LPCWSTR path)
{
    return RunCommand(connection, "DELE", path);
}

extern "C" HINTERNET FtpOpenFileW(HINTERNET connection, LPCWSTR path, DWORD access, DWORD flags,
                                  DWORD_PTR)
{
    return Guarded<HINTERNET>(nullptr, [&] {
        const bool isUpload = access == GENERIC_WRITE;
        Check((isUpload || access == GENERIC_READ) &&
                  (flags & ~INTERNET_FLAG_RELOAD) == FTP_TRANSFER_TYPE_BINARY,
              ERROR_INVALID_PARAMETER);
        std::shared_ptr<FtpConnection> ftp = IdleConnection(connection);
        // An empty one too is for the server to refuse.
        const std::string bytes = Bytes(path);
        Check(isUpload ? ftp->BeginUpload(bytes) : ftp->BeginDownload(bytes), *ftp);
        return HandleTable::Instance().Add<TransferHandle>(std::move(ftp), isUpload);
    });
}

extern "C" BOOL InternetReadFile(HINTERNET file, LPVOID buffer, DWORD size, DWORD* read)
{
    *read = 0;
    return Guarded(BOOL{0}, [&] {
        const std::shared_ptr<TransferHandle> transfer = Get<TransferHandle>(file);
        Check(!transfer->IsUpload(), ERROR_INTERNET_INCORRECT_HANDLE_TYPE);
        std::size_t count = 0;
        Check(transfer->Ftp().Read({static_cast<char*>(buffer), size}, count), transfer->Ftp());
        *read = static_cast<DWORD>(count);
        return BOOL{1};
    });
}

extern "C" BOOL InternetWriteFile(HINTERNET file, LPCVOID buffer, DWORD size, DWORD* written)
{
    *written = 0;
    return Guarded(BOOL{0}, [&] {
        const std::shared_ptr<TransferHandle> transfer = Get<TransferHandle>(file);
        Check(transfer->IsUpload(), ERROR_INTERNET_INCORRECT_HANDLE_TYPE);
        Check(transfer->Ftp().Write({static_cast<const char*>(buffer), size}), transfer->Ftp());
        *written = size;
        return BOOL{1};
    });
}
