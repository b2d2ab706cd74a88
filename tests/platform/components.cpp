#include "platform/filetime.h"

#include <gtest/gtest.h>

namespace tarnwell::test
{
namespace
{

std::uint64_t Now()
{
    FILETIME now = {};
    EXPECT_EQ(CoFileTimeNow(&now), S_OK);
    return TimeOf(now);
}

TEST(FileTimeNow, CountsFrom1601)
{
    constexpr std::uint64_t year2020 = 132223104000000000;
    constexpr std::uint64_t year2200 = 189026784000000000;
    EXPECT_GT(Now(), year2020);
    EXPECT_LT(Now(), year2200);
}

TEST(ProgId, UnregisteredClassHasNone)
{
    constexpr CLSID unregistered{0x5A7E3C1D, 1, 2, {3, 4, 5, 6, 7, 8, 9, 10}};
    LPOLESTR progId = nullptr;
    EXPECT_EQ(ProgIDFromCLSID(unregistered, &progId), REGDB_E_CLASSNOTREG);
    EXPECT_EQ(progId, nullptr);
    CoTaskMemFree(nullptr);
}

} // namespace
} // namespace tarnwell::test
