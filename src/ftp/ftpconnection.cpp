#include "ftp/ftpconnection.h"

#include "addressed/uri.h"
#include "ftp/ftpline.h"
#include "ftp/ftpreply.h"
#include "ftp/ftpsettings.h"
#include "platform/wide.h"

namespace tarnwell
{

namespace
{

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
    if (!FitsInLine(logon.host) || !FitsInLine(logon.user) || !FitsInLine(logon.password))
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
