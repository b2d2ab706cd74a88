#include "platform/posix/files/descriptor.h"

#include <unistd.h>

namespace tarnwell::posix
{

FileDescriptor::~FileDescriptor()
{
    const int number = errno;
    if (descriptor_ >= 0)
        close(descriptor_);
    errno = number;
}

FileDescriptor OpenAt(int folder, const char* path, int flags, mode_t mode)
{
    return FileDescriptor(
        Restarted([&] { return openat(folder, path, flags | O_CLOEXEC | O_NOCTTY, mode); }));
}

bool WriteAll(int descriptor, std::string_view bytes)
{
    while (!bytes.empty())
    {
        const ssize_t count =
            Restarted([&] { return write(descriptor, bytes.data(), bytes.size()); });
        if (count < 0)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

} // namespace tarnwell::posix
