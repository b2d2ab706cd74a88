/// @file
/// Streams: the content of one open file.
///
/// The stream of every file system answers `IFileStream` and the standard `ISequentialStream`;
/// the local one also answers the two archive views. A stream holds all that it needs, so it may
/// outlive the item and the file system that it came from. It has one position, which every read
/// and write moves on; only local streams can move it otherwise.
#pragma once

#include <tarnwell/interfaceid.h>

namespace tarnwell
{

/// The end of an open file's use. The bytes go through `ISequentialStream`.
struct IFileStream : ::IUnknown
{
    /// Ends the use of the file. The last Release does the same, so that this call is for hosts
    /// that want to see the outcome, or to be done earlier.
    ///
    /// What it tells differs: closing a local file may fail, with a text; the others always answer
    /// S_OK. So the close of an FTP upload doesn't tell whether the server kept the file: whoever
    /// must know lists it.
    /// @return S_OK, also when called again. Local files: the status of the platform's call.
    virtual HRESULT STDMETHODCALLTYPE Close() = 0;

protected:
    ~IFileStream() = default;
};

/// The input stream of archive readers, on local files only. Its failures' texts are those of
/// `ISequentialStream::Read`, although `ISupportErrorInfo` doesn't claim it.
struct ILib7zSequentialInStream : ::IUnknown
{
    /// Reads on from the present position.
    /// @param[out] buffer     Room for `size` bytes; the caller's.
    /// @param      size       How many bytes at most.
    /// @param[out] processed  How many were read: 0 at the end of the data, and on failure.
    /// @return S_OK; E_POINTER for a null `processed`, with a text; the status of the platform's
    /// call, which
    ///         after Close is that of a handle that isn't open.
    virtual HRESULT STDMETHODCALLTYPE Read(void* buffer, std::uint32_t size,
                                           std::uint32_t* processed) = 0;

protected:
    ~ILib7zSequentialInStream() = default;
};

/// The same with a position that can be moved.
struct ILib7zInStream : ILib7zSequentialInStream
{
    /// Moves the position. Beyond the end is allowed; reads there find nothing.
    /// @param      offset       In bytes; may be negative.
    /// @param      origin       One of `SeekOrigin`.
    /// @param[out] newPosition  The position from the start, in bytes; may be null.
    /// @return S_OK; the status of the platform's call, bare: before the start, an unknown
    ///         `origin`, a closed stream.
    virtual HRESULT STDMETHODCALLTYPE Seek(std::int64_t offset, std::uint32_t origin,
                                           std::uint64_t* newPosition) = 0;

protected:
    ~ILib7zInStream() = default;
};

} // namespace tarnwell

TARNWELL_INTERFACE_ID(IFileStream, 674B8110)
TARNWELL_INTERFACE_ID(ILib7zSequentialInStream, 674B8111)
TARNWELL_INTERFACE_ID(ILib7zInStream, 674B8112)
