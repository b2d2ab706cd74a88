// Runs of clients that behave, and of clients that don't.
#include "frame/messages.h"
#include "support/clientcall.h"
#include "support/tempfolder.h"

#include <gmock/gmock.h>

#include <stdexcept>
#include <thread>

namespace tarnwell::test
{
namespace
{

using namespace std::literals;
namespace fs = std::filesystem;

constexpr HRESULT StatusOf(DWORD error)
{
    return static_cast<HRESULT>(0x80070000 | error);
}

// Of each known client, what it says when it can't be run.
constexpr ClientRow RowWith(MessageId notFound, MessageId communication)
{
    ClientRow row = childClient;
    row.notFound = notFound;
    row.communication = communication;
    return row;
}

constexpr ClientRow clients[] = {
    RowWith(MessageId::GitClientNotFound, MessageId::GitCommunicationFailed),
    RowWith(MessageId::MercurialClientNotFound, MessageId::MercurialCommunicationFailed),
    RowWith(MessageId::SubversionClientNotFound, MessageId::SubversionCommunicationFailed),
    RowWith(MessageId::PerforceClientNotFound, MessageId::PerforceCommunicationFailed),
};

TEST(ClientRun, InputEndsAtOnce)
{
    const auto output = NewOutputFile();
    const ClientOutcome outcome = RunClient(childClient, CallOfChild(u"input", *output));
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(Printed(*output), u"0\0"s);
}

TEST(ClientRun, ArgumentsStandBehindTheQuotedProgram)
{
    const TempFolder folder;
    const fs::path program = folder.Path() / "a b" / ChildProgram().filename();
    fs::create_directory(program.parent_path());
    fs::copy_file(ChildProgram(), program);
    const auto output = NewOutputFile();
    ClientCall call = CallOfChild(u"arguments \"c d\" e", *output);
    call.program = program.u16string();
    EXPECT_EQ(RunClient(childClient, call).exitCode, 0);
    EXPECT_EQ(Printed(*output), u"c d\0e\0"s);
}

TEST(ClientRun, MegabytesOfErrorTextAreTakenWhole)
{
    const ClientOutcome outcome = RunChildClient(u"error 5000000");
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.errors, std::u16string(5'000'000, u'e'));
}

// The program beside the tests, with its output for `reader`.
ClientOutcome RunWithReader(const std::u16string& arguments, OutputReader reader,
                            const ClientRow& row = childClient)
{
    ClientCall call = CallOfChild(arguments, OsHandle());
    call.readOutput = std::move(reader);
    return RunClient(row, call);
}

TEST(ClientRun, OutputMayGoToAReaderInstead)
{
    std::u16string text;
    std::thread::id thread;
    const ClientOutcome outcome = RunWithReader(u"both 3000000", [&](BufferedReader& output) {
        text = output.ReadAll();
        thread = std::this_thread::get_id();
    });
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.errors, std::u16string(3'000'000, u'e'));
    EXPECT_EQ(text, std::u16string(3'000'000, u'o'));
    EXPECT_NE(thread, std::this_thread::get_id());
    EXPECT_NE(thread, std::thread::id());
}

TEST(ClientRun, WhatTheReaderLeavesIsDroppedAndNothingWaits)
{
    const ClientOutcome outcome = RunWithReader(u"both 3000000", [](BufferedReader&) {});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.errors.size(), 3'000'000U);
}

TEST(ClientRun, WhatTheReaderThrowsIsThrownWhenAllHasEnded)
{
    const auto run = [] {
        RunWithReader(u"both 3000000", [](BufferedReader&) { throw std::length_error("reader"); });
    };
    EXPECT_THROW(run(), std::length_error);
}

TEST(ClientRun, TheReaderReadsAsTheRowSays)
{
    ClientRow row = childClient;
    row.decoding = Decoding::Widen;
    row.bareLineFeed = BareLineFeed::IsALine;
    std::vector<std::u16string> lines;
    const auto read = [&](BufferedReader& output) {
        lines.clear();
        for (std::u16string line; output.ReadLine(line);)
            lines.push_back(line);
    };
    RunWithReader(u"arguments \"a\n\n\u00e4\"", read, row);
    EXPECT_EQ(lines, (std::vector<std::u16string>{u"a", u"", u"\u00c3\u00a4\0"s}));
    RunWithReader(u"arguments \"a\n\n\u00e4\"", read);
    EXPECT_EQ(lines, std::vector<std::u16string>{u"a"});
}

TEST(ClientRun, OutputInAFileHasNoLimit)
{
    const auto output = NewOutputFile();
    const ClientOutcome outcome = RunClient(childClient, CallOfChild(u"both 3000000", *output));
    EXPECT_EQ(outcome.errors.size(), 3'000'000U);
    EXPECT_EQ(Printed(*output), std::u16string(3'000'000, u'o'));
}

TEST(ClientRun, NothingPrintedIsNothing)
{
    const auto output = NewOutputFile();
    const ClientOutcome outcome = RunClient(childClient, CallOfChild(u"exit 0", *output));
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.errors, u"");
    EXPECT_EQ(Printed(*output), u"");
}

TEST(ClientRun, ExitCodesAreToldAndNotJudged)
{
    for (const int code : {0, 1, 3, 255})
    {
        const std::string text = std::to_string(code);
        EXPECT_EQ(RunChildClient(u"exit " + std::u16string(text.begin(), text.end())).exitCode,
                  code);
    }
}

TEST(ClientRun, ErrorTextIsDecodedAsTheRowSays)
{
    ClientRow row = childClient;
    EXPECT_EQ(RunChildClient(u"complain \u00e4", row).errors, u"\u00e4");
    row.decoding = Decoding::Widen;
    EXPECT_EQ(RunChildClient(u"complain \u00e4", row).errors, u"\u00c3\u00a4");
}

TEST(ClientRun, WorksInItsFolderOrInTheHosts)
{
    const TempFolder folder;
    const std::u16string text = folder.Text();
    const auto output = NewOutputFile();
    ClientCall call = CallOfChild(u"folder", *output);
    call.workingFolder = text;
    RunClient(childClient, call);
    EXPECT_EQ(Printed(*output), text + u'\0');
    const auto other = NewOutputFile();
    RunClient(childClient, CallOfChild(u"folder", *other));
    EXPECT_EQ(Printed(*other), fs::current_path().u16string() + u'\0');
}

TEST(ClientRun, AMissingProgramIsNamedAndNothingIsRead)
{
    for (const ClientRow& row : clients)
    {
        bool hasRun = false;
        ClientCall call = CallOfChild(u"exit 0", OsHandle());
        call.program = u"tarnwell-no-such-program";
        call.readOutput = [&](BufferedReader&) {
            hasRun = true;
        };
        const Thrown thrown = ThrownBy([&] { RunClient(row, call); });
        EXPECT_EQ(thrown.status, StatusOf(ERROR_FILE_NOT_FOUND));
        EXPECT_EQ(thrown.text, FormatMessageWithStatus(row.notFound, thrown.status));
        EXPECT_FALSE(hasRun);
    }
}

TEST(ClientRun, AMissingFolderIsNoMissingProgram)
{
    const TempFolder folder;
    for (const ClientRow& row : clients)
    {
        for (const std::u16string& missing : {folder / u"none", std::u16string()})
        {
            const auto output = NewOutputFile();
            ClientCall call = CallOfChild(u"exit 0", *output);
            call.workingFolder = missing;
            const Thrown thrown = ThrownBy([&] { RunClient(row, call); });
            EXPECT_EQ(thrown.status, StatusOf(ERROR_DIRECTORY));
            EXPECT_EQ(thrown.text, FormatMessageWithStatus(row.communication, thrown.status));
        }
    }
}

TEST(ClientRun, EightInParallelAllEnd)
{
    std::vector<ClientOutcome> outcomes(8);
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < outcomes.size(); ++i)
    {
        const auto run = [&, i] {
            const std::string size = std::to_string(100'000 * (i + 1));
            outcomes[i] = RunChildClient(u"error " + std::u16string(size.begin(), size.end()));
        };
        threads.emplace_back(run);
    }
    for (std::thread& thread : threads)
        thread.join();
    for (std::size_t i = 0; i < outcomes.size(); ++i)
    {
        EXPECT_EQ(outcomes[i].exitCode, 0);
        EXPECT_EQ(outcomes[i].errors, std::u16string(100'000 * (i + 1), u'e'));
    }
}

TEST(ReportedErrors, AreThrownTrimmed)
{
    const Thrown thrown =
        ThrownBy([] { ThrowReportedErrors(childClient, u"git://a", u" \r\n\tone\ntwo \n"); });
    EXPECT_EQ(thrown.status, E_FAIL);
    EXPECT_EQ(thrown.text,
              FormatMessageById(MessageId::GitAccessFailed, {u"git://a", u"one\ntwo"}));
}

TEST(ReportedErrors, BlanksAreAFailureAndNothingIsNone)
{
    const Thrown thrown = ThrownBy([] { ThrowReportedErrors(childClient, u"git://a", u"\n"); });
    EXPECT_EQ(thrown.status, E_FAIL);
    EXPECT_EQ(thrown.text, FormatMessageById(MessageId::GitAccessFailed, {u"git://a", u""}));
    EXPECT_NO_THROW(ThrowReportedErrors(childClient, u"git://a", u""));
}

} // namespace
} // namespace tarnwell::test
