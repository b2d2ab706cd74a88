#include "ftp/ftpconnection.h"

#include "addressed/uri.h"
#include "ftp/ftpreply.h"
#include "ftp/ftpsettings.h"
#include "platform/wide.h"

#include <algorithm>

namespace tarnwell
{

namespace
{

bool HasControls(std::u16string_view text)
{
    return std::any_of(text.begin(), text.end(),
                       [](char16_t unit) { return unit < u' ' || unit == 0x7F; });
}

const WCHAR* WideOrNull(const std::u16string& text)
{
    return text.empty() ? nullptr : Wide(text);
}

} // namespace

InternetHandle OpenInternetHandle()
{
    const FtpProxy proxy = ReadFtpProxy();
    InternetHandle root(
        proxy.isUsed
            ? InternetOpenW(Wide(u"FTP"), INTERNET_OPEN_TYPE_PROXY, Wide(proxy.servers),
                            WideOrNull(proxy.bypass), 0)
            : InternetOpenW(Wide(u"FTP"), INTERNET_OPEN_TYPE_PRECONFIG, nullptr, nullptr, 0));
    if (!root)
        ThrowLastInternetError(MessageId::InternetOpenFailed);
    return root;
}

InternetHandle ConnectInternetHandle(const InternetHandle& root, const FtpLogon& logon)
{
    // Each is a part of one line to the server, and must not begin another.
    if (HasControls(logon.host) || HasControls(logon.user) || HasControls(logon.password))
        ThrowInternetError(ERROR_INVALID_PARAMETER, MessageId::ConnectFailed);
    const DWORD flags = ReadUseActive() ? 0 : INTERNET_FLAG_PASSIVE;
    const INTERNET_PORT port = logon.port < noPort ? logon.port : INTERNET_PORT{21};
    InternetHandle connection(InternetConnectW(root.Get(), Wide(logon.host), port, Wide(logon.user),
                                               Wide(logon.password), INTERNET_SERVICE_FTP, flags,
                                               0));
    if (!connection)
        ThrowLastInternetError(MessageId::ConnectFailed);
    return connection;
}

} // namespace tarnwell
