// Descriptors, pipes and full disks.
#include "platform/opened.h"
#include "platform/posix/errors/errnotable.h"
#include "platform/posix/files/filehandle.h"
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

TEST(Opening, PipeNeverBlocksALookup)
{
    const TempFolder folder;
    const std::u16string path = folder / u"pipe";
    ASSERT_EQ(mkfifo((folder.Path() / "pipe").c_str(), 0600), 0);
    const OsHandle pipe = Opened(path, GENERIC_READ, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS);
    ASSERT_TRUE(pipe);
    LONG high = 0;
    EXPECT_EQ(SetFilePointer(pipe.Get(), 0, &high, FILE_END), INVALID_SET_FILE_POINTER);
    EXPECT_EQ(GetLastError(), ERROR_SEEK_ON_DEVICE);
    FILETIME write = {};
    EXPECT_TRUE(GetFileTime(pipe.Get(), nullptr, nullptr, &write));
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
    EXPECT_EQ(ErrnoFromError(ERROR_SUCCESS), 0);
    EXPECT_EQ(ErrnoFromError(12007), 0);
}

} // namespace
} // namespace tarnwell::test
