#include "ftp/ftpoperations.h"

#include "addressed/confirmation.h"
#include "frame/exception.h"
#include "frame/filetimes.h"
#include "frame/status.h"
#include "frame/text.h"
#include "ftp/ftpcommands.h"
#include "ftp/ftppool.h"
#include "ftp/ftpstream.h"
#include "ftp/ftpuri.h"

namespace tarnwell
{

namespace
{

// After which outcomes a session is sound. What isn't there is an ordinary answer of a healthy
// connection; anything else may have left it in a state that nobody knows.
enum class Keep
{
    OnSuccess,
    OnSuccessOrNotFound
};

bool IsSoundAfter(const ComException& failure, Keep keep)
{
    return keep == Keep::OnSuccessOrNotFound &&
           static_cast<HRESULT>(failure.code) == StatusFromError(ERROR_FILE_NOT_FOUND);
}

std::unique_ptr<FTPSession> AcquireFor(const Uri& uri)
{
    return TheConnectionPool().Acquire(ConnectionKeyOf(uri), PresentTime());
}

void GiveBack(std::unique_ptr<FTPSession> session)
{
    TheConnectionPool().Release(std::move(session), PresentTime());
}

// What `operation` gives, with a session for `uri`.
template <class Operation> auto WithSession(const Uri& uri, Keep keep, Operation&& operation)
{
    std::unique_ptr<FTPSession> session = AcquireFor(uri);
    try
    {
        auto result = operation(*session);
        GiveBack(std::move(session));
        return result;
    }
    catch (const ComException& failure)
    {
        if (IsSoundAfter(failure, keep))
            GiveBack(std::move(session));
        throw;
    }
}

} // namespace

std::shared_ptr<FSItem> FtpQueryItem(const HostUIUser& host, const Uri& uri)
{
    return WithSession(uri, Keep::OnSuccessOrNotFound,
                       [&](FTPSession& session) { return FtpFind(session, host, uri); });
}

FSItems FtpQueryFolderItems(const HostUIUser& host, const Uri& folder)
{
    return WithSession(folder, Keep::OnSuccessOrNotFound,
                       [&](FTPSession& session) { return FtpList(session, host, folder); });
}

void FtpCreateFolderUri(const HostUIUser& host, const Uri& folder, bool recursive)
{
    WithSession(folder, Keep::OnSuccessOrNotFound, [&](FTPSession& session) {
        FtpCreateFolder(session, host, folder, recursive);
        return S_OK;
    });
}

ComPtr<IFileStream> FtpOpenUri(const HostUIUser& host, const Uri& uri, std::uint32_t access)
{
    return FtpOpenStream(AcquireFor(uri), host, uri, access);
}

void FtpDeleteUri(const HostUIUser& host, const Uri& uri, bool noConfirm, bool recursive)
{
    // The path, since the address may hold a password.
    if (!noConfirm && !ConfirmDeletionOfItem(host.HostObject(), uri.GetPath()))
        return;
    WithSession(uri, Keep::OnSuccess, [&](FTPSession& session) {
        FtpDeleteItem(session, host, uri, recursive);
        return S_OK;
    });
}

void FtpDeleteUriList(const HostUIUser& host, IItemList& items, bool noConfirm, bool recursive)
{
    if (!noConfirm && !ConfirmDeletionOfItems(host.HostObject()))
        return;
    std::int32_t count = 0;
    if (FAILED(items.GetCount(&count)))
        return;
    for (std::int32_t i = 0; i < count; ++i)
    {
        Bstr address;
        if (SUCCEEDED(items.GetItem(i, address.Out())))
            FtpDeleteUri(host, FTPUri(FromHost(address.Get())), true, recursive);
    }
}

} // namespace tarnwell
