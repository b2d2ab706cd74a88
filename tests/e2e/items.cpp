// ls and stat.
#include "e2e/hostrun.h"
#include "e2e/json.h"
#include "support/tempfolder.h"

#include <gmock/gmock.h>

#include <chrono>

namespace tarnwell::test
{

namespace
{

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

const std::vector<std::string> itemNames = {
    "name", "path",     "parent",   "folder",          "attributes",
    "size", "modified", "filetime", "comparable_name", "comparable_url"};

// 1 March 2024, 12:34:56 UTC, in seconds since 1970, and as the file time.
inline constexpr std::int64_t someSeconds = 1709296496;
inline constexpr const char* someFileTime = "133537700960000000";

void SetTime(const std::u16string& path)
{
    const std::chrono::sys_seconds time{std::chrono::seconds(someSeconds)};
    std::filesystem::last_write_time(path, std::chrono::file_clock::from_sys(time));
}

TEST(Ls, FilesWithoutNamedStreamsShowOnce)
{
    const TempFolder folder;
    WriteBytes(folder / u"a.txt", "12345");
    const HostRun run = RunHost({u"--json", u"--streams", u"ls", folder.Text()});
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.output, RunHost({u"--json", u"ls", folder.Text()}).output);
    EXPECT_EQ(JsonLinesOf(run.output).size(), 1U);
}

TEST(Ls, TellsAllFactsInOrderOfNames)
{
    const TempFolder folder;
    WriteBytes(folder / u"b.txt", "12345");
    WriteBytes(folder / u"a.txt", "");
    std::filesystem::create_directory(folder / u"c");
    SetTime(folder / u"b.txt");

    const HostRun run = RunHost({u"--json", u"ls", folder.Text()});
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.exitCode, 0);
    const std::vector<JsonLine> items = JsonLinesOf(run.output);
    ASSERT_EQ(items.size(), 3U);
    EXPECT_EQ(items[0].Names(), itemNames);
    EXPECT_EQ(items[0].Text("name"), "a.txt");
    EXPECT_EQ(items[1].Text("name"), "b.txt");
    EXPECT_EQ(items[1].Text("path"), Utf8(folder / u"b.txt"));
    EXPECT_EQ(items[1].Text("parent"), Utf8(folder.Text()));
    EXPECT_EQ(items[1].Raw("folder"), "false");
    EXPECT_EQ(items[1].Raw("size"), "5");
    EXPECT_EQ(items[1].Text("modified"), "2024-03-01T12:34:56.0000000Z");
    EXPECT_EQ(items[1].Raw("filetime"), someFileTime);
    EXPECT_EQ(items[1].Raw("comparable_name"), "null");
    EXPECT_EQ(items[1].Raw("comparable_url"), "null");
    EXPECT_EQ(items[2].Text("name"), "c");
    EXPECT_EQ(items[2].Raw("folder"), "true");
    EXPECT_EQ(items[2].Raw("size"), "null");
}

TEST(Ls, AlignsForReaders)
{
    const TempFolder folder;
    WriteBytes(folder / u"big", std::string(1536, 'x'));
    WriteBytes(folder / u"small", "x");
    SetTime(folder / u"big");
    SetTime(folder / u"small");
    const std::vector<std::string> lines = LinesOf(RunHost({u"ls", folder.Text()}).output);
    EXPECT_THAT(lines, ElementsAre("----     1.5 KiB  2024-03-01 12:34:56Z  big",
                                   "----         1 B  2024-03-01 12:34:56Z  small"));
}

TEST(Ls, EmptyFolderPrintsNothing)
{
    const TempFolder folder;
    const HostRun run = RunHost({u"ls", folder.Text()});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_THAT(run.output, IsEmpty());
}

TEST(Ls, WorkingFolderByItsShortName)
{
    const TempFolder folder;
    WriteBytes(folder / u"only.txt", "");
    const HostRun run = RunHost(HostCall{{u"--json", u"ls", u"."}, {}, {}, folder.Path()});
    const std::vector<JsonLine> items = JsonLinesOf(run.output);
    ASSERT_EQ(items.size(), 1U);
    EXPECT_EQ(items[0].Text("name"), "only.txt");
}

TEST(Ls, ManyItems)
{
    const TempFolder folder;
    std::vector<std::string> names;
    for (int i = 1000; i < 4000; ++i)
    {
        names.push_back("item " + std::to_string(i));
        WriteBytes(folder / std::filesystem::path(names.back()).u16string(), "");
    }
    std::vector<std::string> listed;
    for (const JsonLine& item : JsonLinesOf(RunHost({u"--json", u"ls", folder.Text()}).output))
        listed.push_back(item.Text("name"));
    EXPECT_EQ(listed, names);
}

TEST(Ls, OddNames)
{
    const TempFolder folder;
    const std::vector<std::u16string> names = {u" lead", u"a b  c", u"naïve", u"日本語",
                                               u"\U0001F600 astral"};
    for (const std::u16string& name : names)
        WriteBytes(folder / name, Utf8(name));
    std::vector<std::string> wanted;
    std::vector<std::string> listed;
    for (const std::u16string& name : names)
        wanted.push_back(Utf8(name));
    for (const JsonLine& item : JsonLinesOf(RunHost({u"--json", u"ls", folder.Text()}).output))
        listed.push_back(item.Text("name"));
    EXPECT_THAT(listed, testing::UnorderedElementsAreArray(wanted));
    const std::string readable = RunHost({u"ls", folder.Text()}).output;
    for (const std::string& name : wanted)
        EXPECT_THAT(readable, HasSubstr("  " + name + "\n"));
}

TEST(Ls, MissingFolderFails)
{
    const TempFolder folder;
    const std::u16string path = folder / u"missing";
    const HostRun run = RunHost({u"ls", path});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.output, IsEmpty());
    EXPECT_THAT(run.errors, StartsWith("Failed to open \"" + Utf8(path) + "\". "));
    EXPECT_THAT(run.errors, EndsWith("\n0x80070002\n"));
}

TEST(Ls, FileIsNoFolder)
{
    const TempFolder folder;
    WriteBytes(folder / u"file", "");
    const HostRun run = RunHost({u"--json", u"ls", folder / u"file"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.output, IsEmpty());
    const std::vector<JsonLine> failures = JsonLinesOf(run.errors);
    ASSERT_EQ(failures.size(), 1U);
    EXPECT_EQ(failures[0].Names(), (std::vector<std::string>{"status", "message"}));
    EXPECT_EQ(failures[0].Text("status"), "0x80070002");
    EXPECT_THAT(failures[0].Text("message"), StartsWith("Failed to open \""));
}

TEST(Stat, FileForReaders)
{
    const TempFolder folder;
    WriteBytes(folder / u"f.bin", std::string(2048, 'x'));
    SetTime(folder / u"f.bin");
    const HostRun run = RunHost({u"stat", folder / u"f.bin"});
    EXPECT_EQ(run.exitCode, 0);
    const std::vector<std::string> lines = LinesOf(run.output);
    ASSERT_EQ(lines.size(), 7U);
    EXPECT_EQ(lines[0], "name            f.bin");
    EXPECT_EQ(lines[1], "path            " + Utf8(folder / u"f.bin"));
    EXPECT_EQ(lines[2], "parent          " + Utf8(folder.Text()));
    EXPECT_EQ(lines[3], "kind            file");
    EXPECT_THAT(lines[4], StartsWith("attributes      0x000000"));
    EXPECT_EQ(lines[5], "size            2.0 KiB (2048 B)");
    EXPECT_EQ(lines[6], "modified        2024-03-01 12:34:56Z");
}

TEST(Stat, FolderWithSeparatorAtItsEnd)
{
    const TempFolder folder;
    std::filesystem::create_directory(folder / u"sub");
    const HostRun run = RunHost({u"--json", u"stat", folder / u"sub/"});
    EXPECT_EQ(run.errors, "");
    const JsonLine item(LinesOf(run.output).at(0));
    EXPECT_EQ(item.Names(), itemNames);
    EXPECT_EQ(item.Raw("folder"), "true");
    EXPECT_EQ(item.Raw("attributes"), "16");
}

TEST(Stat, SizesBeyondFourGibibytes)
{
    const TempFolder folder;
    WriteBytes(folder / u"sparse", "");
    std::filesystem::resize_file(folder / u"sparse", 5'000'000'123);
    const HostRun run = RunHost({u"--json", u"stat", folder / u"sparse"});
    EXPECT_EQ(JsonLine(LinesOf(run.output).at(0)).Raw("size"), "5000000123");
}

TEST(Stat, MissingItemFails)
{
    const TempFolder folder;
    const HostRun run = RunHost({u"stat", folder / u"missing"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.errors, StartsWith("Failed to open \"" + Utf8(folder / u"missing") + "\". "));
    EXPECT_THAT(run.errors, EndsWith("\n0x80070002\n"));
}

TEST(Stat, MissingFolderOnTheWayIsTold)
{
    const TempFolder folder;
    const std::u16string path = Joined(folder / u"missing", u"file");
    EXPECT_THAT(RunHost({u"stat", path}).errors, EndsWith("\n0x80070003\n"));
}

} // namespace

} // namespace tarnwell::test
