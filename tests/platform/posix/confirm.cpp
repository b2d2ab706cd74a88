// The question before a deletion, answered by somebody: on a pseudo-terminal, by a stand-in for the
// dialog program, or by nobody.
#include "platform/posix/dialogs/question.h"
#include "platform/shelldelete.h"
#include "support/posix/dialogprogram.h"

#include <tarnwell/text.h>

#include <gmock/gmock.h>

#include <csignal>
#include <cstdlib>
#include <optional>
#include <pty.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tarnwell::test
{
namespace
{

namespace fs = std::filesystem;

using testing::HasSubstr;

constexpr int cancelled = 77;
constexpr int unexpected = 99;

// What a child process makes of the deletion, as its exit code.
int ExitCodeOf(const ShellResult& result)
{
    if (result.code == 0 && !result.aborted)
        return 0;
    const bool refused = result.code == static_cast<int>(ERROR_CANCELLED) && result.aborted;
    return refused ? cancelled : unexpected;
}

struct Outcome
{
    int exitCode;
    // What was shown on the terminal.
    std::string shown;
};

class Confirm : public testing::Test
{
protected:
    Confirm()
    {
        WriteBytes(folder_ / u"item", "");
    }

    bool ItemIsThere() const
    {
        return fs::exists(folder_.Path() / "item");
    }

    // Deletes in a child with a session of its own; with `typed`, on a terminal on which that is
    // typed, else without one.
    Outcome Delete(const std::optional<std::string>& typed, bool display,
                   std::u16string_view name = u"item") const
    {
        int master = -1;
        int slave = -1;
        EXPECT_EQ(openpty(&master, &slave, nullptr, nullptr, nullptr), 0);
        const pid_t child = fork();
        if (child == 0)
        {
            setsid();
            if (typed)
                ioctl(slave, TIOCSCTTY, 0);
            dialog_.UseHere(display);
            unsetenv("LC_ALL");
            setenv("LC_MESSAGES", "C", 1);
            const auto remove = [&] {
                return ExitCodeOf(ShellDelete({folder_ / name}, 0));
            };
            _exit(inBackground_ ? InBackground(remove) : remove());
        }
        close(slave);
        const std::string input = typed.value_or("");
        EXPECT_EQ(write(master, input.data(), input.size()), static_cast<ssize_t>(input.size()));
        Outcome outcome{unexpected, {}};
        int status = 0;
        EXPECT_EQ(waitpid(child, &status, 0), child);
        outcome.exitCode = WEXITSTATUS(status);
        // What was shown comes in pieces; behind the last one the terminal has nobody left.
        char buffer[4096];
        for (ssize_t count = 0; (count = read(master, buffer, sizeof buffer)) > 0;)
            outcome.shown.append(buffer, static_cast<std::size_t>(count));
        close(master);
        return outcome;
    }

    // The exit code of a process that shares the terminal and may not use it. One that tries is
    // stopped.
    template <class Body> static int InBackground(Body body)
    {
        const pid_t child = fork();
        if (child == 0)
        {
            setpgid(0, 0);
            _exit(body());
        }
        int status = 0;
        waitpid(child, &status, WUNTRACED);
        if (WIFEXITED(status))
            return WEXITSTATUS(status);
        kill(child, SIGKILL);
        return unexpected;
    }

    TempFolder folder_;
    DialogProgram dialog_;
    bool inBackground_ = false;
};

TEST_F(Confirm, NobodyToAskIsNo)
{
    EXPECT_EQ(Delete(std::nullopt, false).exitCode, cancelled);
    EXPECT_TRUE(ItemIsThere());
}

TEST_F(Confirm, YesOnTheTerminal)
{
    const Outcome outcome = Delete("y\n", false);
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_FALSE(ItemIsThere());
    EXPECT_NE(outcome.shown.find("item? [y/N]"), std::string::npos) << outcome.shown;
}

TEST_F(Confirm, AnythingElseOnTheTerminalIsNo)
{
    for (const char* const typed : {"n\n", "\n", "\x04", "no y\n"})
    {
        EXPECT_EQ(Delete(typed, false).exitCode, cancelled);
        EXPECT_TRUE(ItemIsThere());
    }
}

// Reading there would stop the whole host.
TEST_F(Confirm, InTheBackgroundTheTerminalIsNotAsked)
{
    inBackground_ = true;
    const Outcome outcome = Delete("y\n", false);
    EXPECT_EQ(outcome.exitCode, cancelled);
    EXPECT_TRUE(ItemIsThere());
    EXPECT_EQ(outcome.shown.find("[y/N]"), std::string::npos) << outcome.shown;
}

TEST_F(Confirm, TerminalIsNotSentControlCharacters)
{
    const std::u16string name = u"a\x1b[2J\nb";
    WriteBytes(folder_ / name, "");
    const Outcome outcome = Delete("n\n", false, name);
    EXPECT_EQ(outcome.exitCode, cancelled);
    EXPECT_EQ(outcome.shown.find('\x1b'), std::string::npos);
    EXPECT_NE(outcome.shown.find("a?[2J?b"), std::string::npos) << outcome.shown;
}

TEST(Displayable, WhatIsMoreThanTextIsMasked)
{
    for (const char16_t unit : {u'\0', u'\x07', u'\x1b', u'\t', u'\r', u'\n', u'\x7f', u'\x80',
                                u'\x9b', u'\x9f', u'\u200b', u'\u200f', u'\u2028', u'\u202e',
                                u'\u2060', u'\u206f', u'\xd800', u'\xdc80', u'\xdfff'})
        EXPECT_EQ(posix::Displayable(std::u16string{u'a', unit, u'b'}), "a?b") << std::hex << +unit;
    for (const char16_t unit : {u' ', u'~', u'\xa0', u'\u200a', u'\u2010', u'\u2027', u'\u202f',
                                u'\u205f', u'\u2070', u'\ud7ff', u'\ue000'})
        EXPECT_EQ(posix::Displayable(std::u16string{unit}), EncodeName(std::u16string{unit}));
    EXPECT_EQ(posix::Displayable(u"\U0001F600"), "\xF0\x9F\x98\x80");
    EXPECT_EQ(posix::Displayable(u"a\n\x1b", true), "a\n?") << "lines may be wanted";
}

TEST_F(Confirm, DialogProgramAnswers)
{
    dialog_.AnswerWith(DialogProgram::no);
    EXPECT_EQ(Delete("y\n", true).exitCode, cancelled);
    EXPECT_TRUE(ItemIsThere());
    dialog_.AnswerWith(DialogProgram::yes);
    EXPECT_EQ(Delete(std::nullopt, true).exitCode, 0);
    EXPECT_FALSE(ItemIsThere());
    EXPECT_THAT(dialog_.Asked(), HasSubstr("--question"));
    EXPECT_THAT(dialog_.Asked(), HasSubstr("item?"));
}

TEST_F(Confirm, OtherDialogProgramIsTriedNext)
{
    dialog_.AnswerWith(DialogProgram::yes, "kdialog");
    EXPECT_EQ(Delete(std::nullopt, true).exitCode, 0);
    EXPECT_FALSE(ItemIsThere());
}

TEST_F(Confirm, DialogTextIsNotTakenForMarkup)
{
    dialog_.AnswerWith(DialogProgram::no, "kdialog");
    WriteBytes(folder_ / u"a&<b>", "");
    EXPECT_EQ(Delete(std::nullopt, true, u"a&<b>").exitCode, cancelled);
    EXPECT_THAT(dialog_.Asked(), HasSubstr("a&amp;&lt;b&gt;"));
}

TEST_F(Confirm, DialogTextIsNotTakenForEscapes)
{
    dialog_.AnswerWith(DialogProgram::no);
    WriteBytes(folder_ / u"a\\nb", "");
    EXPECT_EQ(Delete(std::nullopt, true, u"a\\nb").exitCode, cancelled);
    EXPECT_THAT(dialog_.Asked(), HasSubstr("a\\\\nb"));
    EXPECT_THAT(dialog_.Asked(), HasSubstr("--no-markup"));
}

TEST_F(Confirm, TerminalIsAskedWhereThereIsNoDialogProgram)
{
    EXPECT_EQ(Delete("y\n", true).exitCode, 0);
    EXPECT_FALSE(ItemIsThere());
}

TEST_F(Confirm, MissingItemIsNotAskedAbout)
{
    dialog_.AnswerWith(DialogProgram::yes);
    EXPECT_EQ(Delete(std::nullopt, true, u"none").exitCode, unexpected);
    EXPECT_EQ(dialog_.Asked(), "");
}

} // namespace
} // namespace tarnwell::test
