// Reading, writing and seeking. Each call is the system's own and nothing else.
#include "platform/posix/errors/lasterror.h"
#include "platform/posix/files/filehandle.h"
#include "platform/posix/processes/pipesignal.h"

#include <cerrno>
#include <fcntl.h>
#include <limits>
#include <optional>
#include <unistd.h>

namespace tarnwell::posix
{
namespace
{

static_assert(FILE_BEGIN == SEEK_SET && FILE_CURRENT == SEEK_CUR && FILE_END == SEEK_END);

// Less than nothing, with the last error set, if the file can't be moved there.
off_t Seek(int descriptor, off_t distance, DWORD origin)
{
    // The system knows more origins than these.
    if (origin > FILE_END)
    {
        Fail(ERROR_INVALID_PARAMETER);
        return -1;
    }
    const off_t position = lseek(descriptor, distance, static_cast<int>(origin));
    if (position < 0 && errno == EINVAL)
        Fail(ERROR_NEGATIVE_SEEK);
    else if (position < 0)
        FailOnDescriptor(descriptor);
    return position;
}

// Moves `*size` bytes by `call` (read or write), restarting what a signal or a short count
// interrupts. A failure behind the first bytes is a failure: a short count means the end of the
// file to the caller. `*moved` tells how far it came.
template <class Call> BOOL Move(int descriptor, DWORD size, DWORD* moved, Call call)
{
    *moved = 0;
    do
    {
        const ssize_t count = Restarted([&] { return call(*moved, size - *moved); });
        if (count < 0)
            return FailOnDescriptor(descriptor);
        if (count == 0)
            break;
        *moved += static_cast<DWORD>(count);
    } while (*moved < size);
    return 1;
}

bool CheckTransfer(const DWORD* moved, const OVERLAPPED* overlapped)
{
    if (overlapped != nullptr)
        Fail(ERROR_NOT_SUPPORTED);
    else if (moved == nullptr)
        Fail(ERROR_INVALID_PARAMETER);
    return overlapped == nullptr && moved != nullptr;
}

} // namespace
} // namespace tarnwell::posix

using namespace tarnwell::posix;

extern "C" BOOL ReadFile(HANDLE file, void* buffer, DWORD size, DWORD* read, OVERLAPPED* overlapped)
{
    if (!CheckTransfer(read, overlapped))
        return 0;
    const int descriptor = DescriptorOf(file);
    const auto call = [&](DWORD done, DWORD rest) {
        return ::read(descriptor, static_cast<BYTE*>(buffer) + done, rest);
    };
    return Move(descriptor, size, read, call);
}

extern "C" BOOL WriteFile(HANDLE file, LPCVOID buffer, DWORD size, DWORD* written,
                          OVERLAPPED* overlapped)
{
    if (!CheckTransfer(written, overlapped))
        return 0;
    const int descriptor = DescriptorOf(file);
    std::optional<NoPipeSignal> noSignal;
    if (IsPipe(file))
        noSignal.emplace();
    const auto call = [&](DWORD done, DWORD rest) {
        return write(descriptor, static_cast<const BYTE*>(buffer) + done, rest);
    };
    return Move(descriptor, size, written, call);
}

extern "C" DWORD SetFilePointer(HANDLE file, LONG distance, LONG* high, DWORD origin)
{
    const int descriptor = DescriptorOf(file);
    off_t whole = distance;
    off_t before = 0;
    if (high != nullptr)
        whole = (off_t{*high} << 32) | static_cast<DWORD>(distance);
    else if (before = Seek(descriptor, 0, FILE_CURRENT); before < 0)
        return INVALID_SET_FILE_POINTER;

    const off_t position = Seek(descriptor, whole, origin);
    if (position < 0)
        return INVALID_SET_FILE_POINTER;
    if (high != nullptr)
    {
        *high = static_cast<LONG>(position >> 32);
    }
    else if (position > off_t{std::numeric_limits<DWORD>::max()})
    {
        // There is no room for the answer, so the file stays where it was.
        Seek(descriptor, before, FILE_BEGIN);
        Fail(ERROR_INVALID_PARAMETER);
        return INVALID_SET_FILE_POINTER;
    }
    SetLastError(ERROR_SUCCESS);
    return static_cast<DWORD>(position);
}

extern "C" BOOL SetFilePointerEx(HANDLE file, LARGE_INTEGER distance, LARGE_INTEGER* position,
                                 DWORD origin)
{
    const off_t reached = Seek(DescriptorOf(file), distance.QuadPart, origin);
    if (reached < 0)
        return 0;
    if (position != nullptr)
        position->QuadPart = reached;
    return 1;
}

extern "C" BOOL SetEndOfFile(HANDLE file)
{
    const int descriptor = DescriptorOf(file);
    const off_t position = Seek(descriptor, 0, FILE_CURRENT);
    if (position < 0)
        return 0;
    if (Restarted([&] { return ftruncate(descriptor, position); }) == 0)
        return 1;
    // The system calls a file that is open for reading only an invalid argument.
    const bool readOnly = (fcntl(descriptor, F_GETFL) & O_ACCMODE) == O_RDONLY;
    return readOnly ? Fail(ERROR_ACCESS_DENIED) : FailOnDescriptor(descriptor);
}
