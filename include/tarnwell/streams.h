// Streams: the content of one open file.
//
// The stream of every file system answers `IFileStream` and the standard `ISequentialStream`;
// the local one also answers the two archive views. A stream holds all that it needs, so it may
// outlive the item that opened it.
#pragma once

#include <tarnwell/interfaceid.h>

namespace tarnwell
{

struct IFileStream : ::IUnknown
{
    // Ends the use of the file. The last Release does the same, so that this call is for hosts
    // that want to see the outcome or to be done earlier. May be called again: S_OK.
    virtual HRESULT STDMETHODCALLTYPE Close() = 0;

protected:
    ~IFileStream() = default;
};

// The input stream of archive readers, on local files only. Its failures' texts are those of
// `ISequentialStream::Read`.
struct ILib7zSequentialInStream : ::IUnknown
{
    // Reads up to `size` bytes into `buffer`. `*processed` receives the number read, 0 at the
    // end of the data and on failure.
    virtual HRESULT STDMETHODCALLTYPE Read(void* buffer, std::uint32_t size,
                                           std::uint32_t* processed) = 0;

protected:
    ~ILib7zSequentialInStream() = default;
};

struct ILib7zInStream : ILib7zSequentialInStream
{
    // Moves the position by `offset` bytes from `origin`: 0 the start, 1 the present position,
    // 2 the end. `newPosition` receives the position from the start; it may be null. Bare.
    virtual HRESULT STDMETHODCALLTYPE Seek(std::int64_t offset, std::uint32_t origin,
                                           std::uint64_t* newPosition) = 0;

protected:
    ~ILib7zInStream() = default;
};

TARNWELL_INTERFACE_ID(IFileStream, 0x674B8110);
TARNWELL_INTERFACE_ID(ILib7zSequentialInStream, 0x674B8111);
TARNWELL_INTERFACE_ID(ILib7zInStream, 0x674B8112);

} // namespace tarnwell
