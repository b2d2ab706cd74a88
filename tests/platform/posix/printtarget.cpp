// What a client may have put in the place of the file that it was to write; and clients on the
// PATH.
#include "platform/printtarget.h"
#include "platform/clients.h"
#include "platform/posix/systemcalls.h"
#include "support/environmentvalue.h"
#include "support/opened.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace tarnwell::test
{
namespace
{

namespace fs = std::filesystem;

class PrintTargetsOnLinux : public testing::Test
{
protected:
    PrintTargetsOnLinux()
    {
        WCHAR path[MAX_PATH] = {};
        EXPECT_TRUE(MakePrintTarget(path));
        path_ = fs::path(std::u16string(Units(path)));
    }

    // That it doesn't open, and that nothing is left.
    void ExpectRefused() const
    {
        const std::u16string path = path_.u16string();
        EXPECT_FALSE(OsHandle(OpenPrintTarget(Wide(path))));
        EXPECT_TRUE(RemovePrintTarget(Wide(path)));
        EXPECT_TRUE(fs::is_empty(folder_.Path()));
    }

    const TempFolder folder_;
    const TempFolder other_;
    const EnvironmentValue variable_{"TMPDIR", folder_.Path().c_str()};
    fs::path path_;
};

TEST_F(PrintTargetsOnLinux, LieInAFolderThatNobodyElseCanEnter)
{
    EXPECT_EQ(path_.parent_path().parent_path(), folder_.Path());
    EXPECT_TRUE(path_.parent_path().filename().string().starts_with("vrl"));
    struct stat entry;
    ASSERT_EQ(stat(path_.parent_path().c_str(), &entry), 0);
    EXPECT_EQ(entry.st_mode & 07777, 0700U);
    fs::remove_all(path_.parent_path());
}

TEST_F(PrintTargetsOnLinux, ThatAreLinksAreNeitherShownNorChanged)
{
    const fs::path secret = other_.Path() / "secret";
    WriteBytes(secret.u16string(), "secret");
    fs::permissions(secret, fs::perms::owner_read);
    fs::remove(path_);
    fs::create_symlink(secret, path_);
    ExpectRefused();
    EXPECT_EQ(ReadBytes(secret.u16string()), "secret");
    EXPECT_EQ(fs::status(secret).permissions(), fs::perms::owner_read);
}

TEST_F(PrintTargetsOnLinux, ThatArePipesAreRefusedAtOnce)
{
    fs::remove(path_);
    ASSERT_EQ(mkfifo(path_.c_str(), 0600), 0);
    ExpectRefused();
}

TEST_F(PrintTargetsOnLinux, ThatAreFoldersAreRemovedWithAllBelow)
{
    fs::remove(path_);
    fs::create_directories(path_ / "deep");
    WriteBytes((path_ / "deep" / "file").u16string(), "x");
    fs::create_symlink(other_.Path(), path_ / "link");
    ExpectRefused();
    EXPECT_TRUE(fs::exists(other_.Path()));
}

TEST_F(PrintTargetsOnLinux, TakeTheirFolderWithThemWhateverElseIsInIt)
{
    WriteBytes(path_.u16string(), "x");
    WriteBytes((path_.parent_path() / "left by the client").u16string(), "y");
    const OsHandle file(OpenPrintTarget(Wide(path_.u16string())));
    EXPECT_TRUE(file);
    EXPECT_TRUE(fs::is_empty(folder_.Path()));
}

TEST_F(PrintTargetsOnLinux, NeedAFolderAndAShortName)
{
    fs::remove_all(path_.parent_path());
    WCHAR path[MAX_PATH] = {};
    const EnvironmentValue missing("TMPDIR", (other_.Path() / "none").c_str());
    EXPECT_FALSE(MakePrintTarget(path));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_DIRECTORY));
    const EnvironmentValue longest("TMPDIR", ("/tmp/" + std::string(240, 'x')).c_str());
    EXPECT_FALSE(MakePrintTarget(path));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_BUFFER_OVERFLOW));
}

TEST_F(PrintTargetsOnLinux, ThatCannotBeMadeLeaveNoFolder)
{
    fs::remove_all(path_.parent_path());
    for (const char* const call : {"mkdtemp", "openat"})
    {
        SystemCalls calls;
        calls.Fail(call, 1, ENOSPC);
        WCHAR path[MAX_PATH] = {};
        EXPECT_FALSE(MakePrintTarget(path));
        EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_DISK_FULL)) << call;
        EXPECT_TRUE(fs::is_empty(folder_.Path())) << call;
    }
}

TEST_F(PrintTargetsOnLinux, ThatCannotBeOpenedStayUntilTheyAreRemoved)
{
    const std::u16string path = path_.u16string();
    for (const char* const call : {"openat", "fstat", "fchmod"})
    {
        SystemCalls calls;
        calls.Fail(call, 1, EACCES);
        EXPECT_FALSE(OsHandle(OpenPrintTarget(Wide(path)))) << call;
        EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_ACCESS_DENIED)) << call;
        EXPECT_TRUE(fs::exists(path_)) << call;
    }
    {
        // Its folder's removal.
        SystemCalls calls;
        calls.Fail("unlinkat", 1, EROFS);
        EXPECT_FALSE(OsHandle(OpenPrintTarget(Wide(path))));
        EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_WRITE_PROTECT));
    }
    EXPECT_TRUE(RemovePrintTarget(Wide(path)));
    EXPECT_TRUE(fs::is_empty(folder_.Path()));
}

TEST(ClientsOnLinux, AreProgramsInAbsoluteFolders)
{
    const TempFolder folder;
    const fs::path program = folder.Path() / "client";
    const std::u16string name = u"client";
    WriteBytes(program.u16string(), "#!/bin/sh\n");
    const EnvironmentValue path("PATH", ("/nowhere::" + folder.Path().string()).c_str());
    fs::permissions(program, fs::perms::owner_read);
    EXPECT_FALSE(FindClient(Wide(name))) << "nobody may run it";
    fs::permissions(program, fs::perms::owner_all);
    EXPECT_TRUE(FindClient(Wide(name)));
    const fs::path before = fs::current_path();
    fs::current_path(folder.Path());
    for (const char* const value : {"", ":", ".", "./", "/nowhere:"})
    {
        path.Set(value);
        EXPECT_FALSE(FindClient(Wide(name))) << value;
    }
    path.Set(nullptr);
    EXPECT_FALSE(FindClient(Wide(name)));
    fs::current_path(before);
    path.Set(folder.Path().c_str());
    fs::remove(program);
    fs::create_directory(program);
    EXPECT_FALSE(FindClient(Wide(name))) << "a folder is no program";
}

} // namespace
} // namespace tarnwell::test
