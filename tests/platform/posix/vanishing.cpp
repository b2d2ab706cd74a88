// Entries that go while their folder is listed.
#include "platform/listing.h"
#include "support/opened.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

namespace tarnwell::test
{
namespace
{

// The system hands out names by the bundle, so that those that are gone by now still come.
TEST(Vanishing, EntriesAreSkipped)
{
    const TempFolder folder;
    const std::u16string names[] = {u"a", u"b", u"c"};
    for (const std::u16string& name : names)
        WriteBytes(folder / name, "");
    WIN32_FIND_DATAW record;
    const FindHandle find(FindFirstFileW(Wide(folder / u"*"), &record));
    ASSERT_TRUE(find);
    ASSERT_TRUE(FindNextFileW(find.Get(), &record));
    ASSERT_EQ(Units(record.cFileName), u"..");
    ASSERT_TRUE(FindNextFileW(find.Get(), &record));
    for (const std::u16string& name : names)
    {
        if (name != Units(record.cFileName))
        {
            EXPECT_TRUE(DeleteFileW(Wide(folder / name)));
        }
    }
    EXPECT_EQ(ErrorOf(FindNextFileW(find.Get(), &record)), ERROR_NO_MORE_FILES);
}

} // namespace
} // namespace tarnwell::test
