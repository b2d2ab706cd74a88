// Names for temporary files.
#include "platform/opened.h"
#include "support/tempfolder.h"

#include <gmock/gmock.h>

#include <set>

namespace tarnwell::test
{
namespace
{

std::u16string NewTempFile(const std::u16string& folder)
{
    WCHAR path[MAX_PATH] = {};
    EXPECT_NE(GetTempFileNameW(Wide(folder), Wide(u"vrl"), 0, path), 0U);
    return std::u16string(Units(path));
}

DWORD ErrorOfNaming(const std::u16string& folder)
{
    WCHAR path[MAX_PATH] = {};
    return GetTempFileNameW(Wide(folder), Wide(u"vrl"), 0, path) != 0 ? ERROR_SUCCESS
                                                                      : GetLastError();
}

TEST(TempFile, FolderExistsAndEndsInASeparator)
{
    WCHAR path[MAX_PATH] = {};
    const DWORD length = GetTempPathW(MAX_PATH, path);
    const std::u16string folder(Units(path));
    EXPECT_EQ(length, folder.size());
    ASSERT_FALSE(folder.empty());
    EXPECT_EQ(folder.back(), static_cast<char16_t>(std::filesystem::path::preferred_separator));
    EXPECT_TRUE(std::filesystem::is_directory(std::filesystem::path(folder)));
}

TEST(TempFile, IsAnEmptyFileInTheFolder)
{
    const TempFolder folder;
    const std::filesystem::path file(NewTempFile(folder.Text()));
    EXPECT_EQ(file.parent_path(), folder.Path());
    EXPECT_TRUE(std::filesystem::is_regular_file(file));
    EXPECT_EQ(std::filesystem::file_size(file), 0U);
    EXPECT_TRUE(file.filename().u16string().starts_with(u"vrl"));
}

TEST(TempFile, SeparatorBehindTheFolderIsNotDoubled)
{
    const TempFolder folder;
    const std::u16string start = folder / u"";
    EXPECT_TRUE(NewTempFile(start).starts_with(start + u"vrl"));
}

TEST(TempFile, EachIsAnother)
{
    const TempFolder folder;
    std::set<std::u16string> names;
    for (int i = 0; i < 50; ++i)
        names.insert(NewTempFile(folder.Text()));
    EXPECT_EQ(names.size(), 50U);
}

TEST(TempFile, DeletesItselfWhenOpenedSo)
{
    const TempFolder folder;
    const std::u16string path = NewTempFile(folder.Text());
    OsHandle file = Opened(path, GENERIC_READ | GENERIC_WRITE, OPEN_EXISTING,
                           FILE_ATTRIBUTE_NORMAL | FILE_FLAG_DELETE_ON_CLOSE);
    ASSERT_TRUE(file);
    EXPECT_TRUE(file.Close());
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
}

TEST(TempFile, NeedsAFolder)
{
    const TempFolder folder;
    WriteBytes(folder / u"file", "");
    EXPECT_EQ(ErrorOfNaming(folder / u"none"), ERROR_DIRECTORY);
    EXPECT_EQ(ErrorOfNaming(folder / u"file"), ERROR_DIRECTORY);
}

} // namespace
} // namespace tarnwell::test
