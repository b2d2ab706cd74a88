#include "unit/ftptest.h"

#include "frame/filetimes.h"
#include "ftp/ftppool.h"

namespace tarnwell::test
{

void PrintTo(const FtpFailure& failure, std::ostream* out)
{
    *out << std::hex << failure.code << ' ' << testing::PrintToString(failure.text);
}

FtpTest::FtpTest()
{
    user.SetHostObject(host->Unknown());
    ClearError();
}

FtpTest::~FtpTest()
{
    DrainPool(internet);
    EXPECT_THAT(internet.Open(), testing::IsEmpty());
}

std::size_t FtpTest::DrainPool(FakeInternet& internet)
{
    constexpr std::uint64_t hour = 36'000'000'000;
    const std::size_t before = internet.Calls(u"close root").size();
    TheConnectionPool().Prune(PresentTime() + hour);
    return internet.Calls(u"close root").size() - before;
}

} // namespace tarnwell::test
