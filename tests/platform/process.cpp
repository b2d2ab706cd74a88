// CreateProcessW and what becomes of what it starts.
#include "platform/childrun.h"
#include "support/opened.h"
#include "support/tempfolder.h"

#include <gmock/gmock.h>

#include <thread>

namespace tarnwell::test
{
namespace
{

using testing::Contains;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::Optional;

TEST(Process, ArgumentsArriveAsTheyWereQuoted)
{
    const std::vector<std::vector<std::u16string>> table = {
        {u"a", u"b c", u"d"},
        {u""},
        {u"", u"a", u""},
        {u"a\"b", u"\"", u"\"quoted\""},
        {u"a\\", u"\\", u"\\\\"},
        {u"a\\\"b", u"a\\\\\"b", u"\\\""},
        {u"with\nline feed", u"with\ttab", u"\r\n"},
        {u"C:\\folder\\", u"\\\\server\\share"},
        {u"'single'", u"$HOME", u"`id`", u"a;b", u"%PATH%", u"a&b|c"},
        {u"\u00e4\u65e5\u672c\U0001F600"},
        {std::u16string(5000, u'x')},
    };
    for (std::vector<std::u16string> arguments : table)
    {
        std::vector<std::string> expected;
        for (const std::u16string& argument : arguments)
        {
            const std::u8string bytes = std::filesystem::path(argument).u8string();
            expected.emplace_back(bytes.begin(), bytes.end());
        }
        arguments.insert(arguments.begin(), u"arguments");
        const Ended ended = RunChild(arguments);
        EXPECT_THAT(ended.exitCode, Optional(0U));
        EXPECT_THAT(Texts(ended.output), ElementsAreArray(expected));
    }
}

TEST(Process, UnquotedArgumentsAreSplitAtBlanksAndTabs)
{
    const std::u16string program = ChildCommand({});
    const Ended ended = RunLine(program + u"  arguments \t a\\b  \"c d\"e   \\\"f  ");
    EXPECT_THAT(Texts(ended.output), ElementsAre("a\\b", "c de", "\"f"));
}

TEST(Process, ExitCodesArrive)
{
    for (const DWORD code : {0U, 1U, 3U, 255U})
    {
        const std::string text = std::to_string(code);
        EXPECT_THAT(RunChild({u"exit", {text.begin(), text.end()}}).exitCode, Optional(code));
    }
}

TEST(Process, MissingProgramIsAMissingFile)
{
    const TempFolder folder;
    EXPECT_EQ(RunLine(u"\"tarnwell-no-such-program\" a").startError, ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(RunLine(Quoted(folder / u"none") + u" a").startError, ERROR_FILE_NOT_FOUND);
}

TEST(Process, MissingFolderIsNoMissingProgram)
{
    const TempFolder folder;
    WriteBytes(folder / u"file", "");
    for (const std::u16string& bad : {folder / u"none", folder / u"file", std::u16string()})
        EXPECT_EQ(RunChild({u"exit", u"0"}, {.folder = bad}).startError, ERROR_DIRECTORY);
}

TEST(Process, StartsInTheFolder)
{
    const TempFolder folder;
    std::filesystem::create_directory(folder.Path() / "a b");
    const Ended ended = RunChild({u"folder"}, {.folder = folder / u"a b"});
    EXPECT_THAT(Texts(ended.output), ElementsAre((folder.Path() / "a b").string()));
    EXPECT_THAT(Texts(RunChild({u"folder"}).output),
                ElementsAre(std::filesystem::current_path().string()));
}

TEST(Process, InputEndsWhenItsPipeIsClosed)
{
    EXPECT_THAT(Texts(RunChild({u"input"}).output), ElementsAre("0"));
}

TEST(Process, OutputBeyondThePipesSizeIsTaken)
{
    const Ended ended = RunChild({u"error", u"1000000"});
    EXPECT_THAT(ended.exitCode, Optional(0U));
    EXPECT_EQ(ended.errorText, std::string(1'000'000, 'e'));
    EXPECT_EQ(ended.output, "");
}

TEST(Process, OutputGoesToAFileThatDeletesItself)
{
    const TempFolder folder;
    WriteBytes(folder / u"out", "");
    SECURITY_ATTRIBUTES inheritable{sizeof(SECURITY_ATTRIBUTES), nullptr, 1};
    const OsHandle file(CreateFileW(Wide(folder / u"out"), GENERIC_READ | GENERIC_WRITE, shareAll,
                                    &inheritable, OPEN_EXISTING,
                                    FILE_ATTRIBUTE_NORMAL | FILE_FLAG_DELETE_ON_CLOSE, nullptr));
    ASSERT_TRUE(file);
    const Pipe input = PipeToChild();
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = input.read.Get();
    startup.hStdOutput = startup.hStdError = file.Get();
    std::u16string line = ChildCommand({u"arguments", u"into the file"});
    PROCESS_INFORMATION information = {};
    ASSERT_TRUE(CreateProcessW(nullptr, Wide(line.data()), nullptr, nullptr, 1, 0, nullptr, nullptr,
                               &startup, &information));
    const OsHandle process(information.hProcess);
    const OsHandle thread(information.hThread);
    ASSERT_EQ(WaitForSingleObject(process.Get(), INFINITE), WAIT_OBJECT_0);
    ASSERT_EQ(SetFilePointer(file.Get(), 0, nullptr, FILE_BEGIN), 0U);
    EXPECT_THAT(Texts(ReadPipe(file)), ElementsAre("into the file"));
}

TEST(Process, ExitCodeOfOneThatRunsSaysSo)
{
    Child child(ChildCommand({u"input"}));
    ASSERT_EQ(child.StartError(), ERROR_SUCCESS);
    DWORD code = 0;
    EXPECT_TRUE(GetExitCodeProcess(child.Process(), &code));
    EXPECT_EQ(code, DWORD{STILL_ACTIVE});
    child.CloseInput();
    EXPECT_THAT(child.WaitForExitCode(), Optional(0U));
    // An end stays one.
    EXPECT_THAT(child.WaitForExitCode(), Optional(0U));
    EXPECT_EQ(WaitForSingleObject(child.Thread(), INFINITE), WAIT_OBJECT_0);
}

TEST(Process, WaitsMayHaveALimit)
{
    Child child(ChildCommand({u"input"}));
    ASSERT_EQ(child.StartError(), ERROR_SUCCESS);
    EXPECT_EQ(WaitForSingleObject(child.Process(), 20), DWORD{WAIT_TIMEOUT});
    child.CloseInput();
    DWORD waited = WAIT_TIMEOUT;
    while (waited == WAIT_TIMEOUT)
        waited = WaitForSingleObject(child.Process(), 1000);
    EXPECT_EQ(waited, WAIT_OBJECT_0);
    EXPECT_THAT(child.WaitForExitCode(), Optional(0U));
}

TEST(Process, HandlesMayGoBeforeTheProcess)
{
    Child running(ChildCommand({u"input"}));
    ASSERT_EQ(running.StartError(), ERROR_SUCCESS);
    {
        const Child left(ChildCommand({u"input"}));
        EXPECT_EQ(left.StartError(), ERROR_SUCCESS);
    }
    running.CloseInput();
    EXPECT_THAT(running.WaitForExitCode(), Optional(0U));
}

// A child that held another's pipe would keep its input from ending.
TEST(Process, InputEndsWhileOtherChildrenRun)
{
    Child first(ChildCommand({u"input"}));
    Child second(ChildCommand({u"input"}));
    first.CloseInput();
    first.Collect();
    EXPECT_THAT(first.WaitForExitCode(), Optional(0U));
    DWORD code = 0;
    EXPECT_TRUE(GetExitCodeProcess(second.Process(), &code));
    EXPECT_EQ(code, DWORD{STILL_ACTIVE});
    second.CloseInput();
    EXPECT_THAT(second.WaitForExitCode(), Optional(0U));
}

TEST(Process, RunsInParallelKeepTheirOutputsApart)
{
    std::vector<std::thread> threads;
    std::vector<Ended> ended(8);
    for (std::size_t i = 0; i < ended.size(); ++i)
    {
        const auto run = [&, i] {
            ended[i] = RunChild({u"arguments", std::u16string(i + 1, u'a')});
        };
        threads.emplace_back(run);
    }
    for (std::thread& thread : threads)
        thread.join();
    for (std::size_t i = 0; i < ended.size(); ++i)
    {
        EXPECT_THAT(ended[i].exitCode, Optional(0U));
        EXPECT_THAT(Texts(ended[i].output), ElementsAre(std::string(i + 1, 'a')));
    }
}

TEST(Process, OnlyItsHandlesAreTaken)
{
    const TempFolder folder;
    const OsHandle file = Opened(folder / u"file", GENERIC_WRITE, CREATE_NEW);
    DWORD code = 0;
    EXPECT_EQ(ErrorOf(GetExitCodeProcess(file.Get(), &code)), ERROR_INVALID_HANDLE);
    EXPECT_EQ(ErrorOf(GetExitCodeProcess(nullptr, &code)), ERROR_INVALID_HANDLE);
    EXPECT_EQ(WaitForSingleObject(nullptr, INFINITE), WAIT_FAILED);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
}

} // namespace
} // namespace tarnwell::test
