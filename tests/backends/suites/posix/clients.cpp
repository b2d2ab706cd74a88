// Clients that aren't there, don't run, are killed or talk too much, and many of them at once:
// whatever the file system, its calls fail or succeed as a whole. Scripts stand in for what the
// real clients don't do.
#include "backends/suites/backendtest.h"
#include "support/posix/standinclient.h"

#include <atomic>
#include <thread>

namespace tarnwell::test
{
namespace
{

namespace fs = std::filesystem;

class Clients : public BackendTest
{
protected:
    std::u16string NoCommunication() const
    {
        const std::string name = Row().name;
        return u"An error occurred while communicating with " +
               std::u16string(name.begin(), name.end()) + u".";
    }
    void ExpectNoRevisions() const
    {
        EXPECT_FALSE(HasRevisions(text_));
        EXPECT_TRUE(Revisions(text_).empty());
    }

    const std::u16string text_ = TestsRun() ? Address(u"text.txt") : std::u16string();
};

TEST_P(Clients, ThatAreMissingAreNamedInTheUsersLanguage)
{
    const EnvironmentValue path("PATH", "/nonexistent");
    const EnvironmentValue japanese("LC_ALL", "ja_JP.UTF-8");
    const Outcome outcome = FailedOpen(text_);
    EXPECT_EQ(outcome.status, Win32Status(2));
    EXPECT_NE(outcome.error->text.find(
                  u" (" + std::u16string(Row().client.begin(), Row().client.end()) + u".exe) "),
              std::u16string::npos);
    EXPECT_NE(outcome.error->text.find(u"クライアント"), std::u16string::npos);
    ExpectNoRevisions();
}

TEST_P(Clients, OfNoKnownKindAreAFailureToCommunicate)
{
    const TempFolder folder;
    const fs::path program = folder.Path() / Row().client;
    WriteBytes(program.u16string(), "text");
    fs::permissions(program, fs::perms::owner_all);
    const EnvironmentValue path("PATH", folder.Path().c_str());
    EXPECT_THAT(FailedOpen(text_), FailedSomehow(NoCommunication()));
    ExpectNoRevisions();
}

TEST_P(Clients, ThatAreKilledInTheMiddleHaveFailedWhateverTheyWrote)
{
    for (const std::string words : {"", "echo half of it; ", "echo last words >&2; "})
    {
        const StandInClient client(std::string(Row().client), words + "kill -9 $$");
        EXPECT_THAT(FailedOpen(text_), Failed(Win32Status(1067), NoCommunication()));
        if (Row().folders)
        {
            EXPECT_THAT(FailedList(Address(u"sub")), Failed(Win32Status(1067), NoCommunication()));
        }
        ExpectNoRevisions();
    }
}

TEST_P(Clients, AreReportedWholeHoweverMuchTheySay)
{
    const StandInClient client(std::string(Row().client),
                               "head -c 3000000 /dev/zero | tr '\\0' e >&2; exit 1");
    const Outcome outcome = FailedOpen(text_);
    EXPECT_EQ(outcome.status, E_FAIL);
    EXPECT_GT(outcome.error->text.size(), 3'000'000U);
    ExpectNoRevisions();
}

TEST_P(Clients, RunSideBySide)
{
    const std::size_t count = Revisions(text_).size();
    std::atomic<int> right = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i)
    {
        threads.emplace_back([&] {
            right += Content(text_) == "content" && Revisions(text_).size() == count ? 1 : 0;
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(right, 8);
}

class WorkingCopyClients : public Clients
{
};

TEST_P(WorkingCopyClients, AreNotAskedForTheHistoryOfAFolder)
{
    const StandInClient client(std::string(Row().client), "exit 0");
    EXPECT_FALSE(HasRevisions(Address(u"sub dir")));
    EXPECT_TRUE(Revisions(Address(u"sub dir")).empty());
    EXPECT_THAT(client.Runs(), testing::IsEmpty());
    EXPECT_FALSE(HasRevisions(text_));
    EXPECT_FALSE(client.Runs().empty());
}

bool HasFilesOnly(const Backend& backend)
{
    return backend.workingCopy == WorkingCopy::Description;
}

TARNWELL_OVER_BACKENDS(WorkingCopyClients, BackendsThat(HasFilesOnly));
TARNWELL_OVER_BACKENDS(Clients, BackendsThat([](const Backend& b) { return !b.client.empty(); }));

} // namespace
} // namespace tarnwell::test
