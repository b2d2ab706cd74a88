// That the stand-ins under Wine do what the clients would.
#include "support/clients.h"
#include "support/environmentvalue.h"
#include "support/process.h"
#include "support/repository.h"
#include "support/windows/recording.h"

#include <tarnwell/text.h>

#include <gmock/gmock.h>

namespace tarnwell::test
{

namespace
{

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

constexpr int relayFailed = 200;

class Relay : public ClientTest
{
protected:
    // What the stand-in prints, without the line feed at its end. Throws if it fails.
    static std::string RunStandIn(const std::string& client,
                                  const std::vector<std::string>& arguments,
                                  const std::filesystem::path& folder)
    {
        ProcessCall call{.folder = folder};
        for (const std::string& argument : arguments)
            call.arguments.push_back(DecodeName(argument));
        ProcessRun run = RunProcess(client, call);
        if (run.exitCode != 0)
            throw std::runtime_error(run.errors);
        if (run.output.ends_with('\n'))
            run.output.pop_back();
        return run.output;
    }

    // Git runs the text in a shell of its own.
    static ProcessRun RunScript(const std::u16string& script)
    {
        return RunProcess("git", {.arguments = {u"-c", u"alias.script=!" + script, u"script"}});
    }

    const Repository repository;
};

TEST_F(Relay, ArgumentsArriveAsTheyWereQuoted)
{
    EXPECT_EQ(RunStandIn("git",
                         {"rev-parse", "--sq-quote", "a b", "", "c\"d", "e\\", "f\\\\\"", "*", "$x",
                          "%PATH%", "line\nfeed\t", "\u00e4\u65e5\U0001F600", "a/b\\c"},
                         repository.Folder().Path()),
              " 'a b' '' 'c\"d' 'e\\' 'f\\\\\"' '*' '$x' '%PATH%' 'line\nfeed\t' "
              "'\u00e4\u65e5\U0001F600' 'a/b\\c'");
}

TEST_F(Relay, PathsWithDrivesAreTranslated)
{
    EXPECT_EQ(RunStandIn("git",
                         {"rev-parse", "--sq-quote", "Z:\\tmp\\a b", "z:/", "--x=Z:\\a", "x=Z:\\a",
                          "file:///Z:/a", "HEAD:Z:\\a", "Z:a", "\\a"},
                         repository.Folder().Path()),
              " '/tmp/a b' '/' '--x=/a' 'x=/a' 'file:///a' 'HEAD:Z:\\a' 'Z:a' '\\a'");
    EXPECT_THAT(
        RunStandIn("git", {"rev-parse", "--sq-quote", "C:\\windows"}, repository.Folder().Path()),
        testing::MatchesRegex(" '/.*/drive_c/windows'"));
}

TEST_F(Relay, OutputAndErrorTextAreByteForByteAndApart)
{
    const ProcessRun run =
        RunScript(u"printf 'o\\r\\n\\n\\0\\032\\377'; printf 'e\\r\\n\\0\\377' >&2; exit 7");
    EXPECT_EQ(run.output, std::string("o\r\n\n\0\x1A\xFF", 7));
    EXPECT_EQ(run.errors, std::string("e\r\n\0\xFF", 5));
    EXPECT_EQ(run.exitCode, 7);
}

TEST_F(Relay, LongOutputsOnBothStreamsEnd)
{
    const ProcessRun run =
        RunScript(u"head -c 20000000 /dev/zero | tr '\\0' e >&2; head -c 30000001 /dev/zero");
    EXPECT_EQ(run.errors, std::string(20'000'000, 'e'));
    EXPECT_EQ(run.output, std::string(30'000'001, '\0'));
}

TEST_F(Relay, TheClientsInputIsEmpty)
{
    EXPECT_EQ(RunStandIn("git", {"hash-object", "--stdin"}, repository.Folder().Path()),
              "e69de29bb2d1d6434b8b29ae775ad8c2e48c5391");
}

TEST_F(Relay, RecordsWhatItWasAsked)
{
    const Recording recording;
    const ProcessRun answer = RunProcess(
        "git",
        {.arguments = {u"version"}, .input = "some input", .folder = repository.Folder().Path()});
    EXPECT_THAT(answer.output, StartsWith("git version "));
    const RecordedRun run = recording.Run();
    EXPECT_THAT(run.commandLine, EndsWith("\"git\" \"version\""));
    EXPECT_EQ(run.folder, EncodeName(repository.Folder().Text()));
    EXPECT_EQ(run.inputSize, "10");
    EXPECT_THAT(run.environment, testing::Contains(HasSubstr("TARNWELL_RELAY_RECORD=")));
}

TEST_F(Relay, ClientsRunInTheFolder)
{
    std::filesystem::create_directory(repository.Folder().Path() / "a b");
    EXPECT_EQ(RunStandIn("git", {"rev-parse", "--show-prefix"}, repository.Folder().Path() / "a b"),
              "a b/");
}

TEST_F(Relay, ClientsSeeTheirOwnVariablesAndNoSettings)
{
    const EnvironmentValue author("git_author_name", "Somebody");
    const EnvironmentValue home("HOME", "Z:\\nowhere");
    EXPECT_THAT(RunStandIn("git", {"-c", "user.email=a@b", "var", "GIT_AUTHOR_IDENT"},
                           repository.Folder().Path()),
                StartsWith("Somebody <"));
    // A run of Subversion leaves templates there.
    EXPECT_EQ(RunScript(u"ls -A ~ | grep -cvx .subversion").output, "0\n");
}

// That of a drive, for one, may well stand in a repository: this project's.
TEST_F(Relay, DrivesAreInNoRepository)
{
    const TempFolder outside;
    EXPECT_THROW(RunStandIn("git", {"rev-parse", "--show-toplevel"}, outside.Path()),
                 std::runtime_error);
}

TEST_F(Relay, AllClientsAreThere)
{
    EXPECT_THAT(RunStandIn("hg", {"version", "-q"}, repository.Folder().Path()),
                StartsWith("Mercurial "));
    EXPECT_THAT(RunStandIn("svn", {"--version", "-q"}, repository.Folder().Path()),
                StartsWith("1."));
}

TEST_F(Relay, WithoutItsServerItFails)
{
    const EnvironmentValue port("TARNWELL_RELAY_PORT", nullptr);
    const ProcessRun run = RunProcess("git", {.arguments = {u"version"}});
    EXPECT_EQ(run.exitCode, relayFailed);
    EXPECT_EQ(run.output, "");
    EXPECT_THAT(run.errors, StartsWith("relay: no server"));
}

TEST_F(Relay, OthersAreNotServed)
{
    const EnvironmentValue key("TARNWELL_RELAY_KEY", "00000000000000000000000000000000");
    const ProcessRun run = RunProcess("git", {.arguments = {u"version"}});
    EXPECT_EQ(run.exitCode, relayFailed);
    EXPECT_EQ(run.output, "");
    EXPECT_THAT(run.errors, StartsWith("relay: the server hung up"));
}

} // namespace

} // namespace tarnwell::test
