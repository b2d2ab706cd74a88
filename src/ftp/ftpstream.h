// The content of a file on a server, read or written from its start to its end.
#pragma once

#include "frame/comobject.h"
#include "frame/messages.h"
#include "ftp/ftpsession.h"

#include <tarnwell/streams.h>

#include <memory>

namespace tarnwell
{

// It holds its session for as long as it is open, since a connection can't do anything else
// meanwhile, and has no buffer of its own.
class FtpStreamObject : public IFileStream,
                        public ::ISequentialStream,
                        public ErrorInfoFor<IFileStream, ::ISequentialStream>
{
public:
    using Interfaces = InterfaceList<IFileStream, ::ISequentialStream, ::ISupportErrorInfo>;

    // Called once, before the stream is handed out.
    void Attach(InternetHandle file, std::unique_ptr<FTPSession> session);

    // Ends the transfer; a session that didn't fail is free for others then. Always S_OK: what the
    // server says of an upload's end is not told.
    HRESULT STDMETHODCALLTYPE Close() override;
    // `count` may be null.
    HRESULT STDMETHODCALLTYPE Read(void* buffer, ULONG size, ULONG* count) override;
    HRESULT STDMETHODCALLTYPE Write(const void* buffer, ULONG size, ULONG* count) override;

protected:
    ~FtpStreamObject();

private:
    template <class Call> HRESULT Transfer(ULONG* count, MessageId failure, Call&& call);
    [[noreturn]] void Fail(MessageId failure);

    InternetHandle file_;
    std::unique_ptr<FTPSession> session_; // empty after Close and after a failure
};

// A new stream on `uri`, which takes `session` over. Throws if that fails.
ComPtr<IFileStream> FtpOpenStream(std::unique_ptr<FTPSession> session, const HostUIUser& host,
                                  const Uri& uri, std::uint32_t access);

} // namespace tarnwell
