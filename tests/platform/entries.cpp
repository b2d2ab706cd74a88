// Removing files and making folders.
#include "support/opened.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

namespace tarnwell::test
{
namespace
{

DWORD Delete(const std::u16string& path)
{
    return ErrorOf(DeleteFileW(Wide(path)));
}

DWORD MakeFolder(const std::u16string& path)
{
    return ErrorOf(CreateDirectoryW(Wide(path), nullptr));
}

TEST(FileRemoval, RemovesAFile)
{
    const TempFolder folder;
    WriteBytes(folder / u"a", "x");
    EXPECT_EQ(Delete(folder / u"a"), ERROR_SUCCESS);
    EXPECT_FALSE(std::filesystem::exists(folder.Path() / "a"));
}

TEST(FileRemoval, MissingFileIsToldFromMissingFolder)
{
    const TempFolder folder;
    EXPECT_EQ(Delete(folder / u"none"), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(Delete(Joined(folder / u"none", u"a")), ERROR_PATH_NOT_FOUND);
    EXPECT_EQ(Delete(u""), ERROR_PATH_NOT_FOUND);
}

TEST(FileRemoval, RefusesFoldersEvenEmptyOnes)
{
    const TempFolder folder;
    ASSERT_EQ(MakeFolder(folder / u"sub"), ERROR_SUCCESS);
    EXPECT_EQ(Delete(folder / u"sub"), ERROR_ACCESS_DENIED);
    EXPECT_TRUE(std::filesystem::exists(folder.Path() / "sub"));
}

TEST(FileRemoval, RefusesReadOnlyFiles)
{
    const TempFolder folder;
    WriteBytes(folder / u"a", "x");
    ASSERT_TRUE(SetFileAttributesW(Wide(folder / u"a"), FILE_ATTRIBUTE_READONLY));
    EXPECT_EQ(Delete(folder / u"a"), ERROR_ACCESS_DENIED);
    EXPECT_EQ(ReadBytes(folder / u"a"), "x");
}

TEST(FolderCreation, MakesOneLevel)
{
    const TempFolder folder;
    EXPECT_EQ(MakeFolder(folder / u"sub"), ERROR_SUCCESS);
    EXPECT_TRUE(std::filesystem::is_directory(folder.Path() / "sub"));
    EXPECT_EQ(MakeFolder(Joined(folder / u"none", u"sub")), ERROR_PATH_NOT_FOUND);
    EXPECT_EQ(MakeFolder(u""), ERROR_PATH_NOT_FOUND);
}

TEST(FolderCreation, RefusesWhatExists)
{
    const TempFolder folder;
    WriteBytes(folder / u"file", "");
    EXPECT_EQ(MakeFolder(folder.Text()), ERROR_ALREADY_EXISTS);
    EXPECT_EQ(MakeFolder(folder / u"file"), ERROR_ALREADY_EXISTS);
    EXPECT_EQ(MakeFolder(Joined(folder / u"file", u"sub")), ERROR_PATH_NOT_FOUND);
}

} // namespace
} // namespace tarnwell::test
