// The file that a client writes by its name.
#include "platform/printtarget.h"
#include "platform/clients.h"
#include "support/environmentvalue.h"
#include "support/opened.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

namespace tarnwell::test
{
namespace
{

namespace fs = std::filesystem;

class PrintTargets : public testing::Test
{
protected:
    static std::u16string Made()
    {
        WCHAR path[MAX_PATH] = {};
        EXPECT_TRUE(MakePrintTarget(path));
        return std::u16string(Units(path));
    }
    static OsHandle Opened(const std::u16string& path)
    {
        return OsHandle(OpenPrintTarget(Wide(path)));
    }
    static std::string BytesIn(const OsHandle& file)
    {
        char bytes[16] = {};
        DWORD count = 0;
        EXPECT_TRUE(ReadFile(file.Get(), bytes, sizeof bytes, &count, nullptr));
        return std::string(bytes, count);
    }
    bool IsClean() const
    {
        return fs::is_empty(folder_.Path());
    }

    const TempFolder folder_;
    const EnvironmentValue variable_{temporaryFolderVariable, folder_.Path().string().c_str()};
};

TEST_F(PrintTargets, AreEmptyFilesWithNamesOfTheirOwn)
{
    const std::u16string first = Made();
    const std::u16string second = Made();
    EXPECT_NE(first, second);
    for (const std::u16string& path : {first, second})
    {
        EXPECT_TRUE(fs::is_regular_file(fs::path(path)));
        EXPECT_EQ(fs::file_size(fs::path(path)), 0U);
        EXPECT_TRUE(RemovePrintTarget(Wide(path)));
    }
    EXPECT_TRUE(IsClean());
}

TEST_F(PrintTargets, GoWithTheirHandleReadOnlyOrNot)
{
    for (const bool isReadOnly : {false, true})
    {
        const std::u16string path = Made();
        WriteBytes(path, "bytes");
        if (isReadOnly)
            fs::permissions(fs::path(path), fs::perms::owner_read);
        OsHandle file = Opened(path);
        ASSERT_TRUE(file);
        EXPECT_EQ(BytesIn(file), "bytes");
        file.Close();
        EXPECT_TRUE(IsClean());
    }
}

TEST_F(PrintTargets, AreRemovedReadOnlyOrNot)
{
    const std::u16string path = Made();
    WriteBytes(path, "bytes");
    fs::permissions(fs::path(path), fs::perms::owner_read);
    EXPECT_TRUE(RemovePrintTarget(Wide(path)));
    EXPECT_TRUE(IsClean());
}

TEST_F(PrintTargets, ThatAreGoneDoNotOpen)
{
    const std::u16string path = Made();
    fs::remove(fs::path(path));
    EXPECT_FALSE(Opened(path));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_FILE_NOT_FOUND));
    RemovePrintTarget(Wide(path));
    EXPECT_TRUE(IsClean());
}

TEST(Clients, AreFoundOnThePathOnly)
{
    const TempFolder folder;
    const EnvironmentValue path("PATH", folder.Path().string().c_str());
    const std::u16string name = u"tarnwell-test-client.exe";
    EXPECT_FALSE(FindClient(Wide(name)));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_FILE_NOT_FOUND));
}

} // namespace
} // namespace tarnwell::test
