// The program on a terminal: copies that show their progress, and Ctrl-C.
#include "e2e/hostrun.h"
#include "e2e/posix/terminalrun.h"
#include "support/environmentvalue.h"
#include "support/tempfolder.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdlib>
#include <unistd.h>

namespace tarnwell::test
{

namespace
{

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;

namespace fs = std::filesystem;

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
            return ctrlC;
        });
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.shown, AllOf(HasSubstr("iB, "), HasSubstr("iB/s, " + target)));
    EXPECT_THAT(run.shown, HasSubstr("\r\x1b[K")) << "the bar is wiped away";
    EXPECT_THAT(run.shown, HasSubstr("Failed to copy"));
    EXPECT_THAT(run.shown, EndsWith("\n0x800704D3\r\n"));
    EXPECT_FALSE(fs::exists(target));
}

// The first is heard at the next block of what is put, and nobody types one.
TEST(Terminal, ASecondCtrlCEndsWhatWaits)
{
    const TempFolder folder;
    const std::u16string target = folder / u"target";
    int typed = 0;
    const auto type = [&](const std::string& shown) -> std::string {
        constexpr const char* endOfInput = "\x04";
        if (shown.empty())
            return "a line\n";
        // By then it listens to Ctrl-C.
        for (int i = 0; i < 1000 && (!fs::exists(target) || fs::is_empty(target)); ++i)
            usleep(10000);
        // Two in a row reach it as one, unless it has had the time to notice.
        usleep(10000);
        return ++typed <= 100 ? ctrlC : endOfInput;
    };
    const TerminalRun run = RunOnTerminal({"put", "-", (folder.Path() / "target").string()}, type);
    EXPECT_EQ(run.exitCode, -1) << "a signal ended it";
    EXPECT_EQ(ReadBytes(target), "a line\n");
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
    WriteBytes(folder / u"hg", "#!/bin/sh\nprintf 'client\\033[2J\\302\\233words\\n' >&2\n"
                               "[ \"$1\" != --version ] || printf 'version\\033[2J\\n'\n");
    const TempFolder named;
    WriteBytes(named / u"a\nb\x1b[2J\u009b", "");
    fs::permissions(folder.Path() / "hg", fs::perms::owner_all);
    const EnvironmentValue path("PATH",
                                (folder.Path().string() + ":" + std::getenv("PATH")).c_str());
    const auto silent = [](const std::string&) {
        return std::string();
    };
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"--prescribed", "cat", "hg:/r/\x1b[2J"},
          {"--prescribed", "--json", "cat", "hg:/r/\x1b[2J"},
          {"--prescribed", "stat", "hg:/r/a\x1b[2J\xc2\x9b"},
          {"--prescribed", "--json", "stat", "hg:/r/a\x1b[2J\xc2\x9b"},
          {"cat", "git:/r/\x1b[2J"},
          {"log", "git:/r/a\x1b[2J\xc2\x9b"},
          {"\x1b[2J"},
          {"--\x1b[2J"},
          {"ls", "/nowhere/\x1b[2J"},
          {"cp", "/nowhere/\x1b[2J", "/nowhere/\x1b[2J"},
          {"rm", "/nowhere/\x1b[2J"},
          {"selfcheck"},
          {"ls", named.Path().string()}})
    {
        const TerminalRun run = RunOnTerminal(arguments, silent);
        EXPECT_EQ(run.shown.find('\x1b'), std::string::npos) << run.shown;
        EXPECT_EQ(run.shown.find("\xc2\x9b"), std::string::npos) << run.shown;
        EXPECT_THAT(run.shown, HasSubstr("[2J"));
    }
    EXPECT_THAT(RunOnTerminal({"--prescribed", "cat", "hg:/r/a"}, silent).shown,
                HasSubstr("\r\nclient?[2J?words ["));
    EXPECT_THAT(RunOnTerminal({"ls", named.Path().string()}, silent).shown,
                EndsWith("a?b?[2J?\r\n"))
        << "in one line";
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
