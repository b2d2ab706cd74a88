#include "ftp/ftpstream.h"

#include "addressed/interfaceimpl.h"
#include "frame/boundary.h"
#include "frame/filetimes.h"
#include "ftp/ftpline.h"
#include "ftp/ftppool.h"
#include "ftp/ftpreply.h"
#include "platform/wide.h"

#include <tarnwell/classes.h>

namespace tarnwell
{

namespace
{
constexpr Reporter streamReporter{CLSID_FTPFile, IidOf<::ISequentialStream>()};
}

void FtpStreamObject::Attach(InternetHandle file, std::unique_ptr<FTPSession> session)
{
    file_ = std::move(file);
    session_ = std::move(session);
}

FtpStreamObject::~FtpStreamObject()
{
    FtpStreamObject::Close();
}

// The transfer first: until it has ended, nobody else may use the session.
HRESULT FtpStreamObject::Close()
{
    file_.Close();
    if (session_)
        TheConnectionPool().Release(std::move(session_), PresentTime());
    return S_OK;
}

HRESULT FtpStreamObject::Read(void* buffer, ULONG size, ULONG* count)
{
    return Transfer(count, MessageId::StreamReadFailed,
                    [&](DWORD* done) { return InternetReadFile(file_.Get(), buffer, size, done); });
}

HRESULT FtpStreamObject::Write(const void* buffer, ULONG size, ULONG* count)
{
    return Transfer(count, MessageId::StreamWriteFailed, [&](DWORD* done) {
        return InternetWriteFile(file_.Get(), buffer, size, done);
    });
}

template <class Call>
HRESULT FtpStreamObject::Transfer(ULONG* count, MessageId failure, Call&& call)
{
    if (count != nullptr)
        *count = 0;
    return AtBoundary(streamReporter, [&] {
        DWORD done = 0;
        if (!call(&done))
            Fail(failure);
        if (count != nullptr)
            *count = done;
        return S_OK;
    });
}

// The session goes, and last of all: closing it would take the server's words with it.
void FtpStreamObject::Fail(MessageId failure)
{
    try
    {
        ThrowLastInternetError(failure);
    }
    catch (...)
    {
        session_.reset();
        throw;
    }
}

ComPtr<IFileStream> FtpOpenStream(std::unique_ptr<FTPSession> session, const HostUIUser& host,
                                  const Uri& uri, std::uint32_t access)
{
    const std::u16string path = uri.GetPath();
    RequireLine(path, MessageId::OpenFailed);
    const HINTERNET connection = session->Connection(host);
    InternetHandle file(FtpOpenFileW(connection, Wide(path), access,
                                     FTP_TRANSFER_TYPE_BINARY | INTERNET_FLAG_RELOAD, 0));
    if (!file)
        ThrowLastInternetError(MessageId::OpenFailed, path);
    auto stream = NewObject<FtpStreamObject>();
    stream->Attach(std::move(file), std::move(session));
    return ComPtr<IFileStream>::Adopt(stream.Detach());
}

} // namespace tarnwell
