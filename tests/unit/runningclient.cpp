// Clients that are spoken to while they run, and clients that are ended.
#include "runner/runningclient.h"

#include "frame/messages.h"
#include "support/clientcall.h"
#include "support/fakeprogress.h"
#include "support/tempfolder.h"

#include <gmock/gmock.h>

#include <random>

namespace tarnwell::test
{
namespace
{

class RunningClients : public testing::Test
{
protected:
    RunningClient Started(const std::u16string& arguments) const
    {
        return RunningClient(childClient, CallOfChild(arguments, OsHandle()));
    }
    std::string ReadAll(RunningClient& client)
    {
        std::string all;
        for (std::string bytes = client.Read(patience); !bytes.empty();
             bytes = client.Read(patience))
            all += bytes;
        return all;
    }

    FakeProgress progress;
    Patience patience{&progress, u"test"};
};

TEST_F(RunningClients, AnswerWhileTheyRun)
{
    RunningClient client = Started(u"answer");
    for (int i = 0; i < 100; ++i)
    {
        const std::string line = "question " + std::to_string(i) + "\n";
        client.Write(line);
        std::string answer;
        while (answer.size() < line.size())
            answer += client.Read(patience);
        EXPECT_EQ(answer, line);
    }
    EXPECT_EQ(client.Finish(patience).exitCode, 0);
}

TEST_F(RunningClients, TellTheirExitCodeAndTheirErrors)
{
    EXPECT_EQ(Started(u"exit 3").Finish(patience).exitCode, 3);
    EXPECT_EQ(Started(u"complain words").Finish(patience).errors, u"words");
}

TEST_F(RunningClients, MayPrintMuchOnBothStreams)
{
    RunningClient client = Started(u"both 3000000");
    EXPECT_EQ(ReadAll(client), std::string(3'000'000, 'o'));
    const ClientOutcome outcome = client.Finish(patience);
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.errors, std::u16string(64 * 1024, u'e'));
}

TEST_F(RunningClients, MayBeLeftInTheMiddle)
{
    RunningClient client = Started(u"both 30000000");
    EXPECT_FALSE(client.Read(patience).empty());
}

TEST_F(RunningClients, MayBeLeftAtAnyMoment)
{
    std::mt19937 random(1);
    for (int round = 0; round < 30; ++round)
    {
        RunningClient client = Started(u"both 1000000");
        for (std::size_t left = random() % 40; left > 0; --left)
            client.Read(patience);
    }
}

TEST_F(RunningClients, ThatAreSilentAreEnded)
{
    const TempFolder folder;
    const std::u16string started = folder / u"started";
    progress.answer = [&](int) {
        return std::filesystem::exists(std::filesystem::path(started)) ? VARIANT_FALSE
                                                                       : VARIANT_TRUE;
    };
    RunningClient client = Started(u"await \"" + started + u"\" \"" + (folder / u"never") + u"\"");
    const Thrown thrown = ThrownBy([&] { client.Read(patience); });
    EXPECT_EQ(thrown.status, E_ABORT);
    EXPECT_EQ(thrown.text, u"The operation was cancelled.");
}

TEST_F(RunningClients, AreAskedAboutAgainAndAgain)
{
    const TempFolder folder;
    progress.answer = [&](int n) {
        return n < 5 ? VARIANT_TRUE : VARIANT_FALSE;
    };
    RunningClient client =
        Started(u"await \"" + (folder / u"started") + u"\" \"" + (folder / u"never") + u"\"");
    EXPECT_EQ(ThrownBy([&] { client.Finish(patience); }).status, E_ABORT);
    EXPECT_EQ(progress.Questions(), 5);
    for (const std::thread::id thread : progress.threads)
        EXPECT_EQ(thread, std::this_thread::get_id());
}

TEST_F(RunningClients, ThatAreMissingAreNamed)
{
    ClientRow row = childClient;
    row.missing = E_INVALIDARG;
    ClientCall call;
    call.program = u"tarnwell-no-such-program";
    const Thrown thrown = ThrownBy([&] { const RunningClient client(row, call); });
    EXPECT_EQ(thrown.status, E_INVALIDARG);
    EXPECT_TRUE(thrown.text.starts_with(FormatMessageById(row.notFound)));
}

TEST_F(RunningClients, HaveTheVariablesOfTheirRunOverTheRows)
{
    static constexpr const char16_t* variables[] = {u"TARNWELL_A=row", u"TARNWELL_B=row"};
    ClientRow row = childClient;
    row.variables = variables;
    ClientCall call = CallOfChild(u"environment", OsHandle());
    call.variables = {u"TARNWELL_C=run"};
    RunningClient client(row, call);
    const std::string printed = ReadAll(client);
    for (const char* const expected : {"TARNWELL_A=row", "TARNWELL_B=row", "TARNWELL_C=run"})
        EXPECT_NE(printed.find(expected), std::string::npos) << expected;
}

} // namespace
} // namespace tarnwell::test
