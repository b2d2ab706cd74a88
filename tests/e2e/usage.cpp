#include "e2e/hostrun.h"
#include "e2e/json.h"

#include <gmock/gmock.h>

namespace tarnwell::test
{

namespace
{

using testing::HasSubstr;
using testing::IsEmpty;

struct WrongLine
{
    std::vector<std::u16string> arguments;
    const char* text;
};

const WrongLine wrongLines[] = {
    {{}, "A command is missing."},
    {{u"frobnicate"}, "There is no command \"frobnicate\"."},
    {{u"--frobnicate", u"ls", u"."}, "There is no option \"--frobnicate\"."},
    {{u"ls", u"-x", u"."}, "There is no option \"-x\"."},
    {{u"ls"}, "\"ls\" needs [-r] ADDRESS [PATTERN...]."},
    {{u"put", u"a"}, "\"put\" needs FILE ADDRESS."},
    {{u"cat", u"a", u"b"}, "\"cat\" takes no more than 1 operands."},
    {{u"selfcheck", u"a"}, "\"selfcheck\" takes no more than 0 operands."},
    {{u"ls", u"-p", u"."}, "\"ls\" has no option -p."},
    {{u"mkdir", u"-r", u"a"}, "\"mkdir\" has no option -r."},
    {{u"ls", u".", u"--user"}, "The option \"--user\" needs a value."},
    {{u"stat", u"-r", u"."}, "\"stat\" has no option -r."},
    {{u"ls", u"-n", u"1", u"."}, "\"ls\" has no option -n."},
    {{u"log", u"-n", u"-1", u"a"}, "-n takes a number, not \"-1\"."},
    {{u"log", u"-n=", u"a"}, "-n takes a number, not \"\"."},
    {{u"log", u"--skip", u"x", u"a"}, "--skip takes a number, not \"x\"."},
    {{u"log", u"--since", u"2026-02-29", u"a"}, "--since takes a time as 2026-03-01 or "},
    {{u"log", u"--until=now", u"a"}, ", not \"now\"."},
    {{u"cat", u"--follow", u"a"}, "\"cat\" has no option --follow."},
    {{u"help", u"frobnicate"}, "There is no command \"frobnicate\"."},
    {{u"frobnicate", u"--help"}, "There is no command \"frobnicate\"."},
    {{u"--lang", u"fr", u"ls", u"."}, "--lang is \"en\" or \"ja\"."},
    {{u"--lang=", u"ls", u"."}, "--lang is \"en\" or \"ja\"."},
    {{u"ls", u"http://host/r"}, "Is svnhttp:// meant?"},
};

TEST(Usage, WrongLinesExitWith2AndSayWhy)
{
    for (const WrongLine& wrong : wrongLines)
    {
        const HostRun run = RunHost(wrong.arguments);
        EXPECT_EQ(run.exitCode, 2) << wrong.text;
        EXPECT_THAT(run.errors, HasSubstr(wrong.text));
        EXPECT_THAT(run.output, IsEmpty());
    }
}

TEST(Usage, WrongLinesAreJsonWhereThatIsAskedFor)
{
    for (const WrongLine& wrong : wrongLines)
    {
        // In front, so that it is nobody's value.
        std::vector<std::u16string> arguments{u"--json"};
        arguments.insert(arguments.end(), wrong.arguments.begin(), wrong.arguments.end());
        const HostRun run = RunHost(arguments);
        EXPECT_EQ(run.exitCode, 2) << wrong.text;
        EXPECT_THAT(run.output, IsEmpty());
        const auto lines = JsonLinesOf(run.errors);
        ASSERT_EQ(lines.size(), 1U);
        EXPECT_EQ(lines[0].Text("status"), "0x80070057");
        EXPECT_THAT(lines[0].Text("message"), HasSubstr(wrong.text));
    }
}

TEST(Usage, HelpNamesEveryCommand)
{
    const HostRun run = RunHost({u"--help"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_THAT(run.errors, IsEmpty());
    for (const char* command : {"ls [-r] ADDRESS [PATTERN...]",
                                "find ADDRESS [PATTERN...]",
                                "stat ADDRESS",
                                "cat ADDRESS",
                                "log [-n N] [OPTION...] ADDRESS",
                                "put FILE ADDRESS",
                                "cp SOURCE TARGET",
                                "mkdir [-p] ADDRESS",
                                "rm [-r] ADDRESS...",
                                "temp ADDRESS",
                                "compare LEFT RIGHT",
                                "selfcheck",
                                "--module",
                                "--json",
                                "--lang",
                                "--user",
                                "--password",
                                "--server",
                                "--no-credentials",
                                "--streams",
                                "--yes",
                                "--exclude"})
        EXPECT_THAT(run.output, HasSubstr(command));
}

TEST(Usage, HelpOfACommandIsTheSameByEitherWay)
{
    const HostRun run = RunHost({u"help", u"ls"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_THAT(run.output, HasSubstr("tarnwell-host [OPTIONS] ls [-r] ADDRESS [PATTERN...]"));
    EXPECT_THAT(run.output, HasSubstr("  tarnwell-host ls -r src \"*.h\"\n"));
    EXPECT_EQ(RunHost({u"ls", u"--help"}).output, run.output);
    EXPECT_EQ(RunHost({u"help"}).output, RunHost({u"-h"}).output);
}

TEST(Usage, VersionIsOneLine)
{
    const HostRun run = RunHost({u"--version"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_THAT(run.output, testing::StartsWith("tarnwell-host 1."));
    EXPECT_EQ(run.output.find('\n'), run.output.size() - 1);
}

// Nothing but commands needs a module.
TEST(Usage, HelpNeedsNoModule)
{
    for (const char16_t* option : {u"--help", u"--version", u"--man", u"--completion"})
        EXPECT_EQ(RunHost({u"--module", u"nowhere", option}).exitCode, 0);
}

} // namespace

} // namespace tarnwell::test
