// Runs of clients where Linux promises more: signals, heirs of the pipes, and runs that leave one
// another alone.
#include "frame/messages.h"
#include "platform/child/commands.h"
#include "platform/posix/unprivileged.h"
#include "support/clientcall.h"
#include "support/environmentvalue.h"
#include "support/posix/child.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <set>
#include <sstream>
#include <unistd.h>

namespace tarnwell::test
{
namespace
{

namespace fs = std::filesystem;

// The variables in a list of entries, each closed by a zero.
std::set<std::string> NamesIn(const std::u16string& printed)
{
    std::set<std::string> names;
    std::istringstream entries(fs::path(printed).string());
    for (std::string entry; std::getline(entries, entry, '\0');)
        names.insert(entry.substr(0, entry.find('=')));
    return names;
}

TEST(ClientRunPosix, ACodeThatTheHostLosesStaysAsItWasSet)
{
    const auto act = [] {
        signal(SIGCHLD, SIG_IGN);
        const ClientOutcome outcome = RunChildClient(u"exit 3");
        return outcome.exitCode == 1 ? 0 : 1;
    };
    EXPECT_EQ(ExitCodeOfChild(act), 0);
}

TEST(ClientRunPosix, AnHeirOfThePipesIsWaitedFor)
{
    const TempFolder folder;
    WriteBytes(folder / u"told", "");
    const ClientOutcome outcome = RunChildClient(u"heir 2000 \"" + (folder / u"told") + u"\" \"" +
                                                 (folder / u"ended") + u"\"");
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.errors, u"the heir's words");
    WaitForFile(folder / u"ended");
}

TEST(ClientRunPosix, AnHeirThatLetsThePipesGoIsNot)
{
    const TempFolder folder;
    const ClientOutcome outcome =
        RunChildClient(u"heir 0 \"" + (folder / u"told") + u"\" \"" + (folder / u"ended") + u"\"");
    EXPECT_EQ(outcome.errors, u"the heir's words");
    WriteBytes(folder / u"told", "");
    WaitForFile(folder / u"ended");
    EXPECT_EQ(ReadBytes(folder / u"ended"), "told") << "it was waited for until it gave up";
}

TEST(ClientRunPosix, VariablesAreHiddenAsTheRowSays)
{
    const EnvironmentValue set("GIT_DIR", "/nowhere");
    const auto entries = [](const ClientRow& row) {
        const auto output = NewOutputFile();
        RunClient(row, CallOfChild(u"environment", *output));
        return NamesIn(Printed(*output));
    };
    ClientRow hiding = childClient;
    hiding.hiddenNames = u"GIT_";
    EXPECT_TRUE(entries(childClient).contains("GIT_DIR"));
    EXPECT_FALSE(entries(hiding).contains("GIT_DIR"));
    EXPECT_TRUE(entries(hiding).contains("PATH"));
}

// Whatever the host has set of these five; of the rest of its language settings nothing goes.
TEST(ClientRunPosix, EveryClientSpeaksPlainEnglishInUtf8)
{
    const EnvironmentValue all("LC_ALL", "ja_JP.eucJP");
    const EnvironmentValue language("LANGUAGE", "ja");
    const EnvironmentValue plain("HGPLAIN", nullptr);
    const EnvironmentValue except("HGPLAINEXCEPT", "alias");
    const EnvironmentValue encoding("HGENCODING", "latin1");
    const EnvironmentValue messages("LC_MESSAGES", "ja_JP.UTF-8");
    ClientRow hiding = childClient;
    hiding.hiddenNames = u"GIT_";
    for (const ClientRow& row : {childClient, hiding})
    {
        const auto output = NewOutputFile();
        RunClient(row, CallOfChild(u"environment", *output));
        const std::u16string printed = u'\0' + Printed(*output);
        for (const std::u16string_view entry :
             {u"LC_ALL=C.UTF-8", u"LANGUAGE=en", u"HGPLAIN=1", u"HGPLAINEXCEPT=",
              u"HGENCODING=utf-8", u"LC_MESSAGES=ja_JP.UTF-8"})
        {
            const std::u16string name(entry.substr(0, entry.find(u'=') + 1));
            const std::size_t found = printed.find(u'\0' + name);
            ASSERT_NE(found, std::u16string::npos) << testing::PrintToString(name);
            EXPECT_TRUE(std::u16string_view(printed).substr(found + 1).starts_with(
                std::u16string(entry) + u'\0'));
            EXPECT_EQ(printed.find(u'\0' + name, found + 1), std::u16string::npos) << "once";
        }
    }
}

TEST(ClientRunPosix, AClientThatASignalEndedHasFailedWhateverItWrote)
{
    for (const auto& ending : {std::pair{u"kill", u"Killed"}, {u"signal 15", u"Terminated"}})
    {
        const Thrown thrown = ThrownBy([&] { RunChildClient(ending.first); });
        EXPECT_EQ(thrown.status, static_cast<HRESULT>(0x8007042B));
        EXPECT_EQ(thrown.text, FormatMessageById(childClient.communication) + u" " + ending.second);
    }
    EXPECT_EQ(RunChildClient(u"exit 137").exitCode, 137) << "a code of its own choice";
}

// A client that lies in the folder where it would run, and nowhere else.
TEST(ClientRunPosix, NothingInTheWorkingFolderIsEverRun)
{
    const TempFolder folder;
    const TempFolder elsewhere;
    for (const TempFolder* each : {&folder, &elsewhere})
    {
        WriteBytes(*each / u"tarnwell-client", "#!/bin/sh\necho run\n");
        fs::permissions(each->Path() / "tarnwell-client", fs::perms::owner_all);
    }
    const fs::path before = fs::current_path();
    fs::current_path(folder.Path());
    const auto output = NewOutputFile();
    ClientCall call = CallOfChild(u"", *output);
    call.program = u"tarnwell-client";
    call.workingFolder = folder.Text();
    for (const std::string path :
         {"", ":", ".", "./", "::/nonexistent", "/nonexistent:", "../.", "/nonexistent::."})
    {
        const EnvironmentValue searched("PATH", path.c_str());
        const Thrown thrown = ThrownBy([&] { RunClient(childClient, call); });
        EXPECT_EQ(thrown.status, static_cast<HRESULT>(0x80070002)) << path;
    }
    EXPECT_EQ(Printed(*output), u"");
    const EnvironmentValue searched("PATH", (":.:" + elsewhere.Path().string()).c_str());
    RunClient(childClient, call);
    EXPECT_EQ(Printed(*output), u"run\n");
    fs::current_path(before);
}

TEST(ClientRunPosix, AProgramInNoneOfTheFoldersIsNotFound)
{
    // One that may not be entered, and one that holds something of the name that is no program.
    const TempFolder closed;
    const TempFolder plain;
    fs::permissions(closed.Path(), fs::perms::none);
    WriteBytes(plain / u"tarnwell-no-such-program", "text");
    for (const char* const path : {"/nonexistent", "/etc/passwd", "/nonexistent:/dev/null/x", "",
                                   closed.Path().c_str(), plain.Path().c_str()})
    {
        const EnvironmentValue searched("PATH", path);
        const auto output = NewOutputFile();
        ClientCall call = CallOfChild(u"exit 0", *output);
        call.program = u"tarnwell-no-such-program";
        AsNobody([&] {
            const Thrown thrown = ThrownBy([&] { RunClient(childClient, call); });
            EXPECT_EQ(thrown.text, FormatMessageWithStatus(childClient.notFound, thrown.status))
                << path;
        });
    }
}

} // namespace
} // namespace tarnwell::test
