// Names that only this platform has: any bytes but "/" and NUL.
#include "e2e/hostrun.h"
#include "e2e/json.h"
#include "support/tempfolder.h"

#include <tarnwell/text.h>

#include <gmock/gmock.h>

namespace tarnwell::test
{

namespace
{

using testing::HasSubstr;

namespace fs = std::filesystem;

const std::string rawName = "caf\xE9 \xFF.txt";

void Write(const fs::path& path, std::string_view bytes)
{
    // By the system's bytes: WriteBytes takes text.
    FILE* const file = std::fopen(path.c_str(), "wb");
    ASSERT_NE(file, nullptr);
    ASSERT_EQ(std::fwrite(bytes.data(), 1, bytes.size(), file), bytes.size());
    ASSERT_EQ(std::fclose(file), 0);
}

TEST(RawNames, AreListedByteForByte)
{
    const TempFolder folder;
    Write(folder.Path() / rawName, "x");
    const HostRun run = RunHost({u"ls", folder.Text()});
    EXPECT_THAT(run.output, HasSubstr("  " + rawName + "\n"));
}

TEST(RawNames, AreValidJson)
{
    const TempFolder folder;
    Write(folder.Path() / rawName, "x");
    const HostRun run = RunHost({u"--json", u"ls", folder.Text()});
    EXPECT_EQ(JsonLine(LinesOf(run.output).at(0)).Text("name"), "caf\\udce9 \\udcff.txt");
}

TEST(RawNames, AreOpenedWrittenAndDeleted)
{
    const TempFolder folder;
    const std::u16string path = folder / DecodeName(rawName);
    EXPECT_EQ(RunHost(HostCall{{u"put", u"-", path}, "content", {}, {}}).errors, "");
    EXPECT_TRUE(fs::exists(folder.Path() / rawName));
    EXPECT_EQ(RunHost({u"cat", path}).output, "content");
    EXPECT_EQ(RunHost({u"--yes", u"rm", path}).exitCode, 0);
    EXPECT_FALSE(fs::exists(folder.Path() / rawName));
}

TEST(RawNames, AreToldInFailures)
{
    const TempFolder folder;
    const HostRun run = RunHost({u"cat", folder / DecodeName(rawName)});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.errors, HasSubstr(rawName));
}

TEST(OddNames, QuotesControlsAndSeparatorsOfOtherSystems)
{
    const TempFolder folder;
    const std::vector<std::string> names = {"a\"b",  "back\\slash", "C:file",      "new\nline",
                                            "*?<>|", "stream:name", "tab\tesc\x1b"};
    for (const std::string& name : names)
        Write(folder.Path() / name, name);
    std::vector<std::string> listed;
    for (const JsonLine& item : JsonLinesOf(RunHost({u"--json", u"ls", folder.Text()}).output))
        listed.push_back(item.Text("name"));
    EXPECT_THAT(listed, testing::UnorderedElementsAreArray(names));
    for (const std::string& name : names)
        EXPECT_EQ(RunHost({u"cat", folder / DecodeName(name)}).output, name);
}

} // namespace

} // namespace tarnwell::test
