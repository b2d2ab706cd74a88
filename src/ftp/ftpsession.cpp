#include "ftp/ftpsession.h"

#include "frame/exception.h"
#include "frame/messages.h"
#include "ftp/ftpuri.h"

namespace tarnwell
{

namespace
{

// The port of the address isn't among them, on purpose: it selects the session, and what is
// connected to is what the credentials name, whose host may carry a port.
FtpLogon LogonWith(const Credentials& credentials)
{
    const std::size_t colon = credentials.host.find(u':');
    FtpLogon logon{credentials.host.substr(0, colon), noPort, credentials.user,
                   credentials.password};
    if (colon != std::u16string::npos)
        logon.port = PortOf(std::u16string_view(credentials.host).substr(colon + 1));
    return logon;
}

bool IsRefusedLogon(std::uint32_t status)
{
    const std::uint32_t error = status & 0xFFFF;
    return error == ERROR_INTERNET_INCORRECT_USER_NAME ||
           error == ERROR_INTERNET_INCORRECT_PASSWORD;
}

InternetHandle LogOn(const InternetHandle& root, const Credentials& credentials,
                     const HostUIUser& host)
{
    try
    {
        return ConnectInternetHandle(root, LogonWith(credentials));
    }
    catch (const ComException& refusal)
    {
        if (!IsRefusedLogon(refusal.code))
            throw;
        const std::u16string text = FormatMessageById(MessageId::LogonRefused, {refusal.message});
        host.ReportCredentialsRefused(u"FTP: " + text);
        throw ComException(static_cast<HRESULT>(refusal.code), text, At(ftpSource));
    }
}

} // namespace

ConnectionKey ConnectionKeyOf(const Uri& uri)
{
    UriParts parts = uri.GetParts();
    return {std::move(parts.user), std::move(parts.password), std::move(parts.host), parts.port};
}

HINTERNET FTPSession::Connection(const HostUIUser& host)
{
    if (!connection_)
        Connect(host);
    return connection_.Get();
}

void FTPSession::ResetHandles()
{
    connection_.Close();
    internet_.Close();
}

void FTPSession::Connect(const HostUIUser& host)
{
    ResetHandles();
    InternetHandle root = OpenInternetHandle();
    const Credentials credentials =
        host.ResolveCredentials({key_.user, key_.password, key_.host}, serverCredentials);
    connection_ = LogOn(root, credentials, host);
    internet_ = std::move(root);
}

} // namespace tarnwell
