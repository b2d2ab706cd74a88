// Descriptors: their owner, and the calls on them that a signal may interrupt.
#pragma once

#include <cerrno>
#include <fcntl.h>
#include <string_view>
#include <sys/types.h>
#include <utility>

namespace tarnwell::posix
{

// Owns a descriptor, or nothing.
class FileDescriptor
{
public:
    FileDescriptor() = default;
    explicit FileDescriptor(int descriptor) : descriptor_(descriptor) {}
    FileDescriptor(FileDescriptor&& other) noexcept
        : descriptor_(std::exchange(other.descriptor_, -1))
    {
    }
    FileDescriptor& operator=(FileDescriptor&& other) noexcept
    {
        std::swap(descriptor_, other.descriptor_);
        return *this;
    }
    // Leaves errno as it is.
    ~FileDescriptor();

    int Get() const
    {
        return descriptor_;
    }
    int Detach()
    {
        return std::exchange(descriptor_, -1);
    }
    explicit operator bool() const
    {
        return descriptor_ >= 0;
    }

private:
    int descriptor_ = -1;
};

// What `call` gives, which is made again for as long as a signal interrupts it.
template <class Call> auto Restarted(Call call)
{
    auto result = call();
    while (result < 0 && errno == EINTR)
        result = call();
    return result;
}

// Opens `path`, which is relative to the open `folder` (or to the current one, AT_FDCWD), so that
// no program which the host starts meanwhile gets the descriptor, and no terminal becomes the
// controlling one. Nothing, with errno set, if it can't be opened.
FileDescriptor OpenAt(int folder, const char* path, int flags, mode_t mode = 0);

inline FileDescriptor Open(const char* path, int flags, mode_t mode = 0)
{
    return OpenAt(AT_FDCWD, path, flags, mode);
}

// False, with errno set, if not all of it could be written.
bool WriteAll(int descriptor, std::string_view bytes);

} // namespace tarnwell::posix
