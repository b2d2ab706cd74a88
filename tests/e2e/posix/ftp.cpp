// Every command on addresses of real FTP servers.
#include "e2e/json.h"
#include "e2e/posix/ftphost.h"

namespace tarnwell::test
{
namespace
{

namespace fs = std::filesystem;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;
using testing::UnorderedElementsAreArray;

class FtpCommandLine : public FtpHost
{
};

INSTANTIATE_TEST_SUITE_P(Real, FtpCommandLine, testing::ValuesIn(allFtpServers),
                         testing::PrintToStringParamName());

TEST_P(FtpCommandLine, WhatIsPutIsListedToldReadAndRemoved)
{
    std::string bytes(3'000'001, 'c');
    bytes[1'500'000] = '\0';
    WriteBytes(folder / u"source", bytes);
    EXPECT_EQ(Printed({u"put", folder / u"source", Address(u"a b.bin")}), "");
    EXPECT_TRUE(ReadBytes(Stored(u"a b.bin").u16string()) == bytes);

    EXPECT_THAT(Printed({u"ls", Address({})}), EndsWith("a b.bin\n"));
    const std::vector<JsonLine> items = JsonLinesOf(Printed({u"--json", u"ls", Address({})}));
    ASSERT_EQ(items.size(), 1U);
    EXPECT_EQ(items[0].Text("name"), "a b.bin");
    EXPECT_EQ(items[0].Text("path"), Utf8(Address(u"a b.bin")));
    EXPECT_EQ(items[0].Raw("size"), "3000001");
    EXPECT_EQ(items[0].Raw("folder"), "false");

    EXPECT_THAT(Printed({u"stat", Address(u"a b.bin")}), HasSubstr("3000001"));
    const JsonLine facts(LinesOf(Printed({u"--json", u"stat", Address(u"a b.bin")})).at(0));
    EXPECT_EQ(facts.Text("modified"), items[0].Text("modified"));
    EXPECT_EQ(facts.Text("parent"), Utf8(Address({})));
    EXPECT_EQ(facts.Text("comparable_url"), Utf8(Address(u"a b.bin")));

    EXPECT_TRUE(Printed({u"cat", Address(u"a b.bin")}) == bytes);
    EXPECT_EQ(Printed({u"--yes", u"rm", Address(u"a b.bin")}), "");
    EXPECT_TRUE(fs::is_empty(Stored({})));
}

TEST_P(FtpCommandLine, AllBelowAFolderIsFound)
{
    fs::create_directories(Stored(u"one/two"));
    WriteBytes(Stored(u"one/two/x.txt").u16string(), "x");
    WriteBytes(Stored(u"y.txt").u16string(), "y");
    EXPECT_THAT(LinesOf(Printed({u"find", Address({})})),
                testing::ElementsAre(Utf8(Address(u"one")), Utf8(Address(u"y.txt")),
                                     Utf8(Address(u"one/two")), Utf8(Address(u"one/two/x.txt"))));
    EXPECT_THAT(Printed({u"ls", u"-r", Address({}), u"x*"}), EndsWith("  one/two/x.txt\n"));
}

TEST_P(FtpCommandLine, StandardInputIsPut)
{
    const HostRun run = RunHost(
        {.arguments = LoggedOn({u"put", u"-", Address(u"a")}), .input = std::string("in\0put", 6)});
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(ReadBytes(Stored(u"a").u16string()), std::string("in\0put", 6));
}

TEST_P(FtpCommandLine, FoldersAreMadeAndRemovedWithWhatIsInThem)
{
    const HostRun refused = Run({u"mkdir", Address(u"one/two")});
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_THAT(refused.errors, StartsWith("Failed to create a folder at \"w/t/one/two\"."));
    Printed({u"mkdir", u"-p", Address(u"one/two")});
    EXPECT_TRUE(fs::is_directory(Stored(u"one/two")));
    WriteBytes(folder / u"x", "x");
    Printed({u"put", folder / u"x", Address(u"one/two/x")});
    const HostRun full = Run({u"--yes", u"rm", Address(u"one")});
    EXPECT_EQ(full.exitCode, 1);
    EXPECT_THAT(full.errors, HasSubstr("Can't delete the file or folder \"w/t/one\"."));
    EXPECT_TRUE(fs::exists(Stored(u"one/two/x")));
    Printed({u"--yes", u"rm", u"-r", Address(u"one")});
    EXPECT_TRUE(fs::is_empty(Stored({})));
}

TEST_P(FtpCommandLine, SeveralAreRemovedAtOnce)
{
    WriteBytes(folder / u"x", "x");
    for (const char16_t* const name : {u"a", u"b", u"c"})
        Printed({u"put", folder / u"x", Address(name)});
    Printed({u"--yes", u"rm", Address(u"a"), Address(u"c")});
    EXPECT_FALSE(fs::exists(Stored(u"a")));
    EXPECT_TRUE(fs::exists(Stored(u"b")));
    EXPECT_FALSE(fs::exists(Stored(u"c")));
}

TEST_P(FtpCommandLine, CopiesWithinTheServer)
{
    const std::string bytes(500'000, 'c');
    WriteBytes(folder / u"x", bytes);
    Printed({u"put", folder / u"x", Address(u"from")});
    Printed({u"put", folder / u"x", Address(u"to")});
    Printed({u"mkdir", Address(u"sub")});
    Printed({u"cp", Address(u"from"), Address(u"to")});
    Printed({u"cp", Address(u"from"), Address(u"sub/new")});
    EXPECT_TRUE(ReadBytes(Stored(u"to").u16string()) == bytes);
    EXPECT_TRUE(ReadBytes(Stored(u"sub/new").u16string()) == bytes);
    const HostRun missing = Run({u"cp", Address(u"none"), Address(u"other")});
    EXPECT_EQ(missing.exitCode, 1);
    EXPECT_FALSE(fs::exists(Stored(u"other")));
}

TEST_P(FtpCommandLine, ComparesWithTheDiskAndWithItself)
{
    WriteBytes(folder / u"x", "same");
    WriteBytes(folder / u"y", "sane");
    for (const char16_t* const sub : {u"left", u"right"})
    {
        Printed({u"mkdir", Address(sub)});
        Printed({u"put", folder / u"x", Address(sub + std::u16string(u"/a"))});
    }
    EXPECT_EQ(Printed({u"compare", folder / u"x", Address(u"left/a")}),
              "x: equal, 4 and 4 bytes\n");
    const HostRun different = Run({u"compare", folder / u"y", Address(u"left/a")});
    EXPECT_EQ(different.exitCode, 3);
    EXPECT_EQ(different.output, "y: different, 4 and 4 bytes, first difference at offset 2\n");
    EXPECT_EQ(Run({u"compare", Address(u"left"), Address(u"right")}).exitCode, 0);
    Printed({u"put", folder / u"y", Address(u"right/a")});
    const HostRun folders = Run({u"compare", Address(u"left"), Address(u"right")});
    EXPECT_EQ(folders.exitCode, 3);
    EXPECT_THAT(folders.output, HasSubstr("a"));
}

TEST_P(FtpCommandLine, NamesOfAllKindsAreExact)
{
    // As many as a command line may spoil; the module's tests have the others.
    std::vector<std::u16string> names{u" a b",   u"-l",          u"#x?",   u"50%41*",
                                      u"a\"b'c", u"back\\slash", u"\u65e5"};
    std::vector<std::string> shown;
    for (const std::u16string& name : names)
        shown.push_back(EncodeName(name).value());
    // Of these JSON knows no character, so each byte is written as the unit that stands for it.
    names.push_back(DecodeName("\xE4"));
    shown.emplace_back("\\udce4");
    names.push_back(DecodeName("y\xFF\xFF"));
    shown.emplace_back("y\\udcff\\udcff");
    Printed({u"mkdir", Address(u"d")});
    for (const std::u16string& name : names)
    {
        WriteBytes(folder / u"x", EncodeName(name).value());
        Printed({u"put", folder / u"x", Address(u"d/" + name)});
        EXPECT_EQ(Printed({u"cat", Address(u"d/" + name)}), EncodeName(name).value());
    }
    std::vector<std::string> listed;
    for (const JsonLine& item : JsonLinesOf(Printed({u"--json", u"ls", Address(u"d")})))
        listed.push_back(item.Text("name"));
    EXPECT_THAT(listed, UnorderedElementsAreArray(shown));
    std::vector<std::u16string> removal{u"--yes", u"rm"};
    for (const std::u16string& name : names)
        removal.push_back(Address(u"d/" + name));
    Printed(removal);
    EXPECT_TRUE(fs::is_empty(Stored(u"d")));
}

TEST_P(FtpCommandLine, FailuresHaveTheServersWordsAndTheirStatus)
{
    WriteBytes(folder / u"x", "x");
    const HostRun refused = Run({u"put", folder / u"x", Address(u"none/x")});
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_THAT(refused.errors,
                StartsWith("Failed to open \"w/t/none/x\" for reading or writing.\n\n55"));
    EXPECT_THAT(refused.errors, EndsWith("\n0x80072EE3\n"));
    for (const char16_t* const command : {u"cat", u"ls", u"stat"})
    {
        const HostRun missing = Run({command, Address(u"none")});
        EXPECT_EQ(missing.exitCode, 1);
        EXPECT_EQ(missing.output, "");
        EXPECT_THAT(missing.errors, StartsWith("Couldn't find the URI \"w/t/none\"."));
        EXPECT_THAT(missing.errors, EndsWith("\n0x80070002\n"));
    }
}

TEST_P(FtpCommandLine, LogonsAreAskedForRefusedAndDeclined)
{
    const HostRun refused = RunHost({u"--user", u"ftp", u"--password", u"not-this", u"--server",
                                     server.Host(), u"ls", Address({})});
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_THAT(refused.errors, HasSubstr("The username and/or password is incorrect."));
    EXPECT_EQ(refused.errors.find("not-this"), std::string::npos);
    const HostRun declined = RunHost({u"--no-credentials", u"ls", Address({})});
    EXPECT_EQ(declined.exitCode, 1);
    EXPECT_THAT(declined.errors, EndsWith("\n0x80070005\n"));
    EXPECT_EQ(server.Logins(), 0);
    const HostRun withoutRevisions = Run({u"log", Address(u"a")});
    EXPECT_EQ(withoutRevisions.exitCode, 1);
    EXPECT_THAT(withoutRevisions.output, IsEmpty());
}

} // namespace
} // namespace tarnwell::test
