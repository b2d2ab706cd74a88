// Copying files: what only shows on this platform.
#include "platform/copied.h"
#include "support/posix/ownmounts.h"
#include "support/tempfolder.h"

#include <gmock/gmock.h>

#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace tarnwell::test
{
namespace
{

namespace fs = std::filesystem;

constexpr off_t piece = off_t{4} << 20;

struct stat FactsOf(const fs::path& path)
{
    struct stat facts = {};
    EXPECT_EQ(lstat(path.c_str(), &facts), 0) << path;
    return facts;
}

class CopyHere : public testing::Test
{
protected:
    static fs::path At(const fs::path& path)
    {
        return path;
    }
    DWORD Copy(DWORD flags = 0, Progress* progress = nullptr) const
    {
        return ErrorOfCopy(source_, target_, flags, progress);
    }
    void PutSparse(off_t size, std::initializer_list<off_t> written) const
    {
        const int file = open(At(source_).c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0600);
        ASSERT_EQ(ftruncate(file, size), 0);
        for (const off_t at : written)
            ASSERT_EQ(pwrite(file, "data", 4, at), 4);
        close(file);
    }
    static std::string BytesAt(const fs::path& path, off_t at, std::size_t size)
    {
        std::string bytes(size, '?');
        const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
        const ssize_t count = pread(file, bytes.data(), size, at);
        close(file);
        bytes.resize(count < 0 ? 0 : static_cast<std::size_t>(count));
        return bytes;
    }

    TempFolder folder_;
    std::u16string source_ = folder_ / u"source";
    std::u16string target_ = folder_ / u"target";
};

TEST_F(CopyHere, OneQuestionBeforeTheFirstPieceAndOneAfterEach)
{
    struct Row
    {
        off_t size;
        int questions;
    };
    for (const Row row :
         {Row{0, 1}, {1, 2}, {piece - 1, 2}, {piece, 2}, {piece + 1, 3}, {3 * piece, 4}})
    {
        WriteBytes(source_, std::string(static_cast<std::size_t>(row.size), 'x'));
        Progress progress;
        EXPECT_EQ(Copy(0, &progress), ERROR_SUCCESS);
        EXPECT_EQ(progress.questions, row.questions) << row.size;
        EXPECT_EQ(progress.done, row.size);
    }
}

TEST_F(CopyHere, ACancelBeforeTheFirstPieceSparesAnExistingFile)
{
    WriteBytes(source_, "new");
    WriteBytes(target_, "old");
    Progress progress;
    progress.answer = [](int) {
        return PROGRESS_CANCEL;
    };
    EXPECT_EQ(Copy(0, &progress), ERROR_REQUEST_ABORTED);
    EXPECT_EQ(ReadBytes(target_), "old");

    progress.answer = [](int n) {
        return n == 1 ? PROGRESS_CONTINUE : PROGRESS_CANCEL;
    };
    progress.questions = 0;
    EXPECT_EQ(Copy(0, &progress), ERROR_REQUEST_ABORTED);
    EXPECT_FALSE(fs::exists(target_)) << "what is left would be half a file";
}

TEST_F(CopyHere, FlagsThatAreKnownAndOthers)
{
    WriteBytes(source_, "a");
    EXPECT_EQ(Copy(COPY_FILE_RESTARTABLE | COPY_FILE_OPEN_SOURCE_FOR_WRITE |
                   COPY_FILE_ALLOW_DECRYPTED_DESTINATION | COPY_FILE_NO_BUFFERING),
              ERROR_SUCCESS);
    fs::remove(target_);
    for (const DWORD flag : {0x10U, 0x400U, 0x2000U, 0x80000000U})
        EXPECT_EQ(Copy(flag), ERROR_INVALID_PARAMETER);
    BOOL cancel = 0;
    EXPECT_FALSE(CopyFileExW(Wide(source_), Wide(target_), nullptr, nullptr, &cancel, 0));
    EXPECT_EQ(GetLastError(), ERROR_NOT_SUPPORTED);
    EXPECT_FALSE(fs::exists(target_));
}

TEST_F(CopyHere, OneFileByTwoNamesIsRefusedAndNothingIsLost)
{
    WriteBytes(source_, "mine");
    fs::create_hard_link(source_, folder_ / u"hard");
    fs::create_symlink("source", folder_ / u"soft");
    for (const char16_t* const name : {u"hard", u"soft", u"./source"})
    {
        EXPECT_EQ(ErrorOfCopy(source_, folder_ / name), ERROR_SHARING_VIOLATION);
        EXPECT_EQ(ErrorOfCopy(folder_ / name, source_), ERROR_SHARING_VIOLATION);
        EXPECT_EQ(ReadBytes(source_), "mine");
    }
}

TEST_F(CopyHere, LinksAreFollowedAtBothEnds)
{
    WriteBytes(folder_ / u"from", "new");
    WriteBytes(folder_ / u"to", "old");
    fs::create_symlink("from", source_);
    fs::create_symlink("to", target_);
    EXPECT_EQ(Copy(), ERROR_SUCCESS);
    EXPECT_TRUE(fs::is_symlink(target_));
    EXPECT_EQ(ReadBytes(folder_ / u"to"), "new");
}

TEST_F(CopyHere, BehindALinkTheHalfFileGoesAndTheLinkStays)
{
    WriteBytes(source_, "new");
    Progress progress;
    progress.answer = [](int n) {
        return n == 1 ? PROGRESS_CONTINUE : PROGRESS_CANCEL;
    };
    fs::create_symlink("to", target_);
    for (const bool wasThere : {true, false})
    {
        if (wasThere)
            WriteBytes(folder_ / u"to", "old");
        progress.questions = 0;
        EXPECT_EQ(Copy(0, &progress), ERROR_REQUEST_ABORTED);
        EXPECT_TRUE(fs::is_symlink(target_));
        EXPECT_FALSE(fs::exists(folder_ / u"to"));
    }
}

TEST_F(CopyHere, ALinkWithoutATargetGetsOne)
{
    WriteBytes(source_, "new");
    fs::create_symlink("to", target_);
    EXPECT_EQ(Copy(COPY_FILE_FAIL_IF_EXISTS), ERROR_FILE_EXISTS);
    EXPECT_EQ(Copy(), ERROR_SUCCESS);
    EXPECT_EQ(ReadBytes(folder_ / u"to"), "new");
}

TEST_F(CopyHere, ALinkCanBeCopiedAsALink)
{
    fs::create_symlink("nowhere", source_);
    EXPECT_EQ(Copy(), ERROR_FILE_NOT_FOUND);
    for (const bool replaces : {false, true})
    {
        if (replaces)
        {
            fs::remove(target_);
            WriteBytes(target_, "old");
        }
        EXPECT_EQ(Copy(COPY_FILE_COPY_SYMLINK), ERROR_SUCCESS);
        EXPECT_EQ(fs::read_symlink(target_), "nowhere");
    }
    EXPECT_EQ(Copy(COPY_FILE_COPY_SYMLINK), ERROR_SUCCESS) << "over another link";
    EXPECT_EQ(FactsOf(target_).st_mtim.tv_sec, FactsOf(source_).st_mtim.tv_sec);
    EXPECT_EQ(Copy(COPY_FILE_COPY_SYMLINK | COPY_FILE_FAIL_IF_EXISTS), ERROR_FILE_EXISTS);
    EXPECT_EQ(ErrorOfCopy(source_, source_, COPY_FILE_COPY_SYMLINK), ERROR_SHARING_VIOLATION);
    EXPECT_TRUE(fs::is_symlink(source_));
    EXPECT_EQ(ErrorOfCopy(source_, folder_.Text(), COPY_FILE_COPY_SYMLINK), ERROR_ACCESS_DENIED);
}

TEST_F(CopyHere, ALinkDoesNotTakeThePlaceOfWhatItLeadsTo)
{
    WriteBytes(target_, "mine");
    fs::create_symlink("target", source_);
    EXPECT_EQ(Copy(COPY_FILE_COPY_SYMLINK), ERROR_SHARING_VIOLATION);
    EXPECT_EQ(ReadBytes(target_), "mine");
    EXPECT_TRUE(fs::is_symlink(source_));
}

TEST_F(CopyHere, ALinkToAFolderIsAFolderUnlessItIsCopiedAsALink)
{
    fs::create_directory(folder_ / u"sub");
    WriteBytes(Joined(folder_ / u"sub", u"file"), "kept");
    fs::create_symlink("sub", source_);
    EXPECT_EQ(Copy(), ERROR_ACCESS_DENIED);
    EXPECT_FALSE(fs::exists(target_));
    EXPECT_EQ(Copy(COPY_FILE_COPY_SYMLINK), ERROR_SUCCESS);
    EXPECT_EQ(fs::read_symlink(target_), "sub");
    EXPECT_EQ(ReadBytes(Joined(folder_ / u"sub", u"file")), "kept");
}

TEST_F(CopyHere, TheFlagForLinksMeansNothingToFiles)
{
    WriteBytes(source_, "a");
    EXPECT_EQ(Copy(COPY_FILE_COPY_SYMLINK), ERROR_SUCCESS);
    EXPECT_EQ(ReadBytes(target_), "a");
}

TEST_F(CopyHere, HolesStayHoles)
{
    constexpr off_t size = (off_t{5} << 30) + 12345;
    ASSERT_NO_FATAL_FAILURE(PutSparse(size, {0, off_t{4} << 30, (off_t{4} << 30) + 3 * piece}));
    EXPECT_EQ(Copy(), ERROR_SUCCESS);
    const struct stat made = FactsOf(target_);
    EXPECT_EQ(made.st_size, size);
    EXPECT_LT(made.st_blocks * 512, size / 2);
    for (const off_t at : {off_t{0}, off_t{4} << 30, (off_t{4} << 30) + 3 * piece})
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
    EXPECT_EQ(FactsOf(target_).st_size, off_t{6} << 30);
    EXPECT_EQ(BytesAt(target_, 0, 3), std::string(3, '\0'));
}

TEST_F(CopyHere, ASourceThatShrinksMeanwhileEndsThere)
{
    for (const bool sparse : {false, true})
    {
        fs::remove(source_);
        if (sparse)
            ASSERT_NO_FATAL_FAILURE(PutSparse(4 * piece, {0, 2 * piece}));
        else
            WriteBytes(source_, std::string(static_cast<std::size_t>(3 * piece), 'x'));
        const std::string start = BytesAt(source_, 0, 4096);
        Progress progress;
        progress.answer = [&](int n) {
            if (n == 2)
                fs::resize_file(source_, 10);
            return PROGRESS_CONTINUE;
        };
        EXPECT_EQ(Copy(0, &progress), ERROR_SUCCESS);
        const off_t size = FactsOf(target_).st_size;
        EXPECT_GE(size, 4096);
        EXPECT_LE(size, piece) << "nothing is made up";
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
    std::string bytes(static_cast<std::size_t>(2 * piece + 5), 'x');
    bytes[static_cast<std::size_t>(piece)] = 'y';
    WriteBytes(source_, bytes);
    const bool differs = FactsOf(other).st_dev != FactsOf(folder_.Path()).st_dev;
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
    const std::string bytes(static_cast<std::size_t>(3 * piece), 'x');
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
    WriteBytes(source_, std::string(static_cast<std::size_t>(2 * piece), 'x'));
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

TEST_F(CopyHere, PermissionBitsAreTheSourcesAsFarAsTheUmaskLetsANewFile)
{
    WriteBytes(source_, "a");
    ASSERT_EQ(chmod(At(source_).c_str(), 04646), 0);
    const mode_t before = umask(077);
    const DWORD made = Copy();
    WriteBytes(folder_ / u"taken", "old");
    const DWORD replaced = ErrorOfCopy(source_, folder_ / u"taken");
    umask(before);
    EXPECT_EQ(made, ERROR_SUCCESS);
    EXPECT_EQ(replaced, ERROR_SUCCESS);
    EXPECT_EQ(FactsOf(target_).st_mode & 07777, 0600U);
    EXPECT_EQ(FactsOf(folder_ / u"taken").st_mode & 07777, 0646U)
        << "a copy has nobody else's rights";
}

TEST_F(CopyHere, WhatOnlyTheOwnerMayReadIsNeverOpenToOthers)
{
    WriteBytes(source_, "secret");
    WriteBytes(target_, "old");
    ASSERT_EQ(chmod(At(source_).c_str(), 0600), 0);
    ASSERT_EQ(chmod(At(target_).c_str(), 0666), 0);
    Progress progress;
    progress.answer = [&](int n) {
        if (n == 2)
        {
            EXPECT_EQ(FactsOf(target_).st_mode & 0777, 0600U);
        }
        return PROGRESS_CONTINUE;
    };
    EXPECT_EQ(Copy(0, &progress), ERROR_SUCCESS);
    EXPECT_EQ(progress.questions, 2);
}

TEST_F(CopyHere, ExtendedAttributesStayBehind)
{
    WriteBytes(source_, "a");
    if (setxattr(At(source_).c_str(), "user.tarnwell", "x", 1, 0) != 0)
        GTEST_SKIP() << "there are none on this file system";
    EXPECT_EQ(Copy(), ERROR_SUCCESS);
    EXPECT_EQ(listxattr(At(target_).c_str(), nullptr, 0), 0);
}

TEST_F(CopyHere, WhatIsNoFileIsRefusedAndNothingWaits)
{
    ASSERT_EQ(mkfifo(At(folder_ / u"pipe").c_str(), 0600), 0);
    EXPECT_EQ(ErrorOfCopy(folder_ / u"pipe", target_), ERROR_NOT_SUPPORTED);
    EXPECT_EQ(ErrorOfCopy(u"/dev/zero", target_), ERROR_NOT_SUPPORTED);
    EXPECT_FALSE(fs::exists(target_));
    WriteBytes(source_, "a");
    EXPECT_EQ(ErrorOfCopy(source_, folder_ / u"pipe"), ERROR_NOT_SUPPORTED);
    EXPECT_EQ(ErrorOfCopy(source_, u"/dev/full"), ERROR_NOT_SUPPORTED);
    EXPECT_TRUE(fs::exists("/dev/full"));
}

TEST_F(CopyHere, AnyNameCanBeCopied)
{
    const fs::path odd = folder_.Path() / "\xff\n:\\";
    std::ofstream(odd) << "odd";
    EXPECT_EQ(ErrorOfCopy(folder_ / u"\xDCFF\n:\\", target_), ERROR_SUCCESS);
    EXPECT_EQ(ReadBytes(target_), "odd");
    EXPECT_EQ(ErrorOfCopy(u"", target_), ERROR_PATH_NOT_FOUND);
    EXPECT_EQ(ErrorOfCopy(target_, folder_ / u"\xD800"), ERROR_INVALID_NAME);
}

} // namespace
} // namespace tarnwell::test
