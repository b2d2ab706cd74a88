// When the files of an FTP server were changed, in time zones of the test's own.
#include "module/ftptest.h"
#include "support/environmentvalue.h"
#include "support/ftp/scriptedserver.h"

#include <ctime>

namespace tarnwell::test
{
namespace
{

constexpr std::uint64_t ticksPerSecond = 10'000'000;
// 2 January and 2 July 2020, 10:30, as clocks show it.
constexpr std::uint64_t winterMorning = 132224346000000000;
constexpr std::uint64_t summerMorning = 132381594000000000;

// The zone of this process for as long as it lives. Its rules stand in the text, since a machine
// need not have the files of zones.
class TimeZone
{
public:
    explicit TimeZone(const char* rules)
    {
        value_.emplace("TZ", rules);
        tzset();
    }
    TimeZone(const TimeZone&) = delete;
    TimeZone& operator=(const TimeZone&) = delete;
    ~TimeZone()
    {
        value_.reset();
        tzset();
    }

    // How far its clocks are ahead at present, in seconds.
    static std::int64_t Advance()
    {
        const std::time_t now = std::time(nullptr);
        std::tm parts{};
        localtime_r(&now, &parts);
        return parts.tm_gmtoff;
    }

private:
    std::optional<EnvironmentValue> value_;
};

class FtpTimes : public FtpModuleTest, public testing::WithParamInterface<const char*>
{
protected:
    FtpTimes()
    {
        Use(server.Host());
    }

    std::vector<std::uint64_t> Times() const
    {
        std::vector<std::uint64_t> times;
        for (const Facts& facts : List(Address()))
            times.push_back(facts.time);
        return times;
    }

    const TimeZone zone{GetParam()};
    ScriptedFtpServer server;
};

TEST_P(FtpTimes, OfFactsAreTheSameInstant)
{
    server.OfferFacts();
    server.Answer("MLSD", {.first = "150 here\r\n",
                           .data = "type=file;modify=20200102103000; a\r\n"
                                   "type=file;modify=20200702103000.25; b\r\n"
                                   "type=file; unknown\r\n",
                           .last = "226 done\r\n"});
    EXPECT_THAT(Times(),
                testing::ElementsAre(winterMorning, summerMorning + ticksPerSecond / 4, 0));
}

// By the clocks here at present, whatever they will show at that time of the year.
TEST_P(FtpTimes, OfListsAreTheServersOwnClock)
{
    server.Answer("LIST", {.first = "150 here\r\n",
                           .data = "-rw-r--r-- 1 f f 5 2020-01-02 10:30 a\r\n"
                                   "-rw-r--r-- 1 f f 5 2020-07-02 10:30 b\r\n",
                           .last = "226 done\r\n"});
    const std::uint64_t advance = static_cast<std::uint64_t>(TimeZone::Advance()) * ticksPerSecond;
    EXPECT_THAT(Times(), testing::ElementsAre(winterMorning - advance, summerMorning - advance));
}

INSTANTIATE_TEST_SUITE_P(In, FtpTimes,
                         testing::Values("UTC0", "EST5EDT,M3.2.0,M11.1.0", "IST-5:30",
                                         "NZST-12NZDT,M9.5.0,M4.1.0/3"),
                         [](const auto& info) { return std::string(info.param).substr(0, 3); });

TEST(FtpTime, TheZonesOfTheseTestsAreInForce)
{
    const TimeZone zone("IST-5:30");
    EXPECT_EQ(TimeZone::Advance(), 19800);
}

} // namespace
} // namespace tarnwell::test
