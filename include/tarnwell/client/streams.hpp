/// @file
/// Reading and writing the content of files.
#pragma once

#include <tarnwell/client/failure.hpp>
#include <tarnwell/constants.h>
#include <tarnwell/streams.h>

#include <string>
#include <string_view>
#include <type_traits>

namespace tarnwell::client
{

namespace detail
{

// How many bytes one call carries at most: counts are 32 bits wide.
inline constexpr std::size_t longestPiece = 0x40000000;

inline ULONG Piece(std::size_t size)
{
    return static_cast<ULONG>(size < longestPiece ? size : longestPiece);
}

} // namespace detail

/// An open file; the base of what reads and what writes. Goes with its last copy.
class Stream
{
public:
    /// Takes a reference of its own.
    explicit Stream(const ComPtr<IFileStream>& stream)
        : stream_(stream), bytes_(detail::Need<::ISequentialStream>(stream))
    {
    }

    /// Ends the use of the file, and throws if that fails. An object that just goes tells nobody.
    void Close()
    {
        Check([&] { return stream_->Close(); });
    }

    /// The interface behind it.
    const ComPtr<IFileStream>& Get() const
    {
        return stream_;
    }

protected:
    /// The other interface behind it.
    ::ISequentialStream& Bytes() const
    {
        return *bytes_.Get();
    }

private:
    ComPtr<IFileStream> stream_;
    ComPtr<::ISequentialStream> bytes_;
};

/// Reads a file from its beginning.
class Reader : public Stream
{
public:
    /// Of an open stream.
    using Stream::Stream;

    /// Reads up to `size` bytes; fewer only at the end. 0 is the end.
    std::size_t Read(void* buffer, std::size_t size)
    {
        std::size_t filled = 0;
        while (filled < size)
        {
            ULONG read = 0;
            char* const next = static_cast<char*>(buffer) + filled;
            Check([&] { return Bytes().Read(next, detail::Piece(size - filled), &read); });
            if (read == 0)
                break;
            filled += read;
        }
        return filled;
    }

    /// The same into anything that has `data()` and `size()`, as a vector, an array or a span;
    /// gives bytes, whatever the elements are.
    template <class Buffer> auto Read(Buffer&& buffer) -> decltype(buffer.data(), buffer.size())
    {
        using Element = std::remove_pointer_t<decltype(buffer.data())>;
        static_assert(std::is_trivially_copyable_v<Element>, "elements are filled with bytes");
        return Read(static_cast<void*>(buffer.data()), buffer.size() * sizeof(Element));
    }

    /// Moves on from there; gives the position from the start. Local files only.
    std::uint64_t Seek(std::int64_t offset, SeekOrigin origin = SeekFromStart)
    {
        const auto stream = detail::Need<ILib7zInStream>(Get());
        return detail::NumberOf<std::uint64_t>(
            [&](std::uint64_t* position) { return stream->Seek(offset, origin, position); });
    }

    /// All that is left.
    std::string ReadAll()
    {
        std::string all;
        constexpr std::size_t block = 0x10000;
        for (std::size_t filled = 0;; filled = all.size())
        {
            all.resize(filled + block);
            const std::size_t read = Read(&all[filled], block);
            all.resize(filled + read);
            if (read < block)
                return all;
        }
    }
};

/// Writes a file from its beginning.
class Writer : public Stream
{
public:
    /// Of an open stream.
    using Stream::Stream;

    /// All of it, in one or more calls.
    void Write(const void* data, std::size_t size)
    {
        const char* next = static_cast<const char*>(data);
        while (size > 0)
        {
            ULONG written = 0;
            Check([&] { return Bytes().Write(next, detail::Piece(size), &written); });
            if (written == 0)
                throw Failure(E_FAIL, "The file takes no more data.");
            next += written;
            size -= written;
        }
    }

    /// Anything that has `data()` and `size()`: a string, a vector, an array or a span.
    template <class Buffer> auto Write(const Buffer& buffer) -> decltype(buffer.data(), void())
    {
        using Element = std::remove_pointer_t<decltype(buffer.data())>;
        static_assert(std::is_trivially_copyable_v<Element>, "elements are written as bytes");
        Write(static_cast<const void*>(buffer.data()), buffer.size() * sizeof(Element));
    }

    /// Up to the terminator.
    void Write(const char* text)
    {
        Write(std::string_view(text));
    }
};

} // namespace tarnwell::client
