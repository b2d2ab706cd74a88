// The stream over a client's output.
#pragma once

#include "frame/comobject.h"
#include "frame/handle.h"

#include <tarnwell/streams.h>

#include <memory>

namespace tarnwell
{

class ReadStreamObject : public IFileStream,
                         public ::ISequentialStream,
                         public ErrorInfoFor<IFileStream, ::ISequentialStream>
{
public:
    using Interfaces = InterfaceList<IFileStream, ::ISequentialStream, ::ISupportErrorInfo>;

    // Called once, before the stream is handed out.
    void Attach(std::shared_ptr<OsHandle> file)
    {
        file_ = std::move(file);
    }

    HRESULT STDMETHODCALLTYPE Close() override;
    // Failures are bare, and `read` may be null.
    HRESULT STDMETHODCALLTYPE Read(void* buffer, ULONG size, ULONG* read) override;
    HRESULT STDMETHODCALLTYPE Write(const void* buffer, ULONG size, ULONG* written) override;

protected:
    ~ReadStreamObject() = default;

private:
    std::shared_ptr<OsHandle> file_;
};

// A new stream over `file`, from where it stands. Throws message 114 if it can't be made.
ComPtr<IFileStream> MakeReadStream(std::shared_ptr<OsHandle> file, const char16_t* source);

} // namespace tarnwell
