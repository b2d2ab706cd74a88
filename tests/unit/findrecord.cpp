// The find record as all local objects pass it around.
#include "local/findrecord.h"

#include <gmock/gmock.h>

namespace tarnwell::test
{

namespace
{

TEST(FindRecord, NamesAreCutToWhatFits)
{
    WIN32_FIND_DATAW record{};
    SetNames(record, std::u16string(300, u'x'));
    EXPECT_EQ(Units(record.cFileName), std::u16string(259, u'x'));
    EXPECT_EQ(Units(record.cAlternateFileName), std::u16string(13, u'x'));
    SetNames(record, u"short");
    EXPECT_EQ(NameOf(record), u"short");
    EXPECT_EQ(Units(record.cAlternateFileName), u"short");
    SetNames(record, u"");
    EXPECT_EQ(NameOf(record), u"");
}

TEST(FindRecord, TimesAreTwoHalves)
{
    constexpr std::uint64_t time = 0x0123456789ABCDEF;
    const FILETIME halves = FileTimeOf(time);
    EXPECT_EQ(halves.dwHighDateTime, 0x01234567U);
    EXPECT_EQ(halves.dwLowDateTime, 0x89ABCDEFU);
    EXPECT_EQ(TimeOf(halves), time);
}

TEST(FindRecord, OneAttributeTellsFolders)
{
    WIN32_FIND_DATAW record{};
    record.dwFileAttributes = 0xFFFFFFEF;
    EXPECT_FALSE(IsFolder(record));
    record.dwFileAttributes = FILE_ATTRIBUTE_DIRECTORY;
    EXPECT_TRUE(IsFolder(record));
}

} // namespace

} // namespace tarnwell::test
