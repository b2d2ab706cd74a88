// What the platform's callers may ask for and this system has no notion of: nothing is refused.
#include "support/opened.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

namespace tarnwell::test
{
namespace
{

OsHandle OpenedAlone(const std::u16string& path, DWORD access)
{
    constexpr DWORD shareNone = 0;
    return OsHandle(CreateFileW(Wide(path), access, shareNone, nullptr, OPEN_EXISTING,
                                FILE_ATTRIBUTE_NORMAL, nullptr));
}

TEST(Unenforced, ShareModesKeepNobodyOut)
{
    const TempFolder folder;
    WriteBytes(folder / u"a", "x");
    const OsHandle first = OpenedAlone(folder / u"a", GENERIC_READ | GENERIC_WRITE);
    ASSERT_TRUE(first);
    EXPECT_TRUE(OpenedAlone(folder / u"a", GENERIC_READ));
    EXPECT_TRUE(OpenedAlone(folder / u"a", GENERIC_WRITE));
    EXPECT_TRUE(DeleteFileW(Wide(folder / u"a")));
    char byte = 0;
    DWORD moved = 0;
    EXPECT_TRUE(ReadFile(first.Get(), &byte, 1, &moved, nullptr));
    EXPECT_EQ(byte, 'x');
}

TEST(Unenforced, HiddenFilesAreMadeAnewAndDeleted)
{
    const TempFolder folder;
    WriteBytes(folder / u".dot", "x");
    ASSERT_EQ(GetFileAttributesW(Wide(folder / u".dot")), FILE_ATTRIBUTE_HIDDEN);
    EXPECT_TRUE(Opened(folder / u".dot", GENERIC_WRITE, CREATE_ALWAYS));
    EXPECT_EQ(ReadBytes(folder / u".dot"), "");
    EXPECT_TRUE(DeleteFileW(Wide(folder / u".dot")));
    EXPECT_FALSE(std::filesystem::exists(folder.Path() / ".dot"));
}

} // namespace
} // namespace tarnwell::test
