// The man page as its formatter takes it, and the completion as bash runs it.
#include "e2e/hostrun.h"
#include "support/tempfolder.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace tarnwell::test
{

namespace
{

using testing::Contains;
using testing::HasSubstr;
using testing::IsSupersetOf;
using testing::Not;
using testing::StartsWith;
using testing::UnorderedElementsAre;

namespace fs = std::filesystem;

HostRun Shell(const std::u16string& script, const std::vector<std::u16string>& arguments,
              const std::string& input = {}, const fs::path& folder = {})
{
    std::vector<std::u16string> all{u"-c", script, u"bash"};
    all.insert(all.end(), arguments.begin(), arguments.end());
    return RunProcess("bash", {all, input, {{"LC_ALL", "C.UTF-8"}}, folder});
}

bool HasProgram(const char16_t* name)
{
    return Shell(u"command -v \"$1\"", {name}).exitCode == 0;
}

TEST(Manual, IsFormattedWithoutAWarning)
{
    // Whether the system has a file of its own for all pages is none of ours, and Japanese has few
    // places where a line may end.
    const char16_t* formatter = u"groff -man -Tutf8 -Kutf8 -ww -Wfile -Wbreak";
    if (!HasProgram(u"groff"))
        formatter = u"mandoc -T utf8 -W warning";
    if (!HasProgram(u"groff") && !HasProgram(u"mandoc"))
        GTEST_SKIP() << "neither groff nor mandoc is here";
    for (const char16_t* language : {u"en", u"ja"})
    {
        const HostRun page = RunHost({u"--lang", language, u"--man"});
        EXPECT_EQ(page.exitCode, 0);
        const HostRun run = Shell(formatter, {}, page.output);
        EXPECT_EQ(run.errors, "");
        EXPECT_EQ(run.exitCode, 0);
        EXPECT_THAT(run.output, HasSubstr("TARNWELL-HOST(1)"));
        EXPECT_THAT(run.output, HasSubstr("svn://host/repository/trunk@7"));
    }
}

// What bash offers for a line, whose last word is the one to complete.
class Completion : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!fs::exists(library_))
            GTEST_SKIP() << "bash-completion isn't here";
        fs::create_directory(folder_.Path() / "folder");
        WriteBytes(folder_ / u"file name.txt", "");
        script_ = folder_ / u".completion";
        WriteBytes(script_, RunHost({u"--completion"}).output);
    }

    std::vector<std::string> Offered(const std::u16string& line) const
    {
        // The line is torn into words as the shell does it while somebody types.
        const HostRun run = Shell(
            u"shopt -s extglob; . \"$1\"; . \"$2\"; COMP_LINE=$3; COMP_POINT=${#3}; COMP_TYPE=9; "
            u"mapfile -t COMP_WORDS < <(printf '%s\\n' \"$3\" | "
            u"sed -E 's/([:=@])/ \\1 /g; s/ +/\\n/g'); "
            u"COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); compopt() { :; }; _tarnwell_host; "
            u"printf '%s\\n' \"${COMPREPLY[@]}\"",
            {FromPathText(library_), script_, line}, {}, folder_.Path());
        EXPECT_EQ(run.errors, "");
        return LinesOf(run.output);
    }

private:
    static std::u16string FromPathText(const fs::path& path)
    {
        return path.u16string();
    }

    const fs::path library_ = "/usr/share/bash-completion/bash_completion";
    const TempFolder folder_;
    std::u16string script_;
};

TEST_F(Completion, OfCommands)
{
    EXPECT_THAT(Offered(u"tarnwell-host s"), UnorderedElementsAre("stat", "selfcheck"));
    EXPECT_THAT(Offered(u"tarnwell-host --json --lang ja fi"), UnorderedElementsAre("find"));
    EXPECT_THAT(Offered(u"tarnwell-host help mk"), UnorderedElementsAre("mkdir"));
}

TEST_F(Completion, OfOptionsAndTheirValues)
{
    EXPECT_THAT(Offered(u"tarnwell-host --us"), UnorderedElementsAre("--user"));
    EXPECT_THAT(Offered(u"tarnwell-host --lang "), UnorderedElementsAre("en", "ja"));
    EXPECT_THAT(Offered(u"tarnwell-host rm -"), Contains("-r"));
    EXPECT_THAT(Offered(u"tarnwell-host stat -"), Not(Contains("-r")));
    EXPECT_THAT(Offered(u"tarnwell-host --module fi"), UnorderedElementsAre("file name.txt"));
}

TEST_F(Completion, OfSchemesAndFileNames)
{
    EXPECT_THAT(
        Offered(u"tarnwell-host ls sv"),
        UnorderedElementsAre("svn://", "svnhttp://", "svnhttps://", "svnfile://", "svn+ssh://"));
    EXPECT_THAT(Offered(u"tarnwell-host ls f"),
                UnorderedElementsAre("ftp://", "folder", "file name.txt"));
    EXPECT_THAT(Offered(u"tarnwell-host cat git:fi"), Contains("file name.txt"));
}

} // namespace

} // namespace tarnwell::test
