// Sharing is enforced here, unlike elsewhere.
#include "support/opened.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

namespace tarnwell::test
{
namespace
{

TEST(Sharing, FileThatIsNotSharedStaysClosedToOthers)
{
    const TempFolder folder;
    const std::u16string path = folder / u"a";
    const OsHandle alone(CreateFileW(Wide(path), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                     FILE_ATTRIBUTE_NORMAL, nullptr));
    ASSERT_TRUE(alone);
    EXPECT_EQ(ErrorOfOpening(path, GENERIC_READ, OPEN_EXISTING), ERROR_SHARING_VIOLATION);
}

TEST(Sharing, OpenFileThatIsNotSharedForRemovalStays)
{
    const TempFolder folder;
    const std::u16string path = folder / u"a";
    const OsHandle reader(CreateFileW(Wide(path), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                      CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
    ASSERT_TRUE(reader);
    EXPECT_EQ(ErrorOf(DeleteFileW(Wide(path))), ERROR_SHARING_VIOLATION);
}

} // namespace
} // namespace tarnwell::test
