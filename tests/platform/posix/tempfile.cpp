// Temporary files as only Linux has them.
#include "platform/opened.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>
#include <sys/stat.h>

namespace tarnwell::test
{
namespace
{

class TempFilePosix : public testing::Test
{
protected:
    TempFilePosix()
    {
        if (const char* const value = std::getenv("TMPDIR"))
            before_ = value;
    }
    ~TempFilePosix() override
    {
        if (before_)
            setenv("TMPDIR", before_->c_str(), 1);
        else
            unsetenv("TMPDIR");
    }

    // With TMPDIR at this value.
    static std::u16string FolderFor(const char* value)
    {
        setenv("TMPDIR", value, 1);
        WCHAR path[MAX_PATH] = {};
        const DWORD length = GetTempPathW(MAX_PATH, path);
        EXPECT_EQ(length, Units(path).size());
        return std::u16string(Units(path));
    }

private:
    std::optional<std::string> before_;
};

TEST_F(TempFilePosix, FolderIsNamedByTheEnvironment)
{
    EXPECT_EQ(FolderFor("/var/tmp"), u"/var/tmp/");
    EXPECT_EQ(FolderFor("/var/tmp/"), u"/var/tmp/");
    EXPECT_EQ(FolderFor("/a\xE4"), u"/a\xDCE4/");
    EXPECT_EQ(FolderFor("/"), u"/");
}

TEST_F(TempFilePosix, FolderThatIsNotAbsoluteDoesNotCount)
{
    EXPECT_EQ(FolderFor("relative"), u"/tmp/");
    EXPECT_EQ(FolderFor(""), u"/tmp/");
    unsetenv("TMPDIR");
    WCHAR path[MAX_PATH] = {};
    EXPECT_EQ(GetTempPathW(MAX_PATH, path), 5U);
    EXPECT_EQ(Units(path), u"/tmp/");
}

TEST_F(TempFilePosix, FolderMustFitTheBuffer)
{
    setenv("TMPDIR", "/1234567", 1);
    WCHAR path[10] = {};
    EXPECT_EQ(GetTempPathW(10, path), 9U);
    EXPECT_EQ(GetTempPathW(9, path), 0U);
    EXPECT_EQ(GetLastError(), ERROR_INSUFFICIENT_BUFFER);
}

TEST_F(TempFilePosix, FileIsTheUsersOnly)
{
    const mode_t before = umask(0);
    const TempFolder folder;
    WCHAR path[MAX_PATH] = {};
    EXPECT_NE(GetTempFileNameW(Wide(folder.Text()), u"vrl", 0, path), 0U);
    umask(before);
    struct stat facts = {};
    ASSERT_EQ(stat(std::filesystem::path(Units(path)).c_str(), &facts), 0);
    EXPECT_EQ(facts.st_mode & 07777, 0600U);
    EXPECT_TRUE(S_ISREG(facts.st_mode));
}

TEST_F(TempFilePosix, NumberIsThatOfTheName)
{
    const TempFolder folder;
    WCHAR path[MAX_PATH] = {};
    const UINT number = GetTempFileNameW(Wide(folder.Text()), u"vrl", 0, path);
    char name[32];
    std::snprintf(name, sizeof name, "vrl%08x.tmp", number);
    EXPECT_EQ(std::filesystem::path(Units(path)).filename(), name);
}

TEST_F(TempFilePosix, NameIsGoneAsSoonAsItIsOpened)
{
    const TempFolder folder;
    WCHAR path[MAX_PATH] = {};
    ASSERT_NE(GetTempFileNameW(Wide(folder.Text()), u"vrl", 0, path), 0U);
    const OsHandle file = Opened(std::u16string(Units(path)), GENERIC_READ | GENERIC_WRITE,
                                 OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL | FILE_FLAG_DELETE_ON_CLOSE);
    EXPECT_TRUE(file);
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
}

TEST_F(TempFilePosix, PathMustFit)
{
    const TempFolder folder;
    const std::u16string below = folder / std::u16string(240, u'a');
    std::filesystem::create_directory(std::filesystem::path(below));
    WCHAR path[MAX_PATH] = {};
    EXPECT_EQ(GetTempFileNameW(Wide(below), u"vrl", 0, path), 0U);
    EXPECT_EQ(GetLastError(), ERROR_BUFFER_OVERFLOW);
    EXPECT_TRUE(std::filesystem::is_empty(std::filesystem::path(below)));
}

TEST_F(TempFilePosix, OtherRequestsAreRefused)
{
    const TempFolder folder;
    WCHAR path[MAX_PATH] = {};
    EXPECT_EQ(GetTempFileNameW(Wide(folder.Text()), u"vrl", 7, path), 0U);
    EXPECT_EQ(GetLastError(), ERROR_NOT_SUPPORTED);
    EXPECT_EQ(GetTempFileNameW(u"", u"vrl", 0, path), 0U);
    EXPECT_EQ(GetLastError(), ERROR_DIRECTORY);
    EXPECT_EQ(GetTempFileNameW(nullptr, u"vrl", 0, path), 0U);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
}

} // namespace
} // namespace tarnwell::test
