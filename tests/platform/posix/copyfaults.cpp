// Copies that fail on the way, or that somebody else gets into the way of. Nobody's bytes are lost
// or mixed with others.
#include "platform/copied.h"
#include "platform/posix/systemcalls.h"
#include "support/tempfolder.h"

#include <gmock/gmock.h>

#include <cerrno>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace tarnwell::test
{
namespace
{

namespace fs = std::filesystem;

using testing::AnyOf;

class CopyFaults : public testing::Test
{
protected:
    CopyFaults()
    {
        WriteBytes(source_, "new");
    }

    DWORD Copy(DWORD flags = 0, Progress* progress = nullptr) const
    {
        return ErrorOfCopy(source_, target_, flags, progress);
    }
    // As a careful program replaces a file: at once, by another.
    void Replace() const
    {
        WriteBytes(folder_ / u"other", "somebody else's");
        fs::rename(folder_ / u"other", target_);
    }
    static mode_t ModeOf(const fs::path& path)
    {
        struct stat facts = {};
        EXPECT_EQ(stat(path.c_str(), &facts), 0);
        return facts.st_mode & 07777;
    }
    std::ptrdiff_t Entries() const
    {
        return std::distance(fs::directory_iterator(folder_.Path()), fs::directory_iterator());
    }

    TempFolder folder_;
    std::u16string source_ = folder_ / u"source";
    std::u16string target_ = folder_ / u"target";
};

TEST_F(CopyFaults, ALookThatFailsOnceFailsTheCopy)
{
    for (const int number : {EIO, EACCES, ESTALE, ENOMEM})
    {
        WriteBytes(target_, "old and longer");
        SystemCalls calls;
        calls.Fail("stat", 1, number);
        EXPECT_NE(Copy(), ERROR_SUCCESS);
        EXPECT_EQ(ReadBytes(target_), "old and longer");
    }
}

TEST_F(CopyFaults, ALookThatFailsDoesNotLetAFileIntoItself)
{
    fs::create_symlink("source", target_);
    SystemCalls calls;
    calls.Fail("stat", 1, EIO);
    EXPECT_EQ(Copy(), ERROR_IO_DEVICE);
    EXPECT_EQ(ReadBytes(source_), "new");
}

TEST_F(CopyFaults, EveryFailingCallLeavesAllOrNothing)
{
    // The copy is right, or it failed and left the old file, or none.
    const auto check = [&](const char* call, int n, bool existed, DWORD error) {
        const std::string left = fs::exists(target_) ? ReadBytes(target_) : "";
        if (error == ERROR_SUCCESS)
            EXPECT_EQ(left, "new") << call << n;
        else
            EXPECT_THAT(left, AnyOf("", existed ? "old and longer" : "")) << call << n;
        EXPECT_EQ(ReadBytes(source_), "new") << call << n;
    };
    for (const bool existed : {false, true})
    {
        for (const char* const call : {"openat", "stat", "fstat", "lstat", "ftruncate", "fchmod",
                                       "read", "write", "copy_file_range", "fgetxattr"})
        {
            for (int n = 1; n < 20; ++n)
            {
                fs::remove(target_);
                if (existed)
                    WriteBytes(target_, "old and longer");
                int made = 0;
                {
                    SystemCalls count;
                    Copy();
                    made = count.Count(call);
                }
                if (n > made)
                    break;
                fs::remove(target_);
                if (existed)
                    WriteBytes(target_, "old and longer");
                DWORD error = ERROR_SUCCESS;
                {
                    SystemCalls calls;
                    calls.Fail(call, n, EIO);
                    error = Copy();
                }
                check(call, n, existed, error);
            }
        }
    }
}

TEST_F(CopyFaults, WhoReplacesTheTargetBeforeItIsOpenedKeepsTheirFile)
{
    WriteBytes(target_, "old");
    SystemCalls calls;
    // The first two are the source, and the target as a new file.
    calls.Before("openat", 3, [&] { Replace(); });
    EXPECT_EQ(Copy(), ERROR_SHARING_VIOLATION);
    EXPECT_EQ(ReadBytes(target_), "somebody else's");
}

TEST_F(CopyFaults, WhoPutsTheSourceInTheTargetsPlaceLosesNothing)
{
    WriteBytes(target_, "old");
    SystemCalls calls;
    calls.Before("openat", 3, [&] {
        fs::remove(target_);
        fs::create_hard_link(source_, target_);
    });
    EXPECT_EQ(Copy(), ERROR_SHARING_VIOLATION);
    EXPECT_EQ(ReadBytes(source_), "new");
}

TEST_F(CopyFaults, WhoTakesTheTargetAwayBeforeItIsOpenedIsNotOverruled)
{
    WriteBytes(target_, "old");
    SystemCalls calls;
    calls.Before("openat", 3, [&] { fs::remove(target_); });
    EXPECT_EQ(Copy(), ERROR_SHARING_VIOLATION);
    EXPECT_FALSE(fs::exists(target_));
}

TEST_F(CopyFaults, WhoMakesAFileWhereALinkLedToNothingKeepsIt)
{
    fs::create_symlink("to", target_);
    SystemCalls calls;
    calls.Before("openat", 3, [&] { WriteBytes(folder_ / u"to", "somebody else's"); });
    // The new file is one that is there: it is what the user wants to write over.
    EXPECT_EQ(Copy(), ERROR_SUCCESS);
    EXPECT_EQ(ReadBytes(folder_ / u"to"), "new") << "and nothing of the longer one is left";
}

TEST_F(CopyFaults, WhoMovesTheTargetAwayDuringTheQuestionKeepsWhatIsInIt)
{
    WriteBytes(target_, "old");
    Progress progress;
    progress.answer = [&](int n) {
        if (n == 1)
        {
            fs::rename(target_, folder_ / u"kept");
            WriteBytes(target_, "somebody else's");
        }
        return PROGRESS_CONTINUE;
    };
    EXPECT_EQ(Copy(0, &progress), ERROR_SHARING_VIOLATION);
    EXPECT_EQ(ReadBytes(folder_ / u"kept"), "old");
    EXPECT_EQ(ReadBytes(target_), "somebody else's");
}

TEST_F(CopyFaults, WhoReplacesAHalfCopyKeepsTheirFile)
{
    for (const bool existed : {false, true})
    {
        for (const DWORD answer : {PROGRESS_CONTINUE, PROGRESS_CANCEL})
        {
            fs::remove(target_);
            if (existed)
                WriteBytes(target_, "old");
            Progress progress;
            progress.answer = [&](int n) {
                if (n == 2)
                    Replace();
                return n == 2 ? answer : PROGRESS_CONTINUE;
            };
            EXPECT_EQ(Copy(0, &progress), answer == PROGRESS_CONTINUE ? ERROR_SHARING_VIOLATION
                                                                      : ERROR_REQUEST_ABORTED);
            EXPECT_EQ(ReadBytes(target_), "somebody else's");
        }
    }
}

// The last moment: the half copy was looked at and found to be the copy's own.
TEST_F(CopyFaults, WhoReplacesAHalfCopyAsItIsRemovedKeepsTheirFile)
{
    for (const char* const link : {"", "target"})
    {
        fs::remove(target_);
        if (*link != 0)
            fs::create_symlink(link, folder_ / u"link");
        Progress progress;
        progress.answer = [](int n) {
            return n == 2 ? PROGRESS_CANCEL : PROGRESS_CONTINUE;
        };
        SystemCalls calls;
        calls.Before("renameat2", 1, [&] { Replace(); });
        EXPECT_EQ(ErrorOfCopy(source_, *link != 0 ? folder_ / u"link" : target_, 0, &progress),
                  ERROR_REQUEST_ABORTED);
        EXPECT_EQ(ReadBytes(target_), "somebody else's");
        EXPECT_EQ(Entries(), *link != 0 ? 3 : 2) << "and nothing else is left";
    }
}

TEST_F(CopyFaults, WhoseFileHasLostItsNameToAThirdIsNotRemovedEither)
{
    Progress progress;
    progress.answer = [](int n) {
        return n == 2 ? PROGRESS_CANCEL : PROGRESS_CONTINUE;
    };
    {
        SystemCalls calls;
        calls.Before("renameat2", 1, [&] { Replace(); });
        calls.Before("renameat2", 2, [&] { WriteBytes(target_, "a third one's"); });
        EXPECT_EQ(Copy(0, &progress), ERROR_REQUEST_ABORTED);
    }
    EXPECT_EQ(ReadBytes(target_), "a third one's");
    EXPECT_EQ(Entries(), 3) << "the other one has a name that tells of it";
}

TEST_F(CopyFaults, AHalfCopyGoesWhereFilesAreNotMovedAside)
{
    Progress progress;
    progress.answer = [](int n) {
        return n == 2 ? PROGRESS_CANCEL : PROGRESS_CONTINUE;
    };
    for (const char* const call : {"renameat2", "getrandom"})
    {
        progress.questions = 0;
        SystemCalls calls;
        calls.Fail(call, 1, EINVAL);
        EXPECT_EQ(Copy(0, &progress), ERROR_REQUEST_ABORTED);
        EXPECT_EQ(Entries(), 1) << call;
    }
}

TEST_F(CopyFaults, WhoReplacesWhatALinkIsToReplaceKeepsTheirFile)
{
    fs::create_symlink("nowhere", folder_ / u"link");
    WriteBytes(target_, "old");
    SystemCalls calls;
    calls.Before("renameat2", 1, [&] { Replace(); });
    EXPECT_EQ(ErrorOfCopy(folder_ / u"link", target_, COPY_FILE_COPY_SYMLINK),
              ERROR_SHARING_VIOLATION);
    EXPECT_EQ(ReadBytes(target_), "somebody else's");
    EXPECT_EQ(Entries(), 3);
}

TEST_F(CopyFaults, ALinkAsSuchIsNotCopiedWhereALookFails)
{
    fs::create_symlink("target", folder_ / u"link");
    WriteBytes(target_, "mine");
    for (const char* const call : {"stat", "lstat"})
    {
        SystemCalls calls;
        calls.Fail(call, 1, EIO);
        EXPECT_EQ(ErrorOfCopy(folder_ / u"link", target_, COPY_FILE_COPY_SYMLINK), ERROR_IO_DEVICE);
        EXPECT_EQ(ReadBytes(target_), "mine");
        EXPECT_FALSE(fs::is_symlink(target_));
    }
}

TEST_F(CopyFaults, SignalsInterruptNothing)
{
    const std::string bytes(300'000, 'x');
    WriteBytes(source_, bytes);
    WriteBytes(target_, "old");
    SystemCalls calls;
    calls.Interrupt("openat");
    calls.Interrupt("ftruncate");
    calls.Interrupt("copy_file_range");
    EXPECT_EQ(Copy(), ERROR_SUCCESS);
    EXPECT_TRUE(ReadBytes(target_) == bytes);
}

TEST_F(CopyFaults, SignalsInterruptNothingWhereTheSystemDoesNotCopy)
{
    const std::string bytes(300'000, 'x');
    WriteBytes(source_, bytes);
    SystemCalls calls;
    calls.Fail("copy_file_range", 1, EOPNOTSUPP);
    calls.Interrupt("read");
    calls.Interrupt("write");
    EXPECT_EQ(Copy(), ERROR_SUCCESS);
    EXPECT_TRUE(ReadBytes(target_) == bytes);
}

TEST_F(CopyFaults, SignalsDoNotShortenAHole)
{
    WriteBytes(source_, "");
    fs::resize_file(source_, 1 << 20);
    SystemCalls calls;
    calls.Interrupt("ftruncate");
    EXPECT_EQ(Copy(), ERROR_SUCCESS);
    EXPECT_EQ(fs::file_size(target_), 1U << 20);
}

TEST_F(CopyFaults, NoDescriptorGoesToAnotherProgram)
{
    const std::vector<int> before = InheritableDescriptors();
    for (const bool existed : {false, true})
    {
        Progress progress;
        progress.answer = [&](int) {
            EXPECT_EQ(InheritableDescriptors(), before) << existed;
            return PROGRESS_CONTINUE;
        };
        EXPECT_EQ(Copy(0, &progress), ERROR_SUCCESS);
        EXPECT_EQ(progress.questions, 2);
    }
}

// A list that names somebody, and lets them, the group or the others do what its row says.
void SetAccessList(const fs::path& path, std::initializer_list<std::array<unsigned, 3>> entries)
{
    std::string list("\2\0\0\0", 4);
    const auto put = [&](unsigned number, int bytes) {
        for (int i = 0; i < bytes; ++i)
            list += static_cast<char>(number >> (8 * i));
    };
    for (const auto& [tag, bits, id] : entries)
    {
        put(tag, 2);
        put(bits, 2);
        put(id, 4);
    }
    if (setxattr(path.c_str(), "system.posix_acl_access", list.data(), list.size(), 0) != 0)
        GTEST_SKIP() << "there are no access lists on this file system";
}

constexpr unsigned nobody = ~0U;

TEST_F(CopyFaults, WhatAnAccessListDeniesTheCopyDoesNotGrant)
{
    // The owner, user 12345, the group, the bound, the others.
    ASSERT_NO_FATAL_FAILURE(SetAccessList(source_, {{0x01, 6, nobody},
                                                    {0x02, 6, 12345},
                                                    {0x04, 0, nobody},
                                                    {0x10, 6, nobody},
                                                    {0x20, 4, nobody}}));
    if (IsSkipped())
        return;
    ASSERT_EQ(ModeOf(source_), 0664U) << "the bound stands in the group's place";
    EXPECT_EQ(Copy(), ERROR_SUCCESS);
    EXPECT_EQ(ModeOf(target_), 0604U);
    EXPECT_EQ(Copy(), ERROR_SUCCESS) << "over a file that is there";
    EXPECT_EQ(ModeOf(target_), 0604U);
}

TEST_F(CopyFaults, WhoIsKeptOutByNameStaysOut)
{
    ASSERT_NO_FATAL_FAILURE(SetAccessList(source_, {{0x01, 6, nobody},
                                                    {0x02, 0, 12345},
                                                    {0x04, 4, nobody},
                                                    {0x08, 4, 12345},
                                                    {0x10, 4, nobody},
                                                    {0x20, 4, nobody}}));
    if (IsSkipped())
        return;
    EXPECT_EQ(Copy(), ERROR_SUCCESS);
    EXPECT_EQ(ModeOf(target_), 0600U);
}

TEST_F(CopyFaults, AnAccessListThatCannotBeReadLeavesTheOwner)
{
    ASSERT_EQ(chmod(fs::path(source_).c_str(), 0666), 0);
    SystemCalls calls;
    calls.Fail("fgetxattr", 1, EIO);
    EXPECT_EQ(Copy(), ERROR_SUCCESS);
    EXPECT_EQ(ModeOf(target_), 0600U);
}

} // namespace
} // namespace tarnwell::test
