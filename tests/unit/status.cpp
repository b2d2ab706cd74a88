// Statuses out of the platform's error codes.
#include "frame/status.h"

#include <gmock/gmock.h>

namespace tarnwell::test
{

namespace
{

constexpr HRESULT ResultOf(std::uint32_t value)
{
    return static_cast<HRESULT>(value);
}

TEST(Status, PositiveCodesKeepTheirLowHalf)
{
    EXPECT_EQ(StatusFromError(1), ResultOf(0x80070001));
    EXPECT_EQ(StatusFromError(ERROR_FILE_NOT_FOUND), ResultOf(0x80070002));
    EXPECT_EQ(StatusFromError(ERROR_ALREADY_EXISTS), ResultOf(0x800700B7));
    EXPECT_EQ(StatusFromError(0xFFFF), ResultOf(0x8007FFFF));
    EXPECT_EQ(StatusFromError(0x12345), ResultOf(0x80072345));
    EXPECT_EQ(StatusFromError(0x7FFFFFFF), ResultOf(0x8007FFFF));
}

TEST(Status, ACodeOfZeroIsASuccess)
{
    EXPECT_EQ(StatusFromError(0), S_OK);
}

TEST(Status, CodesThatAreStatusesStay)
{
    EXPECT_EQ(StatusFromError(0x80000000), ResultOf(0x80000000));
    EXPECT_EQ(StatusFromError(0x80070005), E_ACCESSDENIED);
    EXPECT_EQ(StatusFromError(0xFFFFFFFF), ResultOf(0xFFFFFFFF));
}

TEST(Status, TheLastErrorIsTakenTheSameWay)
{
    SetLastError(ERROR_DISK_FULL);
    EXPECT_EQ(StatusFromLastError(), ResultOf(0x80070070));
    SetLastError(ERROR_SUCCESS);
    EXPECT_EQ(StatusFromLastError(), S_OK);
}

TEST(Status, AFailedCallIsReportedAsFailed)
{
    EXPECT_EQ(EnsureFailed(S_OK), DISP_E_EXCEPTION);
    EXPECT_EQ(EnsureFailed(S_FALSE), DISP_E_EXCEPTION);
    EXPECT_EQ(EnsureFailed(E_FAIL), E_FAIL);
}

} // namespace

} // namespace tarnwell::test
