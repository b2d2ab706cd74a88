// Copying files: holes, sources that change meanwhile, and no room.
#include "platform/posix/copyhere.h"
#include "support/posix/ownmounts.h"

#include <csignal>
#include <fstream>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/wait.h>

namespace tarnwell::test
{
namespace
{

namespace fs = std::filesystem;

TEST_F(CopyHere, HolesStayHoles)
{
    constexpr off_t size = (off_t{5} << 30) + 12345;
    ASSERT_NO_FATAL_FAILURE(PutSparse(size, {0, off_t{4} << 30, (off_t{4} << 30) + 3 * copyPiece}));
    EXPECT_EQ(Copy(), ERROR_SUCCESS);
    const struct stat made = LinkFacts(target_);
    EXPECT_EQ(made.st_size, size);
    EXPECT_LT(made.st_blocks * 512, size / 2);
    for (const off_t at : {off_t{0}, off_t{4} << 30, (off_t{4} << 30) + 3 * copyPiece})
    {
        EXPECT_EQ(BytesAt(target_, at, 6), std::string("data\0\0", 6));
        if (at > 0)
        {
            EXPECT_EQ(BytesAt(target_, at - 3, 4), std::string("\0\0\0d", 4));
        }
    }
    EXPECT_EQ(BytesAt(target_, size - 2, 10), std::string(2, '\0'));
}

TEST_F(CopyHere, AFileThatIsOneHole)
{
    ASSERT_NO_FATAL_FAILURE(PutSparse(off_t{6} << 30, {}));
    WriteBytes(target_, "old");
    EXPECT_EQ(Copy(), ERROR_SUCCESS);
    EXPECT_EQ(LinkFacts(target_).st_size, off_t{6} << 30);
    EXPECT_EQ(BytesAt(target_, 0, 3), std::string(3, '\0'));
}

TEST_F(CopyHere, ASourceThatShrinksMeanwhileEndsThere)
{
    for (const bool sparse : {false, true})
    {
        fs::remove(source_);
        if (sparse)
            ASSERT_NO_FATAL_FAILURE(PutSparse(4 * copyPiece, {0, 2 * copyPiece}));
        else
            WriteBytes(source_, std::string(static_cast<std::size_t>(3 * copyPiece), 'x'));
        const std::string start = BytesAt(source_, 0, 4096);
        Progress progress;
        progress.answer = [&](int n) {
            if (n == 2)
                fs::resize_file(source_, 10);
            return PROGRESS_CONTINUE;
        };
        EXPECT_EQ(Copy(0, &progress), ERROR_SUCCESS);
        const off_t size = LinkFacts(target_).st_size;
        EXPECT_GE(size, 4096);
        EXPECT_LE(size, copyPiece) << "nothing is made up";
        EXPECT_EQ(BytesAt(target_, 0, 4096), start);
    }
}

TEST_F(CopyHere, WhatIsAddedMeanwhileIsCopiedToo)
{
    WriteBytes(source_, "first");
    Progress progress;
    progress.answer = [&](int n) {
        if (n == 2)
            std::ofstream(At(source_), std::ios::app) << " second";
        return PROGRESS_CONTINUE;
    };
    EXPECT_EQ(Copy(0, &progress), ERROR_SUCCESS);
    EXPECT_EQ(ReadBytes(target_), "first second");
}

TEST_F(CopyHere, FromOneFileSystemToAnother)
{
    std::string name = "/dev/shm/tarnwell-test-XXXXXX";
    if (mkdtemp(name.data()) == nullptr)
        GTEST_SKIP() << "there is no file system in memory";
    const fs::path other(name);
    std::string bytes(static_cast<std::size_t>(2 * copyPiece + 5), 'x');
    bytes[static_cast<std::size_t>(copyPiece)] = 'y';
    WriteBytes(source_, bytes);
    const bool differs = LinkFacts(other).st_dev != LinkFacts(folder_.Path()).st_dev;
    Progress progress;
    const DWORD there = ErrorOfCopy(source_, (other / "a").u16string(), 0, &progress);
    const DWORD back = ErrorOfCopy((other / "a").u16string(), target_);
    fs::remove_all(other);
    if (!differs)
        GTEST_SKIP() << "both are one file system";
    EXPECT_EQ(there, ERROR_SUCCESS);
    EXPECT_EQ(progress.questions, 4);
    EXPECT_EQ(back, ERROR_SUCCESS);
    EXPECT_TRUE(ReadBytes(target_) == bytes);
}

// Such files are regular ones of size 0 that make up their bytes when they are read.
TEST_F(CopyHere, FilesMadeUpByTheSystemAreCopied)
{
    EXPECT_EQ(ErrorOfCopy(u"/proc/self/status", target_), ERROR_SUCCESS);
    EXPECT_THAT(ReadBytes(target_), testing::StartsWith("Name:"));
}

// In a child with file systems of its own; it ends with this if there can be none.
constexpr int notAllowed = 77;

bool MountSmallDisk(const fs::path& at)
{
    return HaveOwnMounts() && mount("none", at.c_str(), "tmpfs", 0, "size=6m") == 0;
}

TEST_F(CopyHere, AFullDiskIsAClearErrorAndLeavesNothing)
{
    const fs::path disk = folder_.Path() / "disk";
    fs::create_directory(disk);
    const std::string bytes(static_cast<std::size_t>(3 * copyPiece), 'x');
    WriteBytes(source_, bytes);
    const pid_t child = fork();
    if (child == 0)
    {
        if (!MountSmallDisk(disk))
            _exit(notAllowed);
        const DWORD error = ErrorOfCopy(source_, (disk / "target").u16string());
        if (error != ERROR_DISK_FULL)
            _exit(1);
        _exit(fs::is_empty(disk) ? 0 : 2);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    if (WEXITSTATUS(status) == notAllowed)
        GTEST_SKIP() << "no file system may be mounted here";
    EXPECT_EQ(status, 0);
    EXPECT_TRUE(ReadBytes(source_) == bytes);
}

TEST_F(CopyHere, AFileThatMayNotGrowIsAnErrorAndLeavesNothing)
{
    WriteBytes(source_, std::string(static_cast<std::size_t>(2 * copyPiece), 'x'));
    rlimit before = {};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit few{1 << 20, before.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &few), 0);
    const DWORD error = Copy();
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(error, ERROR_FILE_TOO_LARGE);
    EXPECT_FALSE(fs::exists(target_));
}

} // namespace
} // namespace tarnwell::test
