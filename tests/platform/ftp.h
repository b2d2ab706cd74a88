// The operations of FTP, as tests call them.
#pragma once

#include "frame/handle.h"
#include "platform/listing.h"
#include "platform/wide.h"
#include "support/opened.h"

#include <optional>
#include <string>
#include <string_view>

namespace tarnwell::test
{

// The server's words behind the last failure.
struct LastReply
{
    DWORD code = 0;
    std::u16string text;
};

inline LastReply ReadLastReply()
{
    LastReply reply;
    WCHAR buffer[1024] = {};
    DWORD length = 1023;
    if (InternetGetLastResponseInfoW(&reply.code, buffer, &length))
        reply.text = Units(buffer);
    return reply;
}

struct FtpLogin
{
    std::u16string user = u"ftp";
    std::u16string password = u"secret";
    DWORD flags = INTERNET_FLAG_PASSIVE;
};

class FtpClient
{
public:
    explicit FtpClient(int port, const FtpLogin& login = {})
        : root_(InternetOpenW(Wide(u"FTP"), INTERNET_OPEN_TYPE_PRECONFIG, nullptr, nullptr, 0)),
          connection_(InternetConnectW(root_.Get(), Wide(u"127.0.0.1"),
                                       static_cast<INTERNET_PORT>(port), Wide(login.user),
                                       Wide(login.password), INTERNET_SERVICE_FTP, login.flags, 0)),
          error_(connection_ ? 0 : GetLastError())
    {
    }

    HINTERNET Get() const
    {
        return connection_.Get();
    }
    bool IsConnected() const
    {
        return static_cast<bool>(connection_);
    }
    // Of connecting.
    DWORD Error() const
    {
        return error_;
    }
    void Close()
    {
        connection_.Close();
    }

    Listing List(const std::u16string& pattern) const
    {
        Listing listing;
        WIN32_FIND_DATAW record;
        const InternetHandle find(
            FtpFindFirstFileW(Get(), Wide(pattern), &record, INTERNET_FLAG_RELOAD, 0));
        if (find)
        {
            do
                listing.records.push_back(record);
            while (InternetFindNextFileW(find.Get(), &record));
        }
        listing.error = GetLastError();
        return listing;
    }

    InternetHandle Open(const std::u16string& path, DWORD access) const
    {
        return InternetHandle(FtpOpenFileW(Get(), Wide(path), access,
                                           FTP_TRANSFER_TYPE_BINARY | INTERNET_FLAG_RELOAD, 0));
    }
    // 0 or the error.
    DWORD Write(const std::u16string& path, std::string_view bytes) const
    {
        const InternetHandle file = Open(path, GENERIC_WRITE);
        DWORD written = 0;
        const bool isDone = file && InternetWriteFile(file.Get(), bytes.data(),
                                                      static_cast<DWORD>(bytes.size()), &written);
        return isDone && written == bytes.size() ? 0 : GetLastError();
    }
    // Nothing, and the last error, if it can't be read to its end.
    std::optional<std::string> Read(const std::u16string& path) const
    {
        const InternetHandle file = Open(path, GENERIC_READ);
        if (!file)
            return std::nullopt;
        std::string bytes;
        for (;;)
        {
            char buffer[4096];
            DWORD count = 0;
            if (!InternetReadFile(file.Get(), buffer, sizeof buffer, &count))
                return std::nullopt;
            if (count == 0)
                return bytes;
            bytes.append(buffer, count);
        }
    }

private:
    InternetHandle root_;
    InternetHandle connection_;
    DWORD error_;
};

} // namespace tarnwell::test
