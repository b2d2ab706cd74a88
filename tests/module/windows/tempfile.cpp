// Temporary files beside targets on drives.
#include "module/localtest.h"

namespace tarnwell::test
{

namespace
{

TEST_F(LocalTest, ATemporaryFileBesideADriveRelativePathIsDriveRelativeToo)
{
    const CurrentFolder current(folder.Path());
    const std::u16string drive = folder.Text().substr(0, 2);
    Bstr made;
    EXPECT_EQ(system->CreateTempFile(Ole(drive + u"a.txt"), made.Out()), S_OK);
    EXPECT_EQ(made.View(), drive + u"vrltmp0");
    EXPECT_TRUE(Exists(folder / u"vrltmp0"));
}

TEST_F(LocalTest, ATemporaryFileInTheRootOfADriveHasOneSeparator)
{
    Bstr made;
    const HRESULT status = system->CreateTempFile(Ole(u"C:\\x"), made.Out());
    if (status == Win32Status(5))
        GTEST_SKIP() << "nothing may be made there";
    EXPECT_EQ(status, S_OK);
    const std::u16string path(made.View());
    EXPECT_TRUE(path.starts_with(u"C:\\vrltmp")) << testing::PrintToString(path);
    EXPECT_TRUE(std::filesystem::remove(path));
}

} // namespace

} // namespace tarnwell::test
