// The bytes of an open file on their way into another.
#pragma once

#include <cstddef>
#include <sys/stat.h>
#include <sys/types.h>
#include <vector>

namespace tarnwell::posix
{

class ContentCopy
{
public:
    // From the start of `source`, of which `facts` are known, into the empty file `target`.
    ContentCopy(int source, int target, const struct stat& facts);

    // Copies the next piece. Its size; 0 if there was nothing more, and then the target has its
    // full length; -1 with errno set on failure.
    off_t Next();

    // How far the target has come, holes included.
    off_t Done() const
    {
        return done_;
    }

private:
    // At most `size` bytes; as Next.
    off_t Piece(off_t size);
    ssize_t Some(std::size_t size);
    ssize_t SomeInKernel(std::size_t size) const;
    ssize_t SomeByHand(std::size_t size);
    // Moves both files to where the source's next bytes are. How many lie there; 0 and -1 as
    // Next.
    off_t SkipHole();
    off_t EndWithHole();

    int source_;
    int target_;
    off_t done_ = 0;
    bool hasHoles_;
    bool inKernel_ = true;
    std::vector<char> buffer_;
};

} // namespace tarnwell::posix
