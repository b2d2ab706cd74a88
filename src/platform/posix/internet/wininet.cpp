// The names, handles and codes under which the logic reaches FTP servers.
#include "platform/posix/errors/lasterror.h"
#include "platform/posix/internet/internetfailure.h"
#include "platform/posix/internet/internethandles.h"
#include "platform/posix/internet/proxychoice.h"
#include "platform/posix/threadslot.h"

#include <tarnwell/text.h>

#include <algorithm>
#include <memory>
#include <new>

namespace tarnwell::posix
{
namespace
{

// ---- Failures ----

const ThreadSlot lastReply([](void* reply) { delete static_cast<FtpReply*>(reply); });

const FtpReply* LastReply()
{
    return static_cast<const FtpReply*>(lastReply.Get());
}

void ForgetReply()
{
    delete LastReply();
    lastReply.Set(nullptr);
}

// There is none where memory is too short for it.
void KeepReply(const FtpReply& reply) noexcept
try
{
    auto kept = std::make_unique<FtpReply>(reply);
    if (lastReply.Set(kept.get()))
        static_cast<void>(kept.release());
}
catch (const std::bad_alloc&)
{
}

// Runs one operation: what it gives, or `none` and the last error.
template <class Result, class Body> Result Guarded(Result none, Body body)
{
    ForgetReply();
    try
    {
        return body();
    }
    catch (const InternetFailure& failure)
    {
        KeepReply(failure.reply);
        Fail(failure.code);
    }
    catch (const std::bad_alloc&)
    {
        Fail(ERROR_NOT_ENOUGH_MEMORY);
    }
    return none;
}

std::shared_ptr<FtpConnection> IdleConnection(HINTERNET handle)
{
    std::shared_ptr<FtpConnection> ftp = ObjectOf<InternetConnection>(handle)->ftp;
    Check(!ftp->IsTransferring(), ERROR_FTP_TRANSFER_IN_PROGRESS);
    return ftp;
}

// ---- Text ----

// Refused before anything is sent: what a line can't hold, as its end would begin another command.
bool IsSendable(char unit)
{
    const auto byte = static_cast<unsigned char>(unit);
    constexpr unsigned char firstPlain = 0x20;
    constexpr unsigned char deletion = 0x7F;
    return byte >= firstPlain && byte != deletion;
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

// Of a user or a password. Nobody can be asked how the server reads the byte FF before they are in.
std::string LogonBytes(LPCWSTR text)
{
    std::string bytes = Bytes(text);
    Check(bytes.find('\xFF') == std::string::npos, ERROR_INVALID_PARAMETER);
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

// ---- Connections ----

FtpServerAddress AddressOf(const InternetRoot& root, std::string host, INTERNET_PORT port,
                           LPCWSTR user, LPCWSTR password, bool isPassive)
{
    FtpServerAddress address{.host = std::move(host), .port = port == 0 ? 21U : port};
    address.user = LogonBytes(user);
    address.password = LogonBytes(password);
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
        return InternetHandles::Instance().Add<InternetRoot>(
            InternetRoot{hasProxy ? Bytes(proxy) : "", hasProxy ? Bytes(bypass) : ""});
    });
}

extern "C" HINTERNET InternetConnectW(HINTERNET root, LPCWSTR host, INTERNET_PORT port,
                                      LPCWSTR user, LPCWSTR password, DWORD service, DWORD flags,
                                      DWORD_PTR)
{
    return Guarded<HINTERNET>(nullptr, [&] {
        Check(service == INTERNET_SERVICE_FTP && (flags & ~INTERNET_FLAG_PASSIVE) == 0,
              ERROR_INVALID_PARAMETER);
        const std::shared_ptr<InternetRoot> opened = ObjectOf<InternetRoot>(root);
        const bool isPassive = (flags & INTERNET_FLAG_PASSIVE) != 0;
        const auto ftp = std::make_shared<FtpConnection>(
            AddressOf(*opened, HostBytes(host), port, user, password, isPassive));
        Check(ftp->LogIn(), *ftp);
        return InternetHandles::Instance().Add<InternetConnection>(InternetConnection{ftp});
    });
}

extern "C" BOOL InternetCloseHandle(HINTERNET handle)
{
    return Guarded(BOOL{0}, [&] {
        Check(InternetHandles::Instance().Take(handle) != nullptr, ERROR_INVALID_HANDLE);
        return BOOL{1};
    });
}

extern "C" BOOL InternetGetLastResponseInfoW(DWORD* error, LPWSTR buffer, DWORD* length)
{
    // Not Guarded: that would clear what is asked for.
    std::u16string text;
    try
    {
        if (LastReply() != nullptr)
            text = tarnwell::DecodeName(LastReply()->text);
    }
    catch (const std::bad_alloc&)
    {
        return Fail(ERROR_NOT_ENOUGH_MEMORY);
    }
    *error = LastReply() == nullptr ? 0 : static_cast<DWORD>(LastReply()->code);
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
    return Guarded<HINTERNET>(nullptr, [&] {
        Check((flags & ~INTERNET_FLAG_RELOAD) == 0, ERROR_INVALID_PARAMETER);
        const std::shared_ptr<FtpConnection> ftp = IdleConnection(connection);
        FtpFind find(*ftp, Bytes(pattern));
        Check(find.Next(*record), ERROR_NO_MORE_FILES);
        return InternetHandles::Instance().Add<FtpFind>(std::move(find));
    });
}

extern "C" BOOL InternetFindNextFileW(HINTERNET find, LPVOID record)
{
    return Guarded(BOOL{0}, [&] {
        Check(ObjectOf<FtpFind>(find)->Next(*static_cast<WIN32_FIND_DATAW*>(record)),
              ERROR_NO_MORE_FILES);
        return BOOL{1};
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
        return InternetHandles::Instance().Add<FtpTransfer>(std::move(ftp), isUpload);
    });
}

extern "C" BOOL InternetReadFile(HINTERNET file, LPVOID buffer, DWORD size, DWORD* read)
{
    *read = 0;
    return Guarded(BOOL{0}, [&] {
        const std::shared_ptr<FtpTransfer> transfer = ObjectOf<FtpTransfer>(file);
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
        const std::shared_ptr<FtpTransfer> transfer = ObjectOf<FtpTransfer>(file);
        Check(transfer->IsUpload(), ERROR_INTERNET_INCORRECT_HANDLE_TYPE);
        Check(transfer->Ftp().Write({static_cast<const char*>(buffer), size}), transfer->Ftp());
        *written = size;
        return BOOL{1};
    });
}
