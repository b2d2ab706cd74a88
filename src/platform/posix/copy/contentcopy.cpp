#include "platform/posix/copy/contentcopy.h"

#include "platform/posix/files/descriptor.h"

#include <algorithm>
#include <cerrno>
#include <unistd.h>

namespace tarnwell::posix
{
namespace
{

constexpr off_t pieceSize = off_t{4} << 20;
constexpr std::size_t bufferSize = std::size_t{128} << 10;
constexpr off_t blockSize = 512;

} // namespace

ContentCopy::ContentCopy(int source, int target, const struct stat& facts)
    : source_(source), target_(target), hasHoles_(facts.st_blocks * blockSize < facts.st_size)
{
}

off_t ContentCopy::Next()
{
    off_t size = pieceSize;
    if (hasHoles_)
        size = std::min(size, SkipHole());
    return size > 0 ? Piece(size) : size;
}

off_t ContentCopy::Piece(off_t size)
{
    off_t moved = 0;
    while (moved < size)
    {
        const ssize_t count = Some(static_cast<std::size_t>(size - moved));
        if (count < 0)
            return -1;
        if (count == 0)
            break;
        moved += count;
        done_ += count;
    }
    return moved == 0 && hasHoles_ ? EndWithHole() : moved;
}

ssize_t ContentCopy::Some(std::size_t size)
{
    if (inKernel_)
    {
        const ssize_t count = SomeInKernel(size);
        if (count > 0 || (count == 0 && done_ > 0))
            return count;
        // Plain reading tells whether this is the end or a failure: some file systems can't copy
        // inside the kernel, and those that make up files while they are read call them all empty.
        inKernel_ = false;
    }
    return SomeByHand(size);
}

ssize_t ContentCopy::SomeInKernel(std::size_t size) const
{
    return Restarted([&] { return copy_file_range(source_, nullptr, target_, nullptr, size, 0); });
}

ssize_t ContentCopy::SomeByHand(std::size_t size)
{
    buffer_.resize(bufferSize);
    const ssize_t count =
        Restarted([&] { return read(source_, buffer_.data(), std::min(size, buffer_.size())); });
    if (count > 0 && !WriteAll(target_, {buffer_.data(), static_cast<std::size_t>(count)}))
        return -1;
    return count;
}

off_t ContentCopy::SkipHole()
{
    const off_t data = lseek(source_, done_, SEEK_DATA);
    if (data < 0 && errno == ENXIO)
        return EndWithHole();
    if (data < 0)
    {
        hasHoles_ = false;
        return pieceSize;
    }
    const off_t end = lseek(source_, data, SEEK_HOLE);
    if (end < 0 || lseek(source_, data, SEEK_SET) < 0 || lseek(target_, data, SEEK_SET) < 0)
        return -1;
    done_ = data;
    return end - data;
}

// What is behind the last byte that was written. A source that has shrunk meanwhile doesn't take
// away what was copied already.
off_t ContentCopy::EndWithHole()
{
    struct stat source;
    struct stat target;
    if (fstat(source_, &source) != 0 || fstat(target_, &target) != 0)
        return -1;
    if (source.st_size <= target.st_size)
        return 0;
    done_ = source.st_size;
    return Restarted([&] { return ftruncate(target_, source.st_size); });
}

} // namespace tarnwell::posix
