#include "e2e/hostrun.h"
#include "e2e/json.h"
#include "support/tempfolder.h"

#include <gmock/gmock.h>

namespace tarnwell::test
{

namespace
{

using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;

TEST(ModuleOption, MissingFile)
{
    const TempFolder folder;
    const std::u16string file = folder / u"nothing here";
    const HostRun run = RunHost({u"--module", file, u"ls", u"."});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.errors, "There is no module at \"" + Utf8(file) + "\".\n0x80004005\n");
    EXPECT_THAT(run.output, IsEmpty());
}

TEST(ModuleOption, FileThatIsNoLibrary)
{
    const TempFolder folder;
    const std::u16string file = folder / u"text.so";
    WriteBytes(file, "text");
    const HostRun run = RunHost({u"--module", file, u"ls", u"."});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.errors, HasSubstr("Can't load \"" + Utf8(file) + "\" as a module: "));
    EXPECT_THAT(run.errors, EndsWith("\n0x80004005\n"));
}

TEST(ModuleOption, FailureAsJson)
{
    const HostRun run = RunHost({u"--json", u"--module", u"nowhere", u"ls", u"."});
    EXPECT_EQ(run.exitCode, 1);
    ASSERT_EQ(LinesOf(run.errors).size(), 1U);
    const JsonLine failure(LinesOf(run.errors)[0]);
    EXPECT_EQ(failure.Names(), (std::vector<std::string>{"status", "message"}));
    EXPECT_EQ(failure.Text("message"), "There is no module at \"nowhere\".");
}

TEST(ModuleOption, ModuleInAnotherPlace)
{
    const TempFolder folder;
    const std::u16string file = folder / u"módulo ツ.dll";
    std::filesystem::copy_file(ModuleFile(), file);
    const HostRun run = RunHost({u"--module", file, u"ls", folder.Text()});
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_THAT(run.output, HasSubstr(Utf8(u"módulo ツ.dll")));
}

TEST(SelfCheck, TriesEveryClassAndClient)
{
    const HostRun run = RunHost({u"--json", u"selfcheck"});
    EXPECT_EQ(run.errors, "");
    std::vector<std::string> classes;
    std::vector<std::string> clients;
    bool allMade = true;
    for (const JsonLine& line : JsonLinesOf(run.output))
    {
        if (line.Has("class"))
            classes.push_back(line.Text("class"));
        if (line.Has("client"))
            clients.push_back(line.Text("client"));
        if (line.Has("made"))
            allMade = allMade && line.Raw("made") == "true";
    }
    EXPECT_THAT(classes, testing::ElementsAre("Win32FileSystem", "P4FileSystem", "SVNFileSystem",
                                              "FTPFileSystem", "HGFileSystem", "GITFileSystem"));
    EXPECT_THAT(clients, testing::ElementsAre("git", "hg", "svn", "p4"));
    EXPECT_EQ(run.exitCode, allMade ? 0 : 1);
}

TEST(SelfCheck, NamesTheModuleAndMakesTheLocalFileSystem)
{
    const HostRun run = RunHost({u"selfcheck"});
    EXPECT_THAT(run.output, HasSubstr(Utf8(ModuleFile().u16string())));
    EXPECT_THAT(run.output, HasSubstr("Win32FileSystem   made\n"));
}

} // namespace

} // namespace tarnwell::test
