// The program on a terminal: copies that show their progress, and Ctrl-C.
#include "e2e/hostrun.h"
#include "support/tempfolder.h"

#include <gmock/gmock.h>

#include <csignal>
#include <cstdlib>
#include <functional>
#include <pty.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tarnwell::test
{

namespace
{

using testing::EndsWith;
using testing::HasSubstr;

namespace fs = std::filesystem;

struct TerminalRun
{
    int exitCode = -1;
    std::string shown;
};

// Runs the program with a terminal of its own. Each time something is shown, `type` gets all that
// was shown so far and gives what is typed then.
TerminalRun RunOnTerminal(const std::vector<std::string>& arguments,
                          const std::function<std::string(const std::string&)>& type)
{
    const std::string program = HostProgram().string();
    int terminal = -1;
    const pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
    if (child == 0)
    {
        unsetenv("LC_ALL");
        setenv("LC_MESSAGES", "C", 1);
        unsetenv("DISPLAY");
        unsetenv("WAYLAND_DISPLAY");
        // Whatever happens, it doesn't fill the disk.
        const rlimit enough{rlim_t{8} << 30, rlim_t{8} << 30};
        setrlimit(RLIMIT_FSIZE, &enough);
        std::vector<char*> pointers{const_cast<char*>(program.c_str())};
        for (const std::string& argument : arguments)
            pointers.push_back(const_cast<char*>(argument.c_str()));
        pointers.push_back(nullptr);
        execv(program.c_str(), pointers.data());
        _exit(127);
    }
    TerminalRun run;
    char buffer[4096];
    for (ssize_t count = 0; (count = read(terminal, buffer, sizeof buffer)) > 0;)
    {
        run.shown.append(buffer, static_cast<std::size_t>(count));
        const std::string typed = type(run.shown);
        EXPECT_EQ(write(terminal, typed.data(), typed.size()), static_cast<ssize_t>(typed.size()));
    }
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    close(terminal);
    run.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return run;
}

// A file that takes long to copy, however fast the disk is: the system makes up as many bytes as
// the program's address space has pages.
constexpr const char* nearlyEndless = "/proc/self/pagemap";

TEST(Terminal, ACopyShowsItsProgressUntilCtrlC)
{
    const TempFolder folder;
    const std::string target = (folder.Path() / "target").string();
    bool isTyped = false;
    const TerminalRun run =
        RunOnTerminal({"cp", nearlyEndless, target}, [&](const std::string& shown) -> std::string {
            if (isTyped || shown.find("####") == std::string::npos)
                return {};
            isTyped = true;
            return "\x03";
        });
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.shown, HasSubstr("] " + target + ", "));
    EXPECT_THAT(run.shown, HasSubstr("\r\x1b[K")) << "the bar is wiped away";
    EXPECT_THAT(run.shown, HasSubstr("Failed to copy"));
    EXPECT_THAT(run.shown, EndsWith("\n0x800704D3\r\n"));
    EXPECT_FALSE(fs::exists(target));
}

TEST(Terminal, SeveralItemsAreAskedAboutOnce)
{
    const TempFolder folder;
    WriteBytes(folder / u"a", "");
    WriteBytes(folder / u"b", "");
    int questions = 0;
    const TerminalRun run =
        RunOnTerminal({"rm", (folder.Path() / "a").string(), (folder.Path() / "b").string()},
                      [&](const std::string& shown) -> std::string {
                          if (!shown.ends_with("[y/N] "))
                              return {};
                          ++questions;
                          return "n\n";
                      });
    EXPECT_EQ(run.exitCode, 0) << "a no is no failure";
    EXPECT_EQ(questions, 1);
    EXPECT_THAT(run.shown, HasSubstr("and the other selected items to the trash?"));
    EXPECT_TRUE(fs::exists(folder / u"a"));
    EXPECT_TRUE(fs::exists(folder / u"b"));
}

} // namespace

} // namespace tarnwell::test
