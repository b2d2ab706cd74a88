// The stream of a local file: one open handle behind three interface views, nothing buffered.
#pragma once

#include "frame/comobject.h"
#include "frame/handle.h"

#include <tarnwell/streams.h>

namespace tarnwell
{

// Both views have a Read with the same arguments (where these types agree) and another contract.
// Each gets a name of its own here.
class DataView : public ::ISequentialStream
{
public:
    HRESULT STDMETHODCALLTYPE Read(void* buffer, ULONG size, ULONG* read) final
    {
        return ReadData(buffer, size, read);
    }

protected:
    ~DataView() = default;

private:
    virtual HRESULT ReadData(void* buffer, ULONG size, ULONG* read) = 0;
};

class ArchiveView : public ILib7zInStream
{
public:
    HRESULT STDMETHODCALLTYPE Read(void* buffer, std::uint32_t size, std::uint32_t* processed) final
    {
        return ReadForArchive(buffer, size, processed);
    }

protected:
    ~ArchiveView() = default;

private:
    virtual HRESULT ReadForArchive(void* buffer, std::uint32_t size, std::uint32_t* processed) = 0;
};

class CFileStream : public IFileStream,
                    public DataView,
                    public ErrorInfoFor<IFileStream, ::ISequentialStream>,
                    public ArchiveView
{
public:
    // The archive views claim no error info, although a failed Read leaves one.
    using Interfaces = InterfaceList<IFileStream, ::ISequentialStream, ::ISupportErrorInfo,
                                     ILib7zInStream, ILib7zSequentialInStream>;

    // Takes over the open file. Called once, before the stream is handed out.
    void Attach(OsHandle handle)
    {
        handle_ = std::move(handle);
    }

    HRESULT STDMETHODCALLTYPE Close() override;
    HRESULT STDMETHODCALLTYPE Write(const void* buffer, ULONG size, ULONG* written) override;
    HRESULT STDMETHODCALLTYPE Seek(std::int64_t offset, std::uint32_t origin,
                                   std::uint64_t* newPosition) override;

protected:
    CFileStream() = default;
    ~CFileStream();

private:
    HRESULT ReadData(void* buffer, ULONG size, ULONG* read) override;
    HRESULT ReadForArchive(void* buffer, std::uint32_t size, std::uint32_t* processed) override;

    OsHandle handle_;
};

} // namespace tarnwell
