// The string tables that are built into every program of the module, by the platform's operations.
#include "support/stringtable.h"

#include "platform/modulehandle.h"

#include <gmock/gmock.h>

#include <vector>

namespace tarnwell::test
{

namespace
{

using testing::ElementsAre;
using testing::Optional;
using testing::SizeIs;

constexpr WORD present = 7;
constexpr WORD absent = 6;
constexpr LANGID english = 2057;
constexpr LANGID japanese = 1041;
constexpr LANGID korean = 1042;

// What a walk met, and after how many it is to stop.
struct Walk
{
    std::vector<unsigned> met;
    std::size_t limit = 100;

    BOOL Meet(unsigned value)
    {
        met.push_back(value);
        return met.size() < limit;
    }
};

BOOL CALLBACK MeetName(HMODULE, LPCWSTR type, LPWSTR name, LONG_PTR param)
{
    EXPECT_EQ(type, LPCWSTR{RT_STRING});
    return reinterpret_cast<Walk*>(param)->Meet(
        static_cast<unsigned>(reinterpret_cast<DWORD_PTR>(name)));
}

BOOL CALLBACK MeetLanguage(HMODULE, LPCWSTR type, LPCWSTR, WORD language, LONG_PTR param)
{
    EXPECT_EQ(type, LPCWSTR{RT_STRING});
    return reinterpret_cast<Walk*>(param)->Meet(language);
}

BOOL WalkNames(Walk& walk)
{
    return EnumResourceNamesW(ThisModule(), RT_STRING, MeetName, reinterpret_cast<LONG_PTR>(&walk));
}

BOOL WalkLanguages(Walk& walk, WORD name)
{
    return EnumResourceLanguagesW(ThisModule(), RT_STRING, MAKEINTRESOURCEW(name), MeetLanguage,
                                  reinterpret_cast<LONG_PTR>(&walk));
}

TEST(Resources, BlocksAreMetInOrder)
{
    Walk walk;
    EXPECT_TRUE(WalkNames(walk));
    EXPECT_THAT(walk.met, ElementsAre(7, 8, 9, 10, 11));
}

TEST(Resources, LanguagesAreMetInOrder)
{
    Walk walk;
    EXPECT_TRUE(WalkLanguages(walk, present));
    EXPECT_THAT(walk.met, ElementsAre(japanese, english));
}

TEST(Resources, ACallbackEndsTheWalk)
{
    Walk names{{}, 2};
    EXPECT_FALSE(WalkNames(names));
    EXPECT_THAT(names.met, ElementsAre(7, 8));
    Walk languages{{}, 1};
    EXPECT_FALSE(WalkLanguages(languages, present));
    EXPECT_THAT(languages.met, ElementsAre(japanese));
}

TEST(Resources, AWalkOverAnAbsentBlockFails)
{
    Walk walk;
    EXPECT_FALSE(WalkLanguages(walk, absent));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_RESOURCE_NAME_NOT_FOUND});
    EXPECT_THAT(walk.met, ElementsAre());
}

TEST(Resources, AWalkOverAnAbsentTypeFails)
{
    Walk walk;
    EXPECT_FALSE(EnumResourceNamesW(ThisModule(), MAKEINTRESOURCEW(77), MeetName,
                                    reinterpret_cast<LONG_PTR>(&walk)));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_RESOURCE_TYPE_NOT_FOUND});
}

TEST(Resources, ABlockHoldsSixteenTexts)
{
    for (const LANGID language : {english, japanese})
        EXPECT_THAT(ReadBlock(ThisModule(), present, language), Optional(SizeIs(16)));
}

TEST(Resources, AnAbsentBlockIsNotFound)
{
    EXPECT_EQ(ReadBlock(ThisModule(), absent, english), std::nullopt);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_RESOURCE_NAME_NOT_FOUND});
}

TEST(Resources, AnAbsentLanguageIsNotFound)
{
    EXPECT_EQ(ReadBlock(ThisModule(), present, korean), std::nullopt);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_RESOURCE_LANG_NOT_FOUND});
}

} // namespace

} // namespace tarnwell::test
