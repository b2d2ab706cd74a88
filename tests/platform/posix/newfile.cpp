// New files: who may open them, and what is left of them.
#include "platform/newfile.h"
#include "frame/handle.h"
#include "platform/posix/files/filehandle.h"
#include "platform/posix/systemcalls.h"
#include "platform/wide.h"
#include "support/environmentvalue.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tarnwell::test
{
namespace
{

namespace fs = std::filesystem;

class FileBesideHere : public testing::Test
{
protected:
    mode_t ModeBeside(mode_t mode)
    {
        // Who isn't root can't write to the one before.
        fs::remove(beside_);
        WriteBytes(beside_, "");
        EXPECT_EQ(chmod(fs::path(beside_).c_str(), mode), 0);
        fs::remove(made_);
        EXPECT_TRUE(MakeFileBeside(made_, beside_));
        return ModeOf(made_);
    }
    static mode_t ModeOf(const fs::path& path)
    {
        struct stat facts = {};
        EXPECT_EQ(stat(path.c_str(), &facts), 0);
        return facts.st_mode & 07777;
    }

    TempFolder folder_;
    std::u16string beside_ = folder_ / u"a";
    std::u16string made_ = folder_ / u"made";
};

TEST_F(FileBesideHere, HasThePermissionBitsOfTheOther)
{
    const mode_t before = umask(022);
    for (const mode_t mode : {0600U, 0640U, 0644U, 0666U, 0755U, 0400U, 0004U})
        EXPECT_EQ(ModeBeside(mode), mode);
    EXPECT_EQ(ModeBeside(06755), 0755U) << "nobody else's rights";
    umask(before);
}

TEST_F(FileBesideHere, WithoutAnotherIsMadeAsTheUmaskSays)
{
    const mode_t before = umask(027);
    EXPECT_TRUE(MakeFileBeside(made_, beside_));
    EXPECT_TRUE(MakeFileBeside(folder_ / u"b", folder_.Text()));
    umask(before);
    EXPECT_EQ(ModeOf(made_), 0640U);
    EXPECT_EQ(ModeOf(folder_ / u"b"), 0640U) << "a folder is no such file";
}

TEST_F(FileBesideHere, IsNeverMoreOpenThanInTheEnd)
{
    WriteBytes(beside_, "");
    chmod(fs::path(beside_).c_str(), 0640);
    const mode_t before = umask(0);
    {
        SystemCalls calls;
        calls.Before("fchmod", 1, [&] { EXPECT_EQ(ModeOf(made_), 0600U); });
        EXPECT_TRUE(MakeFileBeside(made_, beside_));
    }
    umask(before);
}

TEST_F(FileBesideHere, ThatCannotHaveItsBitsIsRemoved)
{
    WriteBytes(beside_, "");
    chmod(fs::path(beside_).c_str(), 0200);
    SystemCalls calls;
    calls.Fail("fchmod", 1, EIO);
    calls.Before("fstat", 1, [&] { chmod(fs::path(made_).c_str(), 0666); });
    EXPECT_FALSE(MakeFileBeside(made_, beside_));
    EXPECT_EQ(GetLastError(), ERROR_IO_DEVICE);
    EXPECT_FALSE(fs::exists(made_));
}

TEST_F(FileBesideHere, WhereBitsAreNotKeptItIsAsOpenAsTheOther)
{
    WriteBytes(beside_, "");
    SystemCalls calls;
    calls.Fail("fchmod", 1, EPERM);
    EXPECT_TRUE(MakeFileBeside(made_, beside_));
}

TEST_F(FileBesideHere, IsNotMadeIfTheOtherCannotBeSeen)
{
    WriteBytes(beside_, "");
    SystemCalls calls;
    calls.Fail("stat", 1, EIO);
    EXPECT_FALSE(MakeFileBeside(made_, beside_));
    EXPECT_EQ(GetLastError(), ERROR_IO_DEVICE);
    EXPECT_FALSE(fs::exists(made_));
}

TEST_F(FileBesideHere, NeverTakesWhatSomebodyHasJustPutThere)
{
    SystemCalls calls;
    calls.Before("openat", 1, [&] { WriteBytes(made_, "somebody else's"); });
    EXPECT_FALSE(MakeFileBeside(made_, beside_));
    EXPECT_EQ(GetLastError(), ERROR_FILE_EXISTS);
    EXPECT_EQ(ReadBytes(made_), "somebody else's");
}

TEST_F(FileBesideHere, NoOtherNameIsTriedUnlessOneIsTaken)
{
    for (const DWORD error : {ERROR_PATH_NOT_FOUND, ERROR_BUSY, ERROR_IO_DEVICE})
        EXPECT_FALSE(MayTryAnotherName(error)) << error;
}

class OutputFileHere : public testing::Test
{
protected:
    static OsHandle New()
    {
        std::u16string unopened;
        return OsHandle(CreateOutputFile(unopened));
    }
    bool IsEmpty() const
    {
        return fs::is_empty(folder_.Path());
    }

    const TempFolder folder_;
    const EnvironmentValue temporary_{"TMPDIR", folder_.Path().c_str()};
};

TEST_F(OutputFileHere, HasNoNameAtAnyMoment)
{
    SystemCalls calls;
    const OsHandle file = New();
    ASSERT_TRUE(file);
    EXPECT_EQ(calls.Count("openat"), 1);
    EXPECT_EQ(calls.Count("unlink"), 0) << "there was nothing to remove";
    EXPECT_TRUE(IsEmpty());
    const std::string path = "/proc/self/fd/" + std::to_string(posix::DescriptorOf(file.Get()));
    const std::string name = folder_.Path() / "name";
    EXPECT_NE(linkat(AT_FDCWD, path.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW), 0)
        << "and it never gets one";
}

TEST_F(OutputFileHere, WhereAllFilesHaveNamesItLosesItsOwnAtOnce)
{
    for (const int number : {EOPNOTSUPP, EISDIR})
    {
        SystemCalls calls;
        calls.Fail("openat", 1, number);
        const OsHandle file = New();
        ASSERT_TRUE(file);
        EXPECT_EQ(calls.Count("unlink"), 1);
        EXPECT_TRUE(IsEmpty());
        struct stat facts = {};
        ASSERT_EQ(fstat(posix::DescriptorOf(file.Get()), &facts), 0);
        EXPECT_EQ(facts.st_mode, S_IFREG | 0600U);
        EXPECT_EQ(facts.st_nlink, 0U);
    }
}

TEST_F(OutputFileHere, ATakenNameIsNotTaken)
{
    SystemCalls calls;
    calls.Fail("openat", 1, EOPNOTSUPP);
    calls.Fail("openat", 2, EEXIST);
    ASSERT_TRUE(New());
    EXPECT_EQ(calls.Count("getrandom"), 2);
    EXPECT_EQ(calls.Count("openat"), 3);
    EXPECT_TRUE(IsEmpty());
}

TEST_F(OutputFileHere, IsNeverWhatSomebodyElseHasPutThere)
{
    fs::path taken;
    SystemCalls calls;
    calls.Fail("openat", 1, EOPNOTSUPP);
    calls.Before("openat", 2, [&] {
        taken = calls.Path();
        WriteBytes(taken.u16string(), "somebody else's");
    });
    const OsHandle file = New();
    ASSERT_TRUE(file);
    EXPECT_EQ(ReadBytes(taken.u16string()), "somebody else's");
    struct stat facts = {};
    ASSERT_EQ(fstat(posix::DescriptorOf(file.Get()), &facts), 0);
    EXPECT_EQ(facts.st_size, 0);
}

TEST_F(OutputFileHere, WithoutAFolderThereIsNone)
{
    temporary_.Set((folder_.Path() / "missing").c_str());
    EXPECT_FALSE(New());
    EXPECT_EQ(GetLastError(), ERROR_DIRECTORY);
    WriteBytes(folder_ / u"file", "");
    temporary_.Set((folder_.Path() / "file").c_str());
    EXPECT_FALSE(New());
    EXPECT_EQ(GetLastError(), ERROR_DIRECTORY);
}

TEST_F(OutputFileHere, GoesToNoOtherProgramByItself)
{
    const std::vector<int> before = InheritableDescriptors();
    const OsHandle file = New();
    EXPECT_EQ(InheritableDescriptors(), before);
}

} // namespace
} // namespace tarnwell::test
