// The program where memory runs out, at any of its requests for some, or where signals interrupt
// its reading and writing.
#include "e2e/hostrun.h"
#include "support/posix/sanitizer.h"
#include "support/tempfolder.h"

#include <gmock/gmock.h>

#include <sstream>

namespace tarnwell::test
{

namespace
{

using testing::AllOf;
using testing::AnyOf;
using testing::EndsWith;
using testing::StartsWith;

class FailingCalls : public testing::Test
{
protected:
    FailingCalls()
    {
        WriteBytes(folder_ / u"a", "bytes");
    }

    // Where the n-th of these calls fails.
    HostRun Run(std::vector<std::u16string> arguments, const char* call, int n, int number,
                const std::string& input = {}) const
    {
        return RunHost({.arguments = std::move(arguments),
                        .input = input,
                        .environment = {{"LD_PRELOAD", Shim()},
                                        {"TORTURE_CALL", call},
                                        {"TORTURE_NTH", std::to_string(n)},
                                        {"TORTURE_ERROR", std::to_string(number)},
                                        {"TORTURE_COUNT", Utf8(folder_ / u"counts")}}});
    }
    HostRun RunWithoutMemory(const char* request, int n) const
    {
        return Run({u"--json", u"cat", folder_ / u"a"}, request, n, ENOMEM);
    }
    // Else it is a success, of which nothing is missing.
    bool IsFailure(const char* request, int n) const
    {
        const HostRun run = RunWithoutMemory(request, n);
        if (run.exitCode == 0)
        {
            EXPECT_EQ(run.output, "bytes") << request << n;
            return false;
        }
        EXPECT_EQ(run.exitCode, 1) << request << n;
        // Before the options are read, nothing is known of them.
        EXPECT_THAT(run.errors, AnyOf(AllOf(StartsWith("{\"status\":\"0x"), EndsWith("\"}\n")),
                                      "Out of memory.\n0x8007000E\n"))
            << request << n;
        return true;
    }
    // How many requests there are from the start of main to the end.
    int Requests(std::string_view request) const
    {
        RunWithoutMemory("", 0);
        std::istringstream counts(ReadBytes(folder_ / u"counts"));
        std::string call;
        int count = 0;
        while (counts >> call >> count && call != request)
        {
        }
        return count;
    }

    const TempFolder folder_;

private:
    static std::string Shim()
    {
        return (ThisProgram().parent_path() / "libtorture-shim.so").string();
    }
};

TEST_F(FailingCalls, ForMemoryAreFailuresWithWordsFromTheStartOn)
{
    if (HasSanitizer())
        GTEST_SKIP() << "here memory is the sanitizer's";
    int failures = 0;
    for (const char* const request : {"malloc", "calloc"})
    {
        const int requests = Requests(request);
        ASSERT_GT(requests, 100) << "the module is loaded, and texts are made";
        // All until the module is being loaded and at the end, between them some from all over.
        for (int n = 1; n <= requests; n += n < 40 || n > requests - 10 ? 1 : 8)
            failures += IsFailure(request, n) ? 1 : 0;
    }
    EXPECT_GT(failures, 20) << "of all of which the program takes note";
}

TEST_F(FailingCalls, BySignalsAreMadeAgain)
{
    if (HasSanitizer())
        GTEST_SKIP() << "here the sanitizer comes first";
    const HostRun written = Run({u"cat", folder_ / u"a"}, "write", 1, EINTR);
    EXPECT_EQ(written.exitCode, 0) << written.errors;
    EXPECT_EQ(written.output, "bytes");
    const HostRun read = Run({u"put", u"-", folder_ / u"b"}, "read", 1, EINTR, "input");
    EXPECT_EQ(read.exitCode, 0) << read.errors;
    EXPECT_EQ(ReadBytes(folder_ / u"b"), "input");
}

} // namespace

} // namespace tarnwell::test
