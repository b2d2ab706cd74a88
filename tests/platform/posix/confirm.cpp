// The question before a deletion, answered by somebody: on a pseudo-terminal, by a stand-in for the
// dialog program, or by nobody.
#include "platform/shelldelete.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fcntl.h>
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
        fs::create_directory(programs_);
    }

    bool ItemIsThere() const
    {
        return fs::exists(folder_.Path() / "item");
    }

    // A dialog program that says what it was asked, and answers with `exitCode`.
    void MakeProgram(const std::string& name, int exitCode) const
    {
        const fs::path program = programs_ / name;
        WriteBytes(program.u16string(), "#!/bin/sh\nprintf '%s\\n' \"$@\" >" + asked_.string() +
                                            "\nexit " + std::to_string(exitCode) + "\n");
        fs::permissions(program, fs::perms::owner_all);
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
            setenv("PATH", programs_.c_str(), 1);
            unsetenv("WAYLAND_DISPLAY");
            if (display)
                setenv("DISPLAY", ":99", 1);
            else
                unsetenv("DISPLAY");
            unsetenv("LC_ALL");
            setenv("LC_MESSAGES", "C", 1);
            _exit(ExitCodeOf(ShellDelete({folder_ / name}, 0)));
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

    TempFolder folder_;
    fs::path programs_ = folder_.Path() / "bin";
    fs::path asked_ = folder_.Path() / "asked";
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

TEST_F(Confirm, TerminalIsNotSentControlCharacters)
{
    const std::u16string name = u"a\x1b[2J\nb";
    WriteBytes(folder_ / name, "");
    const Outcome outcome = Delete("n\n", false, name);
    EXPECT_EQ(outcome.exitCode, cancelled);
    EXPECT_EQ(outcome.shown.find('\x1b'), std::string::npos);
    EXPECT_NE(outcome.shown.find("a?[2J?b"), std::string::npos) << outcome.shown;
}

TEST_F(Confirm, DialogProgramAnswers)
{
    MakeProgram("zenity", 1);
    EXPECT_EQ(Delete("y\n", true).exitCode, cancelled);
    EXPECT_TRUE(ItemIsThere());
    MakeProgram("zenity", 0);
    EXPECT_EQ(Delete(std::nullopt, true).exitCode, 0);
    EXPECT_FALSE(ItemIsThere());
    const std::string asked = ReadBytes(asked_.u16string());
    EXPECT_NE(asked.find("--question"), std::string::npos) << asked;
    EXPECT_NE(asked.find("item?"), std::string::npos) << asked;
}

TEST_F(Confirm, OtherDialogProgramIsTriedNext)
{
    MakeProgram("kdialog", 0);
    EXPECT_EQ(Delete(std::nullopt, true).exitCode, 0);
    EXPECT_FALSE(ItemIsThere());
}

TEST_F(Confirm, DialogTextIsNotTakenForMarkup)
{
    MakeProgram("kdialog", 1);
    WriteBytes(folder_ / u"a&<b>", "");
    EXPECT_EQ(Delete(std::nullopt, true, u"a&<b>").exitCode, cancelled);
    const std::string asked = ReadBytes(asked_.u16string());
    EXPECT_NE(asked.find("a&amp;&lt;b&gt;"), std::string::npos) << asked;
}

TEST_F(Confirm, TerminalIsAskedWhereThereIsNoDialogProgram)
{
    EXPECT_EQ(Delete("y\n", true).exitCode, 0);
    EXPECT_FALSE(ItemIsThere());
}

TEST_F(Confirm, MissingItemIsNotAskedAbout)
{
    MakeProgram("zenity", 0);
    EXPECT_EQ(Delete(std::nullopt, true, u"none").exitCode, unexpected);
    EXPECT_FALSE(fs::exists(asked_));
}

} // namespace
} // namespace tarnwell::test
