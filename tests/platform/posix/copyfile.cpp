// Copying files: what only shows on this platform.
#include "platform/posix/copyhere.h"

#include <fstream>
#include <sys/wait.h>
#include <sys/xattr.h>

namespace tarnwell::test
{
namespace
{

namespace fs = std::filesystem;

TEST_F(CopyHere, OneQuestionBeforeTheFirstPieceAndOneAfterEach)
{
    struct Row
    {
        off_t size;
        int questions;
    };
    for (const Row row : {Row{0, 1},
                          {1, 2},
                          {copyPiece - 1, 2},
                          {copyPiece, 2},
                          {copyPiece + 1, 3},
                          {3 * copyPiece, 4}})
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
    EXPECT_EQ(LinkFacts(target_).st_mode & 07777, 0600U);
    EXPECT_EQ(LinkFacts(folder_ / u"taken").st_mode & 07777, 0646U)
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
            EXPECT_EQ(LinkFacts(target_).st_mode & 0777, 0600U);
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
