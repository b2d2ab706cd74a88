// cat and put.
#include "e2e/hostrun.h"
#include "support/tempfolder.h"

#include <gmock/gmock.h>

#include <cstdint>

namespace tarnwell::test
{

namespace
{

using testing::EndsWith;
using testing::IsEmpty;
using testing::StartsWith;

// No block of it is like another one.
std::string Noise(std::size_t size)
{
    std::string bytes(size, '\0');
    std::uint32_t state = 1;
    for (char& byte : bytes)
    {
        state = state * 1664525 + 1013904223;
        byte = static_cast<char>(state >> 24);
    }
    return bytes;
}

// What a stream in text mode would change or end at.
const std::string everyByte = [] {
    std::string bytes = "\r\n\n\r\x1A\r\n";
    for (int i = 0; i < 256; ++i)
        bytes += static_cast<char>(i);
    return bytes;
}();

TEST(Cat, EveryByteAsItIs)
{
    const TempFolder folder;
    WriteBytes(folder / u"f", everyByte);
    const HostRun run = RunHost({u"cat", folder / u"f"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.errors, "");
    EXPECT_TRUE(run.output == everyByte);
}

TEST(Cat, BigFile)
{
    const TempFolder folder;
    const std::string bytes = Noise(9'000'001);
    WriteBytes(folder / u"big", bytes);
    EXPECT_TRUE(RunHost({u"cat", folder / u"big"}).output == bytes);
}

TEST(Cat, EmptyFile)
{
    const TempFolder folder;
    WriteBytes(folder / u"empty", "");
    const HostRun run = RunHost({u"cat", folder / u"empty"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_THAT(run.output, IsEmpty());
}

TEST(Cat, FolderFails)
{
    const TempFolder folder;
    const HostRun run = RunHost({u"cat", folder.Text()});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.output, IsEmpty());
    EXPECT_THAT(run.errors, StartsWith("Failed to open \"" + Utf8(folder.Text()) + "\"."));
}

TEST(Put, FromAFile)
{
    const TempFolder folder;
    const std::string bytes = Noise(300'000);
    WriteBytes(folder / u"from", bytes);
    const HostRun run = RunHost({u"put", folder / u"from", folder / u"to"});
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_THAT(run.output, IsEmpty());
    EXPECT_TRUE(ReadBytes(folder / u"to") == bytes);
}

TEST(Put, FromStandardInput)
{
    const TempFolder folder;
    const HostRun run = RunHost(HostCall{{u"put", u"-", folder / u"to"}, everyByte, {}, {}});
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_TRUE(ReadBytes(folder / u"to") == everyByte);
}

TEST(Put, ReplacesALongerFile)
{
    const TempFolder folder;
    WriteBytes(folder / u"from", "short");
    WriteBytes(folder / u"to", "something much longer");
    EXPECT_EQ(RunHost({u"put", folder / u"from", folder / u"to"}).exitCode, 0);
    EXPECT_EQ(ReadBytes(folder / u"to"), "short");
}

TEST(Put, MissingSourceLeavesTheTarget)
{
    const TempFolder folder;
    WriteBytes(folder / u"to", "kept");
    const HostRun run = RunHost({u"put", folder / u"missing", folder / u"to"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.errors, EndsWith("\n0x80070002\n"));
    EXPECT_EQ(ReadBytes(folder / u"to"), "kept");
}

// Whatever it is called: opening it for writing would empty it.
TEST(Put, OntoTheFileThatItReadsIsRefused)
{
    namespace fs = std::filesystem;
    const TempFolder folder;
    WriteBytes(folder / u"file", "kept");
    fs::create_directory(folder / u"sub");
    fs::create_hard_link(folder / u"file", folder / u"hard");
    const std::u16string around = Joined(Joined(folder / u"sub", u".."), u"file");
    for (const std::u16string& target : {folder / u"file", folder / u"hard", around})
    {
        const HostRun run = RunHost({u"put", folder / u"file", target});
        EXPECT_EQ(run.exitCode, 1);
        EXPECT_EQ(run.errors,
                  "\"put\" can't write \"" + Utf8(target) + "\" from itself.\n0x80070020\n");
        EXPECT_EQ(ReadBytes(folder / u"file"), "kept");
    }
    EXPECT_EQ(RunHost({u"put", folder / u"hard", folder / u"file"}).exitCode, 1);
    EXPECT_EQ(ReadBytes(folder / u"hard"), "kept");
}

TEST(Put, IntoAMissingFolderFails)
{
    const TempFolder folder;
    WriteBytes(folder / u"from", "x");
    const std::u16string target = Joined(folder / u"missing", u"to");
    const HostRun run = RunHost({u"put", folder / u"from", target});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.errors,
                StartsWith("Failed to open \"" + Utf8(target) + "\" for reading or writing. "));
    EXPECT_THAT(run.errors, EndsWith("\n0x80070003\n"));
}

TEST(Put, OptionsEndBeforeNamesThatLookLikeThem)
{
    const TempFolder folder;
    WriteBytes(folder / u"-x", "dash");
    const HostRun run = RunHost(HostCall{{u"put", u"--", u"-x", u"--json"}, {}, {}, folder.Path()});
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(ReadBytes(folder / u"--json"), "dash");
}

} // namespace

} // namespace tarnwell::test
