// The program on a terminal: copies that show their progress, and Ctrl-C.
#include "e2e/hostrun.h"
#include "support/environmentvalue.h"
#include "support/tempfolder.h"

#include <gmock/gmock.h>

#include <algorithm>
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
                          const std::function<std::string(const std::string&)>& type,
                          bool isColoured = false, unsigned short width = 0)
{
    const std::string program = HostProgram().string();
    int terminal = -1;
    const winsize size{24, width, 0, 0};
    const pid_t child = forkpty(&terminal, nullptr, nullptr, &size);
    if (child == 0)
    {
        unsetenv("LC_ALL");
        setenv("LC_MESSAGES", "C", 1);
        setenv("TERM", "xterm", 1);
        setenv("NO_COLOR", isColoured ? "" : "1", 1);
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
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(questions, 1);
    EXPECT_THAT(run.shown, HasSubstr("Not deleted, as the answer was no or the system refused:"));
    EXPECT_THAT(run.shown, HasSubstr("  " + (folder.Path() / "a").string() + "\r\n  " +
                                     (folder.Path() / "b").string() + "\r\n0x800704C7\r\n"));
    EXPECT_THAT(run.shown, HasSubstr("and the other selected items to the trash?"));
    EXPECT_TRUE(fs::exists(folder / u"a"));
    EXPECT_TRUE(fs::exists(folder / u"b"));
}

TEST(Terminal, ANoToOneItemReadsAsSuch)
{
    const TempFolder folder;
    const std::string file = (folder.Path() / "a").string();
    WriteBytes(folder / u"a", "");
    const auto answer = [](const char* text) {
        return [text](const std::string& shown) -> std::string {
            return shown.ends_with("[y/N] ") ? text : "";
        };
    };
    const TerminalRun no = RunOnTerminal({"rm", file}, answer("n\n"));
    EXPECT_EQ(no.exitCode, 1);
    EXPECT_THAT(no.shown,
                EndsWith("Not deleted, as the answer was no or the system refused:\r\n  " + file +
                         "\r\n0x800704C7\r\n"));
    EXPECT_TRUE(fs::exists(folder / u"a"));
    EXPECT_EQ(RunOnTerminal({"rm", file}, answer("y\n")).exitCode, 0);
    EXPECT_FALSE(fs::exists(folder / u"a"));
}

// A name in somebody else's repository, and the words of a client.
TEST(Terminal, ControlCharactersNeverReachIt)
{
    const TempFolder folder;
    WriteBytes(folder / u"hg", "#!/bin/sh\nprintf 'client\\033[2J\\302\\233words\\n' >&2\n");
    fs::permissions(folder.Path() / "hg", fs::perms::owner_all);
    const EnvironmentValue path("PATH",
                                (folder.Path().string() + ":" + std::getenv("PATH")).c_str());
    const auto silent = [](const std::string&) {
        return std::string();
    };
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"cat", "hg:/r/\x1b[2J"},
          {"--json", "cat", "hg:/r/\x1b[2J"},
          {"stat", "hg:/r/a\x1b[2J\xc2\x9b"},
          {"--json", "stat", "hg:/r/a\x1b[2J\xc2\x9b"},
          {"\x1b[2J"},
          {"--\x1b[2J"},
          {"ls", "/nowhere/\x1b[2J"},
          {"cp", "/nowhere/\x1b[2J", "/nowhere/\x1b[2J"},
          {"rm", "/nowhere/\x1b[2J"}})
    {
        const TerminalRun run = RunOnTerminal(arguments, silent);
        EXPECT_EQ(run.shown.find('\x1b'), std::string::npos) << run.shown;
        EXPECT_EQ(run.shown.find("\xc2\x9b"), std::string::npos) << run.shown;
        EXPECT_THAT(run.shown, HasSubstr("[2J"));
    }
    EXPECT_THAT(RunOnTerminal({"cat", "hg:/r/a"}, silent).shown,
                HasSubstr("\r\nclient?[2J?words ["));
}

std::string Silent(const std::string&)
{
    return {};
}

TEST(Terminal, ShowsFoldersLinksAndErrorsInColours)
{
    const TempFolder folder;
    fs::create_directory(folder.Path() / "folder");
    fs::create_directory_symlink("folder", folder.Path() / "link");
    WriteBytes(folder / u"plain", "");
    const std::string shown = RunOnTerminal({"ls", folder.Path().string()}, Silent, true).shown;
    EXPECT_THAT(shown, HasSubstr("\x1b[1;34mfolder\x1b[0m\r\n"));
    EXPECT_THAT(shown, HasSubstr("\x1b[36mlink\x1b[0m\r\n"));
    EXPECT_THAT(shown, EndsWith("  plain\r\n"));
    EXPECT_THAT(RunOnTerminal({"stat", "/missing"}, Silent, true).shown,
                HasSubstr("\x1b[31mFailed to open \"/missing\". "));
    const std::string plain = RunOnTerminal({"ls", folder.Path().string()}, Silent).shown;
    EXPECT_EQ(plain.find('\x1b'), std::string::npos) << "NO_COLOR";
}

TEST(Terminal, NamesBringNoColoursOfTheirOwn)
{
    const TempFolder folder;
    fs::create_directory(folder.Path() / "\x1b[31m");
    const std::string shown = RunOnTerminal({"ls", folder.Path().string()}, Silent, true).shown;
    EXPECT_THAT(shown, HasSubstr("\x1b[1;34m?[31m\x1b[0m\r\n"));
}

TEST(Terminal, HelpFitsItsWidth)
{
    const std::string shown = RunOnTerminal({"--help"}, Silent, false, 64).shown;
    std::size_t longest = 0;
    for (const std::string& line : LinesOf(shown))
        longest = std::max(longest, line.size() - 1);
    EXPECT_LE(longest, 64U);
    EXPECT_GT(longest, 50U);
}

} // namespace

} // namespace tarnwell::test
