// Histories and trees from clients that fail, hang, are killed or print what can't be read.
// Scripts stand in for what the real clients don't do.
#include "backends/suites/stricttest.h"
#include "support/posix/standinclient.h"

#include <algorithm>
#include <csignal>
#include <sstream>
#include <sys/types.h>

namespace tarnwell::test
{
namespace
{

class StrictClients : public StrictTest
{
protected:
    // A stand-in, which also leaves the numbers of its processes behind.
    StandInClient StandIn(const std::string& body) const
    {
        return {std::string(Row().client), "echo $$ >>'" + InNotes("pids") + "'\n" + body};
    }
    std::string InNotes(const char* name) const
    {
        return (notes_.Path() / name).string();
    }
    std::vector<pid_t> Processes() const
    {
        std::vector<pid_t> all;
        std::istringstream lines(ReadBytes(notes_ / u"pids"));
        for (pid_t pid = 0; lines >> pid;)
            all.push_back(pid);
        return all;
    }
    std::size_t Starts() const
    {
        return Processes().size();
    }
    // Its client's, as that is the latest one.
    void KillTheClientThatStays() const
    {
        ASSERT_EQ(kill(Processes().back(), SIGKILL), 0);
    }
    void ExpectNoneRuns() const
    {
        ASSERT_FALSE(Processes().empty());
        for (const pid_t pid : Processes())
            EXPECT_NE(kill(pid, 0), 0) << pid;
    }
    // Asks for each of the two that the row answers to; `expect` takes what came.
    template <class F> void AskForBoth(const std::u16string& path, const F& expect) const
    {
        HistorySink sink;
        if (Row().strict.histories)
            expect(Read(path, sink));
        if (Row().strict.trees)
            expect(TreeFailure(path));
    }

    const TempFolder notes_;
    const std::u16string text_ =
        TestsRun() ? Strictly().data->Address(u"text.txt") : std::u16string();
};

TEST_P(StrictClients, ThatHangAreEndedWhenTheHostCancels)
{
    const StandInClient client = StandIn("sleep 1000 & sleep 1000");
    int questions = 0;
    HistorySink sink;
    sink.wantsMore = [&] {
        // Not before the client is there to be ended.
        return !std::filesystem::exists(InNotes("pids")) || ++questions < 3;
    };
    if (Row().strict.histories)
    {
        EXPECT_EQ(Read(text_, sink).status, E_ABORT);
        ExpectNoneRuns();
    }
    if (Row().strict.trees)
    {
        questions = 0;
        ComPtr<ITree> tree;
        EXPECT_EQ(OpenTree(text_, tree, {}, &sink).status, E_ABORT);
        ExpectNoneRuns();
    }
}

TEST_P(StrictClients, AreNotStartedForAHostThatDoesNotWant)
{
    const StandInClient client = StandIn("exec \"$REAL\" \"$@\"");
    HistorySink sink;
    sink.wantsMore = [] {
        return false;
    };
    ComPtr<ITree> tree;
    if (Row().strict.histories)
    {
        EXPECT_EQ(Read(text_, sink).status, E_ABORT);
    }
    if (Row().strict.trees)
    {
        EXPECT_EQ(OpenTree(text_, tree, {}, &sink).status, E_ABORT);
    }
    EXPECT_THAT(client.Runs(), testing::IsEmpty());
}

TEST_P(StrictClients, ThatEndWithAnotherCodeHaveFailedWhateverTheyPrinted)
{
    for (const std::string before : {"", "\"$REAL\" \"$@\" </dev/null; "})
    {
        const StandInClient client = StandIn(before + "echo 'their words' >&2; exit 42");
        AskForBoth(text_, [](const Outcome& outcome) {
            EXPECT_THAT(outcome,
                        FailedSaying(HistoryClientFailed, u"The client failed with exit code 42"));
            EXPECT_NE(outcome.error->text.find(u"their words"), std::u16string::npos);
        });
    }
}

TEST_P(StrictClients, ThatAreKilledHaveFailed)
{
    const StandInClient client = StandIn("kill -9 $$");
    AskForBoth(text_, [](const Outcome& outcome) {
        EXPECT_EQ(outcome.status, Win32Status(1067));
        EXPECT_TRUE(outcome.error);
    });
}

TEST_P(StrictClients, WhoseAnswerCantBeReadHaveFailed)
{
    for (const std::string words : {"nonsense", "{\\\"a\\\": 1}", "<a><b/></a>"})
    {
        const StandInClient client = StandIn("echo \"" + words + "\"");
        AskForBoth(text_, [&](const Outcome& outcome) {
            EXPECT_THAT(outcome, FailedSaying(HistoryBadAnswer, u"The client's answer for \""))
                << words;
        });
    }
}

TEST_P(StrictClients, MayWarn)
{
    const StandInClient client = StandIn("echo 'warning: words' >&2; exec \"$REAL\" \"$@\"");
    if (Row().strict.histories)
    {
        EXPECT_EQ(History(text_).size(), 2U);
    }
    if (Row().strict.trees)
    {
        EXPECT_EQ(ContentOf(Tree(text_)), "content");
    }
}

// As some leave one behind for the next question to the same server.
TEST_P(StrictClients, MayLeaveADaemonThatKeepsTheirPipes)
{
    const TempFolder daemons;
    // Each has taken leave before its client does anything.
    const StandInClient client =
        StandIn("number='" + daemons.Path().string() + "'/$$\n" +
                "setsid sh -c 'echo $$ >\"$0\"; exec sleep 1000' \"$number\" </dev/null &\n" +
                "until [ -s \"$number\" ]; do :; done\nexec \"$REAL\" \"$@\"");
    if (Row().strict.histories)
    {
        EXPECT_EQ(History(text_).size(), 2U);
    }
    int count = 0;
    for (const auto& file : std::filesystem::directory_iterator(daemons.Path()))
    {
        EXPECT_EQ(kill(std::stoi(ReadBytes(file.path().u16string())), SIGKILL), 0);
        ++count;
    }
    EXPECT_GT(count, 0);
}

TEST_P(StrictClients, AreToldOfInTheUsersLanguage)
{
    const auto textsIn = [&](const char* locale) {
        const EnvironmentValue language("LC_ALL", locale);
        std::vector<std::u16string> texts;
        const auto take = [&](const Outcome& outcome) {
            EXPECT_LT(outcome.status, 0);
            texts.push_back(outcome.error ? outcome.error->text : u"none");
        };
        AskForBoth(Strictly().data->Address(u"none.txt"), take);
        for (const char* const body : {"exit 42", "echo nonsense"})
        {
            const StandInClient client = StandIn(body);
            AskForBoth(text_, take);
        }
        const EnvironmentValue path("PATH", "/nonexistent");
        AskForBoth(text_, take);
        return texts;
    };
    const auto english = textsIn("C.UTF-8");
    const auto japanese = textsIn("ja_JP.UTF-8");
    ASSERT_EQ(english.size(), japanese.size());
    const auto isAscii = [](char16_t unit) {
        return unit < 0x80;
    };
    for (std::size_t i = 0; i < english.size(); ++i)
    {
        EXPECT_TRUE(std::all_of(english[i].begin(), english[i].end(), isAscii));
        EXPECT_FALSE(std::all_of(japanese[i].begin(), japanese[i].end(), isAscii))
            << testing::PrintToString(english[i]);
    }
}

TEST_P(StrictClients, ThatStayAnswerAllSmallQuestions)
{
    if (!Row().strict.clientStays)
        GTEST_SKIP() << "each question is a run of its own";
    const StandInClient client = StandIn("exec \"$REAL\" \"$@\"");
    auto tree = LastTree();
    const std::size_t starts = Starts();
    for (int i = 0; i < 5; ++i)
    {
        EXPECT_EQ(ContentOf(tree, u"text.txt"), "content");
        EXPECT_EQ(FindIn(tree, u"sub").kind, std::uint32_t{TreeFolder});
        EXPECT_FALSE(ListOf(tree, u"sub").empty());
    }
    EXPECT_EQ(Starts(), starts);
    tree.Reset();
    ExpectNoneRuns();
}

TEST_P(StrictClients, ThatDieBetweenQuestionsAreStartedAgainOnce)
{
    if (!Row().strict.clientStays)
        GTEST_SKIP() << "each question is a run of its own";
    const StandInClient client =
        StandIn("[ -e '" + InNotes("dead") + "' ] && exit 42\nexec \"$REAL\" \"$@\"");
    const auto tree = LastTree();
    for (int i = 0; i < 3; ++i)
    {
        EXPECT_EQ(ContentOf(tree, u"text.txt"), "content");
        const std::size_t starts = Starts();
        KillTheClientThatStays();
        EXPECT_EQ(ContentOf(tree, u"text.txt"), "content");
        EXPECT_EQ(Starts(), starts + 1);
        KillTheClientThatStays();
        EXPECT_FALSE(ListOf(tree, u"sub").empty());
        EXPECT_EQ(Starts(), starts + 2);
    }
    const std::size_t starts = Starts();
    WriteBytes(notes_ / u"dead", "");
    KillTheClientThatStays();
    EXPECT_THAT(OpenFailure(tree, u"text.txt"),
                FailedSaying(HistoryClientFailed, u"The client failed with exit code 42"));
    EXPECT_EQ(Starts(), starts + 1);
    EXPECT_LT(FindFailure(tree, u"text.txt").status, 0);
    std::filesystem::remove(InNotes("dead"));
    EXPECT_EQ(ContentOf(tree, u"text.txt"), "content");
}

TARNWELL_OVER_BACKENDS(StrictClients, BackendsThat([](const Backend& b) {
                           return (TellsHistories(b) || ShowsTrees(b)) && !b.client.empty();
                       }));

} // namespace
} // namespace tarnwell::test
