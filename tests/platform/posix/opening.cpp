// Descriptors, pipes and full disks.
#include "platform/posix/errors/errnotable.h"
#include "platform/posix/files/filehandle.h"
#include "platform/posix/systemcalls.h"
#include "support/opened.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tarnwell::test
{
namespace
{

using posix::ErrnoFromError;
using posix::ErrorFromErrno;

TEST(Opening, DescriptorsStayInTheProcess)
{
    const TempFolder folder;
    for (const DWORD access : {GENERIC_WRITE, FILE_WRITE_ATTRIBUTES})
    {
        const OsHandle file = Opened(folder / u"a", access, OPEN_ALWAYS);
        ASSERT_TRUE(file);
        EXPECT_EQ(fcntl(posix::DescriptorOf(file.Get()), F_GETFD), FD_CLOEXEC);
    }
}

TEST(Opening, DeleteOnCloseTakesTheNameAtOnce)
{
    const TempFolder folder;
    const OsHandle file =
        Opened(folder / u"a", GENERIC_WRITE, CREATE_NEW, FILE_FLAG_DELETE_ON_CLOSE);
    ASSERT_TRUE(file);
    EXPECT_FALSE(std::filesystem::exists(folder.Path() / "a"));
    struct stat entry = {};
    ASSERT_EQ(fstat(posix::DescriptorOf(file.Get()), &entry), 0);
    EXPECT_EQ(entry.st_mode & 0777, 0600U);
}

// Whether somebody who opens the pipe for writing finds it open for reading.
bool HasReader(const std::filesystem::path& pipe)
{
    const posix::FileDescriptor writer(open(pipe.c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC));
    return static_cast<bool>(writer);
}

// Its writer would take it for the reader, and its bytes would be lost.
TEST(Opening, APipeDoesNotNoticeALookup)
{
    const TempFolder folder;
    ASSERT_EQ(mkfifo((folder.Path() / "pipe").c_str(), 0600), 0);
    const OsHandle pipe =
        Opened(folder / u"pipe", GENERIC_READ, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS);
    ASSERT_TRUE(pipe);
    EXPECT_FALSE(HasReader(folder.Path() / "pipe"));
    LONG high = 0;
    EXPECT_EQ(SetFilePointer(pipe.Get(), 0, &high, FILE_END), INVALID_SET_FILE_POINTER);
    EXPECT_NE(GetLastError(), ERROR_SUCCESS);
    FILETIME write = {};
    EXPECT_TRUE(GetFileTime(pipe.Get(), nullptr, nullptr, &write));
    const OsHandle opened = OpenedForReading(folder / u"pipe");
    EXPECT_TRUE(HasReader(folder.Path() / "pipe")) << "as the test would see it";
}

TEST(Opening, APipeInAFilesPlaceDoesNotNoticeALookupEither)
{
    const TempFolder folder;
    const std::filesystem::path path = folder.Path() / "a";
    WriteBytes(folder / u"a", "12345");
    SystemCalls calls;
    // The first one was the look.
    calls.Before("openat", 2, [&] {
        std::filesystem::remove(path);
        ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    });
    const OsHandle file =
        Opened(folder / u"a", GENERIC_READ, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS);
    EXPECT_EQ(SetFilePointer(file.Get(), 0, nullptr, FILE_END), 5U);
    EXPECT_FALSE(HasReader(path));
}

TEST(Opening, ALookupNeedsNoListOfItsDescriptors)
{
    const TempFolder folder;
    WriteBytes(folder / u"a", "12345");
    SystemCalls calls;
    calls.Fail("openat", 2, ENOENT);
    const OsHandle file =
        Opened(folder / u"a", GENERIC_READ, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS);
    EXPECT_EQ(SetFilePointer(file.Get(), 0, nullptr, FILE_END), 5U);
}

TEST(Opening, ANewFileThatCannotBeHadIsNotLeftBehind)
{
    const TempFolder folder;
    SystemCalls calls;
    calls.Fail("fstat", 1, EIO);
    EXPECT_EQ(ErrorOfOpening(folder / u"a", GENERIC_WRITE, CREATE_NEW), ERROR_IO_DEVICE);
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
}

TEST(Opening, SignalsInterruptNothing)
{
    const TempFolder folder;
    const std::string bytes(100'000, 'x');
    WriteBytes(folder / u"a", "");
    std::string read(bytes.size(), ' ');
    {
        SystemCalls calls;
        calls.Interrupt("openat");
        calls.Interrupt("read");
        calls.Interrupt("write");
        calls.Interrupt("ftruncate");
        const OsHandle file = Opened(folder / u"a", GENERIC_READ | GENERIC_WRITE, OPEN_EXISTING);
        const auto size = static_cast<DWORD>(bytes.size());
        DWORD moved = 0;
        EXPECT_TRUE(WriteFile(file.Get(), bytes.data(), size, &moved, nullptr));
        EXPECT_TRUE(SetEndOfFile(file.Get()));
        SetFilePointer(file.Get(), 0, nullptr, FILE_BEGIN);
        EXPECT_TRUE(ReadFile(file.Get(), read.data(), size, &moved, nullptr));
        EXPECT_EQ(moved, size);
    }
    EXPECT_TRUE(read == bytes);
}

TEST(Opening, WriterOfAPipeThatNobodyReadsIsNotReady)
{
    const TempFolder folder;
    ASSERT_EQ(mkfifo((folder.Path() / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(ErrorOfOpening(folder / u"pipe", GENERIC_WRITE, OPEN_EXISTING), ERROR_NOT_READY);
}

TEST(Opening, WhatIsNotSupportedIsRefused)
{
    const TempFolder folder;
    WriteBytes(folder / u"a", "x");
    constexpr DWORD writeThrough = 0x80000000;
    EXPECT_EQ(ErrorOfOpening(folder / u"a", GENERIC_READ, OPEN_EXISTING, writeThrough),
              ERROR_NOT_SUPPORTED);
    constexpr DWORD writeOwner = 0x00080000;
    EXPECT_EQ(ErrorOfOpening(folder / u"a", writeOwner, OPEN_EXISTING), ERROR_NOT_SUPPORTED);
    EXPECT_EQ(ErrorOfOpening(folder.Text(), GENERIC_READ, OPEN_EXISTING,
                             FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_DELETE_ON_CLOSE),
              ERROR_NOT_SUPPORTED);
    EXPECT_EQ(ErrorOfOpening(folder / u"a", GENERIC_READ, TRUNCATE_EXISTING),
              ERROR_INVALID_PARAMETER);
    EXPECT_EQ(ReadBytes(folder / u"a"), "x");
}

TEST(Opening, CreationTimeCannotBeSet)
{
    const TempFolder folder;
    const OsHandle file = Opened(folder / u"a", GENERIC_WRITE, CREATE_NEW);
    const FILETIME time{0, 0x01C00000};
    EXPECT_EQ(ErrorOf(SetFileTime(file.Get(), &time, nullptr, nullptr)), ERROR_NOT_SUPPORTED);
}

TEST(Opening, ATimeBeyondTheLastIsRefused)
{
    const TempFolder folder;
    const OsHandle file = Opened(folder / u"a", GENERIC_WRITE, CREATE_NEW);
    const FILETIME last{0xFFFFFFFF, 0x7FFFFFFF};
    FILETIME before{};
    ASSERT_TRUE(GetFileTime(file.Get(), nullptr, nullptr, &before));
    // The system itself would take the second one, a whole number of seconds, for a time long ago.
    for (const FILETIME& beyond : {FILETIME{0, 0x80000000}, FILETIME{4'775'808, 0x80000000}})
    {
        EXPECT_EQ(ErrorOf(SetFileTime(file.Get(), nullptr, nullptr, &beyond)),
                  ERROR_INVALID_PARAMETER);
        EXPECT_EQ(ErrorOf(SetFileTime(file.Get(), nullptr, &beyond, &last)),
                  ERROR_INVALID_PARAMETER);
    }
    FILETIME after{};
    ASSERT_TRUE(GetFileTime(file.Get(), nullptr, nullptr, &after));
    EXPECT_EQ(after.dwHighDateTime, before.dwHighDateTime);
    EXPECT_EQ(after.dwLowDateTime, before.dwLowDateTime);
}

TEST(Opening, FullDeviceFailsTheWrite)
{
    const OsHandle full = Opened(u"/dev/full", GENERIC_WRITE, OPEN_EXISTING);
    ASSERT_TRUE(full);
    DWORD moved = 99;
    EXPECT_EQ(ErrorOf(WriteFile(full.Get(), "x", 1, &moved, nullptr)), ERROR_DISK_FULL);
    EXPECT_EQ(moved, 0U);
}

// A write that fits only in part must not pass for one that came to its end.
TEST(Opening, PartOfAWriteIsAFailure)
{
    const TempFolder folder;
    const OsHandle file = Opened(folder / u"a", GENERIC_WRITE, CREATE_NEW);
    rlimit before = {};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
    const auto signalBefore = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{1000, before.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    const std::string bytes(2000, 'x');
    DWORD moved = 0;
    const DWORD error = ErrorOf(WriteFile(file.Get(), bytes.data(), 2000, &moved, nullptr));
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, signalBefore);
    EXPECT_EQ(error, ERROR_FILE_TOO_LARGE);
    EXPECT_EQ(moved, 1000U);
}

TEST(ErrnoTable, FailureNeverHasCodeZero)
{
    for (int number = 0; number < 200; ++number)
        EXPECT_NE(ErrorFromErrno(number), ERROR_SUCCESS) << number;
    EXPECT_EQ(ErrorFromErrno(99999), ERROR_GEN_FAILURE);
}

TEST(ErrnoTable, CodesHaveTheCounterpartOfTheirMeaning)
{
    EXPECT_EQ(ErrnoFromError(ERROR_FILE_NOT_FOUND), ENOENT);
    EXPECT_EQ(ErrnoFromError(ERROR_PATH_NOT_FOUND), ENOENT);
    EXPECT_EQ(ErrnoFromError(ERROR_ACCESS_DENIED), EACCES);
    EXPECT_EQ(ErrnoFromError(ERROR_INVALID_PARAMETER), EINVAL);
    EXPECT_EQ(ErrnoFromError(ERROR_ALREADY_EXISTS), EEXIST);
    EXPECT_EQ(ErrnoFromError(ERROR_DISK_FULL), ENOSPC);
    EXPECT_EQ(ErrnoFromError(ErrorFromErrno(EAGAIN)), EAGAIN) << "a limit is no missing device";
    EXPECT_EQ(ErrorFromErrno(EMFILE), ERROR_TOO_MANY_OPEN_FILES);
    EXPECT_EQ(ErrorFromErrno(ENFILE), ERROR_TOO_MANY_OPEN_FILES);
    EXPECT_EQ(ErrnoFromError(ERROR_TOO_MANY_OPEN_FILES), EMFILE);
    EXPECT_EQ(ErrnoFromError(ERROR_SUCCESS), 0);
    EXPECT_EQ(ErrnoFromError(12007), 0);
}

} // namespace
} // namespace tarnwell::test
