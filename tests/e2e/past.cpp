// Histories in full, and what there was in a revision, as the host program shows them.
#include "e2e/hostrun.h"
#include "e2e/json.h"
#include "e2e/pastsystems.h"
#include "support/clients.h"
#include "support/tempfolder.h"

#include <tarnwell/text.h>

#include <gmock/gmock.h>

#include <map>

namespace tarnwell::test
{

namespace
{

using testing::AllOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;
using testing::UnorderedElementsAre;

// Most tests change nothing of it, so one of each system is made.
const Past& PastOf(const PastSystem& system)
{
    static std::map<std::string, Past> made;
    if (!WhyNoClients().empty())
        return made[system.name];
    const auto found = made.find(system.name);
    return found == made.end() ? made.emplace(system.name, system.make()).first->second
                               : found->second;
}

class PastTest : public ClientTest, public testing::WithParamInterface<PastSystem>
{
protected:
    std::vector<JsonLine> Lines(std::vector<std::u16string> arguments) const
    {
        arguments.insert(arguments.begin(), u"--json");
        const HostRun run = RunHost(arguments);
        EXPECT_EQ(run.exitCode, 0) << run.errors;
        return JsonLinesOf(run.output);
    }

    // The values of one member.
    std::vector<std::string> Each(const std::vector<std::u16string>& arguments,
                                  const char* member) const
    {
        std::vector<std::string> values;
        for (const JsonLine& line : Lines(arguments))
            values.push_back(line.Text(member));
        return values;
    }

    void ExpectFailure(const std::vector<std::u16string>& arguments, const char* status) const
    {
        const HostRun run = RunHost(arguments);
        EXPECT_EQ(run.exitCode, 1) << run.output;
        EXPECT_THAT(run.errors, EndsWith(std::string("\n") + status + "\n"));
        EXPECT_GT(run.errors.size(), 20U) << "words, too";
    }

    const Past& past_ = PastOf(GetParam());
};

constexpr const char* noPath = "0x80040203";
constexpr const char* noRevision = "0x80040204";
constexpr const char* wrongKind = "0x80040209";

TEST_P(PastTest, LogTellsAll)
{
    const auto lines = Lines({u"log", past_.Of(u"a.txt")});
    ASSERT_THAT(lines, SizeIs(2));
    EXPECT_EQ(lines[0].Text("id"), past_.secondId);
    EXPECT_EQ(lines[0].Text("description"), "second\n\nwith more");
    EXPECT_EQ(lines[0].Text("author"), past_.author);
    EXPECT_THAT(lines[0].Text("path"), EndsWith("dir/a.txt"));
    EXPECT_THAT(lines[0].Text("revision"), StartsWith("20"));
    EXPECT_EQ(lines[1].Text("description"), "first");
    const std::string uri = lines[1].Text("uri");
    const HostRun old = RunHost({u"cat", DecodeName(uri)});
    EXPECT_EQ(old.output, "old") << uri << old.errors;
    EXPECT_THAT(RunHost({u"log", past_.Of(u"a.txt")}).output,
                AllOf(StartsWith(past_.secondId + "  20"),
                      HasSubstr("  " + past_.author + "\n    second\n    \n    with more\n    ")));
}

TEST_P(PastTest, LogGivesPages)
{
    EXPECT_THAT(Each({u"log", u"-n", u"1", past_.Of(u"a.txt")}, "description"),
                ElementsAre("second\n\nwith more"));
    EXPECT_THAT(Each({u"log", u"-n", u"1", u"--skip", u"1", past_.Of(u"a.txt")}, "description"),
                ElementsAre("first"));
    EXPECT_THAT(Each({u"log", u"--since", u"2000-01-01", past_.Of(u"a.txt")}, "id"), SizeIs(2));
    EXPECT_THAT(Each({u"log", past_.Of(u"a.txt", past_.first)}, "description"),
                ElementsAre("first"));
}

TEST_P(PastTest, LogSaysWhyThereIsNothing)
{
    for (const auto& [options, why] :
         {std::pair<std::vector<std::u16string>, const char*>{{u"--skip", u"9"}, "--skip 9"},
          {{u"-n", u"0", u"--follow"}, "--follow, -n 0"},
          {{u"--until", u"1990-01-01"}, "--until 1990-01-01"}})
    {
        std::vector<std::u16string> arguments{u"log", past_.Of(u"a.txt")};
        arguments.insert(arguments.end(), options.begin(), options.end());
        const HostRun run = RunHost(arguments);
        EXPECT_EQ(run.exitCode, 0);
        EXPECT_EQ(run.output, "No revisions: " + std::string(why) + " leaves none of them.\n");
        arguments.insert(arguments.begin(), u"--json");
        EXPECT_THAT(RunHost(arguments).output, IsEmpty());
    }
    ExpectFailure({u"log", past_.Of(u"none.txt")}, noPath);
    ExpectFailure({u"log", past_.Of(u"a.txt", GetParam().unknownRevision)}, noRevision);
    ExpectFailure({u"log", past_.nowhere}, past_.nowhereStatus);
    EXPECT_EQ(RunPrescribed({u"log", past_.nowhere}).output, "No revisions.\n")
        << "as it always was";
}

TEST_P(PastTest, FailuresAreJsonWhereThatIsAskedFor)
{
    const HostRun run = RunHost({u"--json", u"log", past_.Of(u"none.txt")});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.output, IsEmpty());
    EXPECT_EQ(JsonLinesOf(run.errors).at(0).Text("status"), noPath);
}

TEST_P(PastTest, LogBeginsWithTheWorkingCopyWhereThatIsAskedFor)
{
    if (past_.workingCopy.empty())
        GTEST_SKIP() << "there is none";
    const auto lines = Lines({u"log", u"--working-copy", u"-n", u"1", past_.Of(u"a.txt")});
    ASSERT_THAT(lines, SizeIs(2)) << "it isn't counted";
    EXPECT_EQ(lines[0].Text("id"), "");
    EXPECT_EQ(lines[0].Text("description"), "Working Copy");
}

TEST_P(PastTest, FoldersOfRevisionsAreListed)
{
    EXPECT_THAT(Each({u"ls", past_.address + past_.first}, "name"),
                ElementsAre("a.txt", "b c.txt", "sub"));
    EXPECT_THAT(Each({u"ls", past_.address}, "name"),
                ElementsAre("a.txt", "b c.txt", "more.txt", "sub"));
    const HostRun run = RunHost({u"ls", past_.address + past_.first});
    EXPECT_THAT(LinesOf(run.output),
                ElementsAre(AllOf(StartsWith("--r-         3 B  20"), EndsWith("  a.txt")),
                            AllOf(StartsWith("--r-         1 B  20"), EndsWith("  b c.txt")),
                            AllOf(StartsWith("d---           -  20"), EndsWith("  sub"))));
    const HostRun all = RunHost({u"ls", u"-r", past_.address + past_.first, u"*.txt"});
    EXPECT_THAT(LinesOf(all.output),
                UnorderedElementsAre(EndsWith("  a.txt"), EndsWith("  b c.txt"),
                                     EndsWith("  sub/deep.txt")));
    EXPECT_THAT(LinesOf(RunHost({u"ls", past_.Of(u"sub", past_.second)}).output),
                ElementsAre(EndsWith("  deep.txt")));
}

TEST_P(PastTest, WhatIsFoundOpens)
{
    std::vector<std::string> contents;
    for (const std::string& address :
         LinesOf(RunHost({u"find", past_.address + past_.first, u"*.txt"}).output))
        contents.push_back(RunHost({u"cat", DecodeName(address)}).output);
    EXPECT_THAT(contents, UnorderedElementsAre("old", "b", "deep"));
    // The latest is named, since it may be another one soon.
    const std::vector<std::string> latest =
        LinesOf(RunHost({u"find", past_.address, u"more.txt"}).output);
    ASSERT_THAT(latest, SizeIs(1));
    EXPECT_THAT(latest[0], EndsWith(past_.secondId));
    EXPECT_EQ(RunHost({u"cat", DecodeName(latest[0])}).output, "more");
}

TEST_P(PastTest, ContentsAreExact)
{
    EXPECT_EQ(RunHost({u"cat", past_.Of(u"a.txt", past_.first)}).output, "old");
    EXPECT_EQ(RunHost({u"cat", past_.Of(u"a.txt")}).output, "new text");
    EXPECT_EQ(RunHost({u"cat", past_.Of(u"sub/deep.txt", past_.first)}).output, "deep");
    for (const char16_t* command : {u"cat", u"stat", u"ls", u"find"})
    {
        ExpectFailure({command, past_.Of(u"more.txt", past_.first)}, noPath);
        ExpectFailure({command, past_.address + GetParam().unknownRevision}, noRevision);
        ExpectFailure({command, past_.nowhere}, past_.nowhereStatus);
    }
    ExpectFailure({u"cat", past_.address + past_.first}, wrongKind);
    ExpectFailure({u"ls", past_.Of(u"a.txt", past_.first)}, wrongKind);
}

TEST_P(PastTest, StatTellsFacts)
{
    const auto lines = Lines({u"stat", past_.Of(u"a.txt", past_.second)});
    ASSERT_THAT(lines, SizeIs(1));
    const JsonLine& file = lines[0];
    EXPECT_EQ(file.Text("name"), "a.txt");
    EXPECT_EQ(file.Raw("folder"), "false");
    EXPECT_EQ(file.Raw("size"), "8");
    EXPECT_EQ(file.Text("kind"), "file");
    EXPECT_EQ(file.Raw("executable"), "false");
    EXPECT_EQ(file.Text("revision"), past_.secondId);
    EXPECT_THAT(file.Text("modified"), StartsWith("20"));
    EXPECT_FALSE(file.Has("errors"));
    EXPECT_EQ(RunHost({u"cat", DecodeName(file.Text("path"))}).output, "new text");
    EXPECT_THAT(LinesOf(RunHost({u"ls", DecodeName(file.Text("parent"))}).output), SizeIs(4));

    const HostRun folder = RunHost({u"stat", past_.Of(u"sub", past_.first)});
    EXPECT_THAT(folder.output,
                AllOf(StartsWith("name            sub\n"), HasSubstr("\nkind            folder\n"),
                      HasSubstr("\nrevision        ")));
}

TEST_P(PastTest, RevisionsAreCompared)
{
    const HostRun folders =
        RunHost({u"compare", past_.address + past_.first, past_.address + past_.second});
    EXPECT_EQ(folders.exitCode, 3) << folders.errors;
    EXPECT_THAT(LinesOf(folders.output),
                ElementsAre(StartsWith("a.txt: different, 3 and 8 bytes"), "more.txt: only right",
                            "3 equal, 1 different, 1 only right"));
    const HostRun same = RunHost({u"compare", past_.address, past_.address + past_.second});
    EXPECT_EQ(same.exitCode, 0);
    EXPECT_EQ(same.output, "5 equal\n");
    const HostRun files =
        RunHost({u"compare", past_.Of(u"a.txt", past_.first), past_.Of(u"a.txt")});
    EXPECT_EQ(files.exitCode, 3);
    EXPECT_EQ(files.output, "a.txt: different, 3 and 8 bytes, first difference at offset 0\n");
    const HostRun kinds = RunHost({u"compare", past_.address, past_.Of(u"a.txt")});
    EXPECT_EQ(kinds.exitCode, 3);
    EXPECT_THAT(kinds.output, EndsWith("a file and a folder\n"));
    ExpectFailure({u"compare", past_.address, past_.address + GetParam().unknownRevision},
                  noRevision);
    const auto json = JsonLinesOf(
        RunHost({u"--json", u"compare", past_.address + past_.first, past_.address}).output);
    ASSERT_THAT(json, SizeIs(5));
    EXPECT_EQ(json[0].Text("result"), "different");
    EXPECT_EQ(json[0].Raw("left_size"), "3");
    EXPECT_EQ(json[1].Text("result"), "equal");
}

TEST_P(PastTest, ARevisionIsComparedWithFilesOnTheDisk)
{
    const TempFolder disk;
    std::filesystem::create_directory(disk.Path() / "sub");
    WriteBytes(disk / u"a.txt", "new text");
    WriteBytes(disk / u"b c.txt", "b");
    WriteBytes(disk / u"more.txt", "more");
    WriteBytes(Joined(disk / u"sub", u"deep.txt"), "deep");
    EXPECT_EQ(RunHost({u"compare", past_.address, disk.Text()}).output, "5 equal\n");
    WriteBytes(Joined(disk / u"sub", u"deep.txt"), "DEEP");
    WriteBytes(disk / u"own", "");
    const HostRun run = RunHost({u"compare", disk.Text(), past_.address + past_.second});
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_THAT(LinesOf(run.output),
                ElementsAre("own: only left",
                            "sub/deep.txt: different, 4 and 4 bytes, first difference at offset 0",
                            "4 equal, 1 different, 1 only left"));
    if (past_.workingCopy.empty())
        return;
    EXPECT_EQ(RunHost({u"compare", past_.address, past_.workingCopy}).output, "5 equal\n");
    EXPECT_EQ(RunHost({u"compare", past_.address + past_.first, past_.workingCopy}).exitCode, 3);
}

INSTANTIATE_TEST_SUITE_P(Systems, PastTest, testing::ValuesIn(PastSystems()),
                         [](const testing::TestParamInfo<PastSystem>& system) {
                             return std::string(system.param.name);
                         });

// What only histories in full can do.
TEST(Log, RefusesWhatTheFileSystemDoesNotOffer)
{
    const TempFolder folder;
    WriteBytes(folder / u"a.txt", "x");
    for (const std::u16string option : {u"--follow", u"--working-copy", u"--skip=1",
                                        u"--since=2026-01-01", u"--until=2026-01-01"})
    {
        const HostRun run = RunPrescribed({u"log", option, folder / u"a.txt"});
        EXPECT_EQ(run.exitCode, 1);
        EXPECT_THAT(run.output, IsEmpty());
        EXPECT_EQ(run.errors, "The file system doesn't offer " +
                                  Utf8(option.substr(0, option.find(u'='))) + ".\n0x80004001\n");
    }
}

} // namespace

} // namespace tarnwell::test
