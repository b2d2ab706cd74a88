// New files: beside another one, and for output.
#include "platform/newfile.h"
#include "frame/handle.h"
#include "platform/wide.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

namespace tarnwell::test
{
namespace
{

TEST(FileBeside, IsNewAndEmpty)
{
    const TempFolder folder;
    WriteBytes(folder / u"a", "12345");
    EXPECT_TRUE(MakeFileBeside(folder / u"new", folder / u"a"));
    EXPECT_EQ(ReadBytes(folder / u"new"), "");
    WriteBytes(folder / u"new", "kept");
    EXPECT_FALSE(MakeFileBeside(folder / u"new", folder / u"a"));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_FILE_EXISTS});
    EXPECT_EQ(ReadBytes(folder / u"new"), "kept");
}

TEST(FileBeside, NeedsNothingBesideIt)
{
    const TempFolder folder;
    EXPECT_TRUE(MakeFileBeside(folder / u"new", folder / u"missing"));
    EXPECT_TRUE(MakeFileBeside(folder / u"newer", folder.Text()));
    EXPECT_FALSE(MakeFileBeside(Joined(folder / u"missing", u"new"), folder / u"a"));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_PATH_NOT_FOUND});
}

TEST(FileBeside, AnotherNameIsTriedWhereOneIsTaken)
{
    EXPECT_TRUE(MayTryAnotherName(ERROR_FILE_EXISTS));
    EXPECT_FALSE(MayTryAnotherName(ERROR_ACCESS_DENIED));
}

TEST(OutputFile, IsWrittenAndReadAgain)
{
    std::u16string unopened;
    const OsHandle file(CreateOutputFile(unopened));
    ASSERT_TRUE(file);
    EXPECT_EQ(unopened, u"");
    DWORD moved = 0;
    char read[6] = {};
    EXPECT_TRUE(ReadFile(file.Get(), read, 5, &moved, nullptr));
    EXPECT_EQ(moved, 0U) << "it is empty";
    EXPECT_TRUE(WriteFile(file.Get(), "12345", 5, &moved, nullptr));
    EXPECT_EQ(SetFilePointer(file.Get(), 0, nullptr, FILE_BEGIN), 0U);
    EXPECT_TRUE(ReadFile(file.Get(), read, 5, &moved, nullptr));
    EXPECT_STREQ(read, "12345");
}

} // namespace
} // namespace tarnwell::test
