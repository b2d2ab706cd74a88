// Runs of clients whose platform calls fail: what is thrown, and that nothing waits for ever and
// nothing stays behind.
#include "faults/local.h"

#include "frame/messages.h"
#include "runner/readstream.h"
#include "support/clientcall.h"
#include "support/environmentvalue.h"
#include "support/posix/child.h"
#include "workingcopy/workingcopycommands.h"

#include <atomic>
#include <csignal>
#include <latch>
#include <sys/wait.h>
#include <thread>

namespace tarnwell::test
{

namespace
{

namespace fs = std::filesystem;

const std::u16string address = u"test://address";

// Temporary files and the current folder lie in folders of their own, which stay empty.
class FailingClientRun : public testing::Test
{
protected:
    FailingClientRun()
    {
        fs::current_path(current_.Path());
    }
    ~FailingClientRun() override
    {
        fs::current_path(before_);
        EXPECT_TRUE(fs::is_empty(temporary_.Path()));
        EXPECT_TRUE(fs::is_empty(current_.Path()));
        EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "a child is left";
    }

    // A run with two pipes, or with three.
    static ClientOutcome Run(const std::u16string& arguments)
    {
        return RunChildClient(arguments);
    }
    static ClientOutcome RunWithReader(const std::u16string& arguments)
    {
        ClientCall call = CallOfChild(arguments, OsHandle());
        call.readOutput = [](BufferedReader& output) {
            output.ReadAll();
        };
        return RunClient(childClient, call);
    }

    const TempFolder temporary_;
    const TempFolder current_;
    const EnvironmentValue variable_{"TMPDIR", temporary_.Path().c_str()};
    const fs::path before_ = fs::current_path();
};

struct StartRow
{
    const char* operation;
    int call;
    DWORD error;
    MessageId message;
};

TEST_F(FailingClientRun, WhatFailsAheadOfTheClientIsThrown)
{
    for (const StartRow& row :
         {StartRow{"CreatePipe", 1, someError, childClient.communication},
          StartRow{"CreatePipe", 2, someError, childClient.communication},
          StartRow{"CreatePipe", 3, someError, childClient.communication},
          StartRow{"SetHandleInformation", 1, someError, childClient.communication},
          StartRow{"SetHandleInformation", 2, someError, childClient.communication},
          StartRow{"SetHandleInformation", 3, someError, childClient.communication},
          StartRow{"CreateProcessW", 1, someError, childClient.communication},
          StartRow{"CreateProcessW", 1, ERROR_PATH_NOT_FOUND, childClient.communication},
          StartRow{"CreateProcessW", 1, ERROR_FILE_NOT_FOUND, childClient.notFound}})
    {
        SCOPED_TRACE(testing::Message() << row.operation << ' ' << row.call);
        const Held before = Held::Now();
        {
            Faults faults;
            faults.Fail(row.operation, row.call, row.error);
            const Thrown thrown = ThrownBy([] { RunWithReader(u"exit 0"); });
            EXPECT_EQ(thrown.status, StatusFromError(row.error));
            EXPECT_EQ(thrown.text, FormatMessageWithStatus(row.message, thrown.status));
            EXPECT_EQ(faults.Failures(), 1);
            EXPECT_EQ(faults.Calls("_beginthreadex"), 0);
        }
        EXPECT_EQ(Held::Now(), before);
    }
}

TEST_F(FailingClientRun, TwoPipesAreEnoughWhereTheOutputIsAFile)
{
    const Faults faults;
    Run(u"exit 0");
    EXPECT_EQ(faults.Calls("CreatePipe"), 2);
}

TEST_F(FailingClientRun, AFailureWithoutACodeIsAFailure)
{
    Faults faults;
    faults.Fail("CreateProcessW", 1, ERROR_SUCCESS);
    const Thrown thrown = ThrownBy([] { Run(u"exit 0"); });
    EXPECT_EQ(thrown.status, DISP_E_EXCEPTION);
}

// What a client gets to hear that writes more than a pipe holds where nobody reads.
void ExpectEndedBySignal(const Thrown& thrown)
{
    EXPECT_EQ(thrown.status, static_cast<HRESULT>(0x8007042B));
    EXPECT_EQ(thrown.text, FormatMessageById(childClient.communication) + u" Broken pipe");
}

TEST_F(FailingClientRun, WithoutItsReaderNothingWaitsAndATextThatIsLostIsAFailure)
{
    const Held before = Held::Now();
    {
        Faults faults;
        faults.Fail("_beginthreadex", 1, someError);
        EXPECT_EQ(Run(u"input").errors, u"");
        EXPECT_EQ(faults.Failures(), 1);
    }
    {
        Faults faults;
        faults.Fail("_beginthreadex", 1, someError);
        ExpectEndedBySignal(ThrownBy([&] { Run(u"error 1000000"); }));
        EXPECT_EQ(faults.Failures(), 1);
    }
    EXPECT_EQ(Held::Now(), before);
}

TEST_F(FailingClientRun, NeitherReaderIsWaitedForWhereItNeverRan)
{
    for (const int reader : {1, 2})
    {
        const Held before = Held::Now();
        {
            Faults faults;
            faults.Fail("_beginthreadex", reader, someError);
            ExpectEndedBySignal(ThrownBy([&] { RunWithReader(u"both 1000000"); }));
            EXPECT_EQ(faults.Failures(), 1);
        }
        EXPECT_EQ(Held::Now(), before);
    }
}

TEST_F(FailingClientRun, AReadThatFailsIsTheEndOfTheText)
{
    Faults faults;
    faults.Fail("ReadFile", 2, someError);
    const ClientOutcome outcome = Run(u"error 11000");
    EXPECT_EQ(faults.Failures(), 1);
    EXPECT_EQ(outcome.errors, std::u16string(10240, u'e'));
}

TEST_F(FailingClientRun, ATextThatIsNotConvertedIsNone)
{
    Faults faults;
    faults.Fail("MultiByteToWideChar", 1, someError);
    EXPECT_EQ(Run(u"error 10").errors, u"");
    EXPECT_EQ(faults.Failures(), 1);
}

// The first wait is for the client, the second for the reader.
TEST_F(FailingClientRun, TheErrorTextIsWholeWhereWaitingFails)
{
    for (const int wait : {1, 2})
    {
        const Held before = Held::Now();
        {
            Faults faults;
            faults.Fail("WaitForSingleObject", wait, someError);
            EXPECT_EQ(Run(u"error 1000000").errors.size(), 1'000'000U);
            EXPECT_EQ(faults.Failures(), 1);
        }
        EXPECT_EQ(Held::Now(), before);
        // Of a client that wasn't waited for the system keeps the end.
        if (wait == 1)
            waitpid(-1, nullptr, 0);
    }
}

TEST_F(FailingClientRun, AnExitCodeThatIsNotToldStaysAsItWasSet)
{
    Faults faults;
    faults.Fail("GetExitCodeProcess", 1, someError);
    EXPECT_EQ(Run(u"exit 3").exitCode, 1);
    EXPECT_EQ(faults.Failures(), 1);
}

TEST_F(FailingClientRun, WithoutTheEnvironmentsTextTheClientInheritsIt)
{
    const EnvironmentValue set("GIT_DIR", "/nowhere");
    ClientRow row = childClient;
    row.hiddenNames = u"GIT_";
    const auto output = NewOutputFile();
    Faults faults;
    faults.Fail("GetEnvironmentStringsW", 1, ERROR_NOT_ENOUGH_MEMORY);
    EXPECT_EQ(RunClient(row, CallOfChild(u"environment", *output)).exitCode, 0);
    EXPECT_EQ(faults.Failures(), 1);
    EXPECT_NE(Printed(*output).find(u"GIT_DIR=/nowhere"), std::u16string::npos);
}

TEST_F(FailingClientRun, HandlesThatDoNotCloseDoNoHarm)
{
    int closed = 0;
    {
        const Faults faults;
        Run(u"error 10");
        closed = faults.Calls("CloseHandle");
    }
    for (int n = 1; n <= closed; ++n)
    {
        const Held before = Held::Now();
        {
            Faults faults;
            faults.Fail("CloseHandle", n, someError);
            EXPECT_EQ(Run(u"error 10").errors.size(), 10U);
            EXPECT_EQ(faults.Failures(), 1);
        }
        EXPECT_EQ(Held::Now(), before);
    }
}

// Of eight runs seven make their pipes, then the eighth's client starts, then theirs do. A client
// that held another's pipe would keep that run from ending.
TEST_F(FailingClientRun, ThatGoesOnHoldsUpNoOther)
{
    constexpr std::size_t others = 7;
    const TempFolder folder;
    std::atomic<std::size_t> arrivals = 0;
    std::latch havePipes(others);
    std::latch eighthRuns(1);
    Faults faults;
    faults.Before("CreateProcessW", [&] {
        if (arrivals++ >= others)
            return;
        havePipes.count_down();
        eighthRuns.wait();
    });
    std::vector<ClientOutcome> outcomes(others);
    std::vector<std::thread> threads;
    for (ClientOutcome& outcome : outcomes)
        threads.emplace_back([&outcome] { outcome = RunWithReader(u"both 100000"); });
    havePipes.wait();
    int eighthCode = -1;
    std::thread eighth([&] {
        eighthCode =
            Run(u"await \"" + (folder / u"started") + u"\" \"" + (folder / u"told")).exitCode;
    });
    WaitForFile(folder / u"started");
    eighthRuns.count_down();
    for (std::thread& thread : threads)
        thread.join();
    for (const ClientOutcome& outcome : outcomes)
        EXPECT_EQ(outcome.errors.size(), 100'000U);
    WriteBytes(folder / u"told", "");
    eighth.join();
    EXPECT_EQ(eighthCode, 0) << "they waited until it gave up";
}

using FailingOutputFile = FailingClientRun;

TEST_F(FailingOutputFile, ThatCannotBeMadeNamesTheAddress)
{
    Faults faults;
    faults.Fail("CreateOutputFile", 1, someError);
    const Thrown thrown = ThrownBy([] { NewOutputFile(); });
    EXPECT_EQ(thrown.status, someStatus);
    EXPECT_EQ(thrown.text,
              FormatMessageWithStatus(MessageId::TemporaryFileFailed, someStatus, {address}));
}

TEST_F(FailingOutputFile, ThatCannotBeOpenedIsNamed)
{
    Faults faults;
    faults.Fail("CreateOutputFile", 1, ERROR_SHARING_VIOLATION);
    const Thrown thrown = ThrownBy([] { NewOutputFile(); });
    EXPECT_EQ(thrown.status, StatusFromError(ERROR_SHARING_VIOLATION));
    EXPECT_EQ(thrown.text,
              FormatMessageWithStatus(MessageId::OpenFailed, thrown.status, {u"unopened"}));
}

// Its bytes would be none.
TEST_F(FailingOutputFile, ThatStaysAtItsEndIsAFailure)
{
    const ClientCall call{ChildProgram().u16string(), u"input"};
    {
        Faults faults;
        faults.Fail("SetFilePointer", 1, someError);
        const Thrown thrown = ThrownBy([&] { CaptureOutput(childClient, call, address); });
        EXPECT_EQ(thrown.status, someStatus);
        EXPECT_EQ(thrown.text, FormatMessageWithStatus(childClient.communication, someStatus));
        EXPECT_EQ(faults.Failures(), 1);
    }
    char read[2] = {};
    DWORD count = 0;
    EXPECT_TRUE(ReadFile(CaptureOutput(childClient, call, address)->Get(), read, sizeof read,
                         &count, nullptr));
    EXPECT_EQ(std::string_view(read, count), std::string_view("0\0", 2));
}

TEST_F(FailingOutputFile, ThatCannotBeReadFailsBare)
{
    const auto bytes = MakeReadStream(NewOutputFile(), u"source").As<::ISequentialStream>();
    Faults faults;
    faults.Fail("ReadFile", 1, someError);
    char byte = 0;
    ULONG count = 77;
    const Result result = ResultOf([&] { return bytes->Read(&byte, 1, &count); });
    EXPECT_EQ(result.status, someStatus);
    EXPECT_EQ(result.text, u"(none)");
    EXPECT_EQ(count, 0U);
}

} // namespace

} // namespace tarnwell::test
