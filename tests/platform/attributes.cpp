// The attributes of files and folders.
#include "support/opened.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

namespace tarnwell::test
{
namespace
{

DWORD AttributesOf(const std::u16string& path)
{
    return GetFileAttributesW(Wide(path));
}

DWORD ErrorOfAttributes(const std::u16string& path)
{
    return AttributesOf(path) == INVALID_FILE_ATTRIBUTES ? GetLastError() : ERROR_SUCCESS;
}

TEST(Attributes, FolderIsToldFromFile)
{
    const TempFolder folder;
    WriteBytes(folder / u"a", "");
    EXPECT_NE(AttributesOf(folder.Text()) & FILE_ATTRIBUTE_DIRECTORY, 0U);
    EXPECT_EQ(AttributesOf(folder / u"a") & FILE_ATTRIBUTE_DIRECTORY, 0U);
}

TEST(Attributes, MissingFileIsToldFromMissingFolder)
{
    const TempFolder folder;
    EXPECT_EQ(ErrorOfAttributes(folder / u"none"), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(ErrorOfAttributes(Joined(folder / u"none", u"a")), ERROR_PATH_NOT_FOUND);
    EXPECT_EQ(ErrorOfAttributes(u""), ERROR_PATH_NOT_FOUND);
}

TEST(Attributes, ReadOnlyIsSetAndCleared)
{
    const TempFolder folder;
    WriteBytes(folder / u"a", "");
    EXPECT_EQ(AttributesOf(folder / u"a") & FILE_ATTRIBUTE_READONLY, 0U);
    EXPECT_TRUE(SetFileAttributesW(Wide(folder / u"a"), FILE_ATTRIBUTE_READONLY));
    EXPECT_NE(AttributesOf(folder / u"a") & FILE_ATTRIBUTE_READONLY, 0U);
    EXPECT_TRUE(SetFileAttributesW(Wide(folder / u"a"), FILE_ATTRIBUTE_NORMAL));
    EXPECT_EQ(AttributesOf(folder / u"a") & FILE_ATTRIBUTE_READONLY, 0U);
}

TEST(Attributes, MissingFileCannotBeChanged)
{
    const TempFolder folder;
    const auto set = [](const std::u16string& path) {
        return ErrorOf(SetFileAttributesW(Wide(path), FILE_ATTRIBUTE_NORMAL));
    };
    EXPECT_EQ(set(folder / u"none"), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(set(Joined(folder / u"none", u"a")), ERROR_PATH_NOT_FOUND);
    EXPECT_EQ(set(u""), ERROR_PATH_NOT_FOUND);
}

} // namespace
} // namespace tarnwell::test
