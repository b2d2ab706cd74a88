// The program on a terminal, with files on real FTP servers: progress, and Ctrl-C in the middle.
#include "e2e/posix/ftpbar.h"
#include "e2e/posix/ftphost.h"

#include <chrono>
#include <fstream>
#include <sstream>
#include <thread>

namespace tarnwell::test
{
namespace
{

namespace fs = std::filesystem;
using testing::EndsWith;
using testing::HasSubstr;

class FtpTerminal : public FtpHost
{
protected:
    ~FtpTerminal() override
    {
        EXPECT_TRUE(EverybodyLeaves());
    }

    TerminalRun LoggedOnUntil(const std::string& pattern,
                              const std::vector<std::u16string>& arguments) const
    {
        std::vector<std::string> texts;
        for (const std::u16string& argument : LoggedOn(arguments))
            texts.push_back(Utf8(argument));
        return RunUntil(pattern, texts);
    }

private:
    // Whether, within reason, the server has no connection any more.
    bool EverybodyLeaves() const
    {
        constexpr int tries = 1000;
        constexpr std::chrono::milliseconds pause(10);
        for (int i = 0; i < tries; ++i)
        {
            if (Connections() == 0)
                return true;
            std::this_thread::sleep_for(pause);
        }
        return false;
    }
    // By the system's list: sockets of the server's port that have a partner, or had one and
    // weren't closed since.
    int Connections() const
    {
        std::ostringstream port;
        port << ':' << std::uppercase << std::hex << server.Port();
        std::ifstream list("/proc/net/tcp");
        int count = 0;
        for (std::string line; std::getline(list, line);)
        {
            std::istringstream columns(line);
            std::string number, local, remote, state;
            columns >> number >> local >> remote >> state;
            constexpr const char* established = "01";
            constexpr const char* closeWait = "08";
            if (local.ends_with(port.str()) && (state == established || state == closeWait))
                ++count;
        }
        return count;
    }
};

INSTANTIATE_TEST_SUITE_P(Real, FtpTerminal, testing::ValuesIn(allFtpServers),
                         testing::PrintToStringParamName());

TEST_P(FtpTerminal, AnUploadShowsItsProgressUntilCtrlC)
{
    MakeLarge(folder.Path() / "source");
    const TerminalRun run =
        LoggedOnUntil(BarFor("ftp://"), {u"put", folder / u"source", Address(u"target")});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(Shows(run.shown, BarFor(Utf8(Address(u"target")))));
    EXPECT_THAT(run.shown, EndsWith("\r\x1b[KThe copy was cancelled.\r\n0x80004004\r\n"));
    ASSERT_TRUE(fs::exists(Stored(u"target"))) << "what has arrived stays";
    EXPECT_GT(fs::file_size(Stored(u"target")), 0U);
    EXPECT_LT(fs::file_size(Stored(u"target")), largeSize);
}

TEST_P(FtpTerminal, ACopyShowsItsProgressUntilCtrlC)
{
    MakeLarge(Stored(u"source"));
    const TerminalRun run =
        LoggedOnUntil(BarFor("ftp://"), {u"cp", Address(u"source"), Address(u"target")});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(Shows(run.shown, BarFor(Utf8(Address(u"target")))));
    // The program's own words, if the end of the transfers took too long.
    EXPECT_THAT(run.shown, testing::AnyOf(HasSubstr("\r\x1b[KThe operation was cancelled."),
                                          HasSubstr("\r\x1b[KThe copy was cancelled.")));
    EXPECT_THAT(run.shown, EndsWith("\r\n0x80004004\r\n"));
    ASSERT_TRUE(fs::exists(Stored(u"target"))) << "what has arrived stays";
    EXPECT_GT(fs::file_size(Stored(u"target")), 0U);
    EXPECT_LT(fs::file_size(Stored(u"target")), largeSize);
}

TEST_P(FtpTerminal, ADownloadEndsAtCtrlC)
{
    MakeLarge(Stored(u"source"));
    const TerminalRun run = LoggedOnUntil(std::string(1, '\0'), {u"cat", Address(u"source")});
    EXPECT_EQ(run.exitCode, -1) << "as any program that only reads";
    EXPECT_LT(run.shown.size(), largeSize);
    EXPECT_EQ(fs::file_size(Stored(u"source")), largeSize);
    WriteBytes(folder / u"small", "x");
    Printed({u"put", folder / u"small", Address(u"small")});
    EXPECT_EQ(Printed({u"cat", Address(u"small")}), "x") << "the server serves on";
}

TEST_P(FtpTerminal, AFinishedBarIsWipedAway)
{
    MakeLarge(folder.Path() / "source");
    fs::resize_file(folder.Path() / "source", std::uint64_t{256} << 20);
    const TerminalRun run =
        LoggedOnUntil("never shown", {u"put", folder / u"source", Address(u"target")});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_TRUE(Shows(run.shown, BarFor(Utf8(Address(u"target")))));
    EXPECT_THAT(run.shown, EndsWith("\r\x1b[K"));
    EXPECT_EQ(fs::file_size(Stored(u"target")), std::uint64_t{256} << 20);
}

} // namespace
} // namespace tarnwell::test
