// How the Perforce client is run, and what becomes of what it says: on the stand-in for it.
#include "module/perforcetest.h"
#include "support/p4output.h"
#include "support/perforcedepot.h"

#include <tarnwell/text.h>

#include <atomic>
#include <thread>

namespace tarnwell::test
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

const std::u16string address = u"p4:////depot/base/a.txt";
const std::u16string folder = u"p4:////depot/base";

class PerforceClients : public PerforceTest
{
protected:
    PerforceClients()
    {
        depot_.Submit("a.txt", "one");
    }

    void Fail(const std::string& command, const std::string& way)
    {
        depot_.Tell("fail\t" + command + "\t" + way);
    }
    void ExpectFailed(const Outcome& outcome, HRESULT status, const std::u16string& of,
                      const std::u16string& words) const
    {
        EXPECT_EQ(outcome.status, status);
        ASSERT_TRUE(outcome.error);
        EXPECT_EQ(WithLineFeeds(WithoutLine(outcome.error->text)),
                  P4Failed(of, words) + u" [p4objects@N]");
    }
    // The third of three parts, separated by "|".
    static std::string TargetOf(const std::string& run)
    {
        const std::size_t start = run.find("print|-o|") + 9;
        return run.substr(start, run.find('|', start) - start);
    }

    PerforceDepot depot_;
};

TEST_F(PerforceClients, AFolderAndAnItemCostTwoRunsEach)
{
    List(folder);
    EXPECT_THAT(depot_.TakeRuns(),
                ElementsAre("fstat|-s|-l|//depot/base/*", "dirs|//depot/base/*"));
    List(folder + u"@12");
    EXPECT_THAT(depot_.TakeRuns(),
                ElementsAre("fstat|-s|-l|//depot/base/*@12", "dirs|//depot/base/*@12"));
    FileFacts(address + u"#1");
    EXPECT_THAT(depot_.TakeRuns(),
                ElementsAre("fstat|-s|-l|//depot/base/a.txt#1", "dirs|//depot/base/a.txt#1"));
    List(u"p4://");
    EXPECT_THAT(depot_.TakeRuns(), ElementsAre("fstat|-s|-l|//*", "dirs|//*"));
}

TEST_F(PerforceClients, ListedItemsNeedNoRun)
{
    ComPtr<IFolderContents> contents;
    ASSERT_EQ(Folder(folder)->GetContents(contents.Out()), S_OK);
    depot_.TakeRuns();
    for (const auto& item : ItemsOf(contents))
        FactsOf(item);
    EXPECT_THAT(depot_.TakeRuns(), IsEmpty());
}

TEST_F(PerforceClients, ARootNeedsNoRun)
{
    Fail("*", "refused");
    for (const std::u16string& root : {std::u16string(u"p4://"), folder + u"/", folder + u"///",
                                       std::u16string(u"p4://u@server/")})
    {
        const Facts facts = FactsOf(Folder(root));
        EXPECT_EQ(facts.attributes, folderAttribute);
        EXPECT_EQ(facts.name, u"");
        EXPECT_GT(facts.time, 133000000000000000U);
    }
    EXPECT_THAT(depot_.Runs(), IsEmpty());
}

TEST_F(PerforceClients, AHistoryCostsTwoRuns)
{
    Revisions(address + u"#1");
    EXPECT_THAT(depot_.TakeRuns(),
                ElementsAre("filelog|-l|-t|//depot/base/a.txt", "have|//depot/base/a.txt"));
    Revisions(u"p4://depot/base/a.txt//");
    EXPECT_THAT(depot_.TakeRuns(),
                ElementsAre("filelog|-l|-t|//depot/base/a.txt", "have|//depot/base/a.txt"));
}

TEST_F(PerforceClients, ContentGoesIntoATemporaryFile)
{
    EXPECT_EQ(Content(address + u"#1"), "one");
    const std::vector<std::string> runs = depot_.TakeRuns();
    ASSERT_THAT(runs, SizeIs(1));
    const std::string target = TargetOf(runs[0]);
    EXPECT_EQ(runs[0], "print|-o|" + target + "|-q|//depot/base/a.txt#1");
    EXPECT_NE(target.find("vrl"), std::string::npos);
    EXPECT_EQ(target.find(EncodeName(temporary_.Text()).value()), 0U);
}

// The client leaves it read-only.
TEST_F(PerforceClients, StreamsOutliveTheirItemAndLeaveNoFile)
{
    ComPtr<IFileStream> stream;
    EXPECT_THAT(Open(address, stream), Succeeded());
    ComPtr<IFileStream> other;
    EXPECT_THAT(Open(address, other), Succeeded());
    EXPECT_EQ(ReadAll(stream), "one");
    EXPECT_EQ(ReadAll(stream), "") << "read to its end";
    EXPECT_EQ(ReadAll(other), "one");
    EXPECT_EQ(stream->Close(), S_OK);
    char byte = 0;
    EXPECT_EQ(stream.As<::ISequentialStream>()->Read(&byte, 1, nullptr), Win32Status(6));
}

TEST_F(PerforceClients, WithoutAStreamToFillTheContentIsFetchedForNothing)
{
    EXPECT_EQ(File(address)->Open(readAccess, openExisting, nullptr), S_OK);
    EXPECT_THAT(depot_.TakeRuns(), SizeIs(1));
    EXPECT_EQ(File(folder + u"/none")->Open(readAccess, openExisting, nullptr), Win32Status(2));
}

TEST_F(PerforceClients, AnotherWayToOpenIsRefusedBeforeAnyRun)
{
    ComPtr<IFileStream> stream;
    EXPECT_EQ(File(address)->Open(readAccess, createAlways, stream.Out()), E_INVALIDARG);
    EXPECT_THAT(depot_.Runs(), IsEmpty());
}

TEST_F(PerforceClients, AreGivenTheCredentialsOfTheAddress)
{
    depot_.Tell("port\tserver:1666");
    depot_.Tell("user\tann\tse cret");
    EXPECT_EQ(Content(u"p4://ann:se cret@server:1666///depot/base/a.txt"), "one");
    EXPECT_EQ(TargetOf(depot_.Runs()[0]).empty(), false);
    EXPECT_TRUE(depot_.TakeRuns()[0].starts_with("-u|ann|-P|se cret|-p|server:1666|print|-o|"));
    const auto items = List(u"p4://ann:se cret@server:1666///depot/base");
    ASSERT_THAT(items, SizeIs(1));
    EXPECT_EQ(items[0].path, u"p4://ann:se cret@server:1666///depot/base/a.txt#1");
    const auto list = Revisions(items[0].path);
    ASSERT_THAT(list, SizeIs(1));
    EXPECT_EQ(list[0].uri, u"p4://ann:se cret@server:1666///depot/base/a.txt#1");
    EXPECT_THAT(host_->Calls(), IsEmpty());
}

TEST_F(PerforceClients, AreGivenTheCredentialsOfTheHost)
{
    depot_.Tell("port\tserver:1666");
    depot_.Tell("user\tann\tsecret");
    host_->credentials = {S_OK, u"ann", u"secret", u"server:1666"};
    EXPECT_EQ(Content(address), "one");
    EXPECT_EQ(Content(u"p4://bob:*@other///depot/base/a.txt"), "one");
    EXPECT_THAT(host_->Calls(), ElementsAre(u"GetCredentials|1||", u"GetCredentials|1|other|bob"));
    host_->credentials = {S_OK, u"", u"secret", std::nullopt};
    EXPECT_EQ(FailedOpen(address).status, E_FAIL) << "a password alone is nobody's";
    EXPECT_TRUE(depot_.Runs().back().starts_with("print|"));
}

// The server's "@" needs a user before it is told again.
TEST_F(PerforceClients, ItemsOfAServerWithoutAUserLoseIt)
{
    depot_.Tell("port\tserver");
    const auto items = List(u"p4://@server///depot/base");
    EXPECT_EQ(depot_.TakeRuns()[0], "-p|server|fstat|-s|-l|//depot/base/*");
    ASSERT_THAT(items, SizeIs(1));
    EXPECT_EQ(items[0].path, u"p4://server///depot/base/a.txt#1");
}

// The path then begins with one slash, and is given its two.
TEST_F(PerforceClients, AnAuthorityAsksForThreeSlashes)
{
    EXPECT_THAT(List(u"p4://u@server//depot/base"), IsEmpty());
    EXPECT_EQ(depot_.TakeRuns()[0], "-u|u|-p|server|fstat|-s|-l|///depot/base/*");
}

TEST_F(PerforceClients, AValueIsOneArgumentWhateverIsInIt)
{
    Fail("*", "silent");
    for (const auto& [path, argument] :
         {std::pair{u"a\"b", "a\"b"}, std::pair{u"a\" -x \"b", "a\" -x \"b"},
          std::pair{u"a\\", "a\\"}, std::pair{u"a\\\" c", "a\\\" c"}, std::pair{u" ", " "}})
    {
        const std::u16string whole = u"p4://u\\:p\"@s\\///depot/" + std::u16string(path);
        const std::string spec = "//depot/" + std::string(argument);
        const std::string options = "-u|u\\|-P|p\"|-p|s\\|";
        EXPECT_EQ(Content(whole), "");
        EXPECT_TRUE(depot_.Runs()[0].ends_with("|-q|" + spec));
        EXPECT_TRUE(depot_.TakeRuns()[0].starts_with(options + "print|-o|"));
        Revisions(whole);
        EXPECT_EQ(depot_.TakeRuns()[0], options + "filelog|-l|-t|" + spec);
        List(whole);
        EXPECT_THAT(depot_.TakeRuns(), ElementsAre(options + "fstat|-s|-l|" + spec + "/*",
                                                   options + "dirs|" + spec + "/*"));
    }
}

TEST_F(PerforceClients, AFolderComesBeforeAFileOfItsName)
{
    depot_.Submit("both", "file");
    depot_.Submit("both/x", "below");
    EXPECT_EQ(FactsOf(Folder(folder + u"/both")).attributes, folderAttribute);
    EXPECT_EQ(FileFacts(folder + u"/both").attributes, folderAttribute) << "whatever it is made as";
    const auto items = List(folder);
    ASSERT_THAT(items, SizeIs(3));
    EXPECT_EQ(items[1].path, folder + u"/both#1");
    EXPECT_EQ(items[2].path, folder + u"/both");
}

TEST_F(PerforceClients, WhatRealServersPrintLosesNoItem)
{
    depot_.Print("fstat", fstatOutput);
    depot_.Print("dirs", dirsOutput);
    const auto items = List(folder);
    ASSERT_THAT(items, SizeIs(7));
    EXPECT_EQ(items[0].path, u"p4:////depot/dir/a.txt#3");
    EXPECT_EQ(items[1].path, u"p4:////depot/dir/big file%40home.bin#1");
    EXPECT_EQ(items[1].size, 2147483647U);
    EXPECT_EQ(items[2].path, u"p4:////depot/dir/moved.txt#7") << "moved away, and without a size";
    EXPECT_EQ(items[5].path, u"p4:////depot/other dir%23");
    depot_.Print("filelog", filelogOutput);
    depot_.Print("have", haveOutput);
    const auto list = Revisions(address);
    ASSERT_THAT(list, SizeIs(6));
    EXPECT_EQ(list[0].id, u"Working Copy");
    EXPECT_EQ(list[0].uri, u"C:\\ws\\dir\\a.txt");
    EXPECT_EQ(list[1].uri, u"p4:////depot/dir/a.txt#5");
    EXPECT_EQ(list[3].description.substr(0, 15), u"12: first line.");
    EXPECT_EQ(list[5].time, 0U);
}

TEST_F(PerforceClients, FieldsOfOtherUsersDoNotMatter)
{
    for (const char* const tag : {"... otherOpen0 bob@ws", "... otherAction0 edit", "... ... x y",
                                  "... otherOpen 1", "isMapped", "shelved ", "headRev"})
        depot_.Tell("tag\t" + std::string(tag));
    const auto items = List(folder);
    ASSERT_THAT(items, SizeIs(1));
    EXPECT_EQ(items[0].path, address + u"#1");
    EXPECT_EQ(items[0].size, 3U);
}

// A description line that begins with three dots has a tab in front of them.
TEST_F(PerforceClients, DescriptionsMayLookLikeAnything)
{
    depot_.Submit("a.txt", "two",
                  "... depotFile //x\n\n... #9 change 9 edit on 2009/06/01 12:00:00 by e@w (text)");
    depot_.Tell("note\t... ... copy from //depot/x#1");
    const auto list = Revisions(address);
    ASSERT_THAT(list, SizeIs(2));
    EXPECT_EQ(list[0].id, u"2");
    EXPECT_EQ(list[0].description,
              u"2: ... depotFile //x... #9 change 9 edit on 2009/06/01 12:00:00 by e@w (text)");
    EXPECT_EQ(list[1].description, u"1: m");
}

TEST_F(PerforceClients, SeveralHundredThousandLinesAreRead)
{
    constexpr std::size_t count = 50'000;
    std::string text;
    for (std::size_t i = 0; i < count; ++i)
        text += "... depotFile //depot/base/" + std::to_string(i) +
                "\n... headAction edit\n... headRev 2\n... ... otherOpen 1\n... fileSize 7\n\n";
    depot_.Print("fstat", text);
    ComPtr<IFolderContents> contents;
    ASSERT_EQ(Folder(folder)->GetContents(contents.Out()), S_OK);
    std::uint32_t found = 0;
    contents->GetCount(&found);
    EXPECT_EQ(found, count);
}

// The first line is all that is wanted. The rest is more than a pipe holds.
TEST_F(PerforceClients, AHaveThatNeverStopsTalkingEnds)
{
    std::string text = "//depot/base/a.txt#1 - /ws/a.txt\n";
    for (int i = 0; i < 100'000; ++i)
        text += "//depot/base/b.txt#1 - /ws/b.txt\n";
    depot_.Print("have", text);
    const auto list = Revisions(address);
    ASSERT_THAT(list, SizeIs(2));
    EXPECT_EQ(list[0].uri, u"/ws/a.txt");
}

TEST_F(PerforceClients, RefusedCredentialsAreTheHostsToForget)
{
    for (const auto& [way, words] :
         {std::pair{"password", u"Perforce password (P4PASSWD) invalid or unset."},
          std::pair{"newuser", u"Can't create a new user - over license quota."}})
    {
        Fail("*", way);
        const std::u16string hint =
            u"\n\nYou can configure this information in Options > Application > Credentials.";
        ExpectFailed(FailedList(folder), E_FAIL, folder, words + hint);
        ExpectFailed(FailedOpen(address), E_FAIL, address, words + hint);
        EXPECT_EQ(host_->Calls().back(), u"ForgetCredentials|Perforce: " + std::u16string(words));
        EXPECT_THAT(Revisions(address), IsEmpty());
        EXPECT_FALSE(HasRevisions(address));
    }
}

TEST_F(PerforceClients, AWrongPasswordIsRefusedByTheServer)
{
    depot_.Tell("user\tann\tsecret");
    EXPECT_EQ(FailedOpen(u"p4://ann:wrong@server///depot/base/a.txt").status, E_FAIL);
    EXPECT_THAT(host_->Calls(), ElementsAre(u"ForgetCredentials|Perforce: Perforce password "
                                            u"(P4PASSWD) invalid or unset."));
    EXPECT_EQ(FailedOpen(u"p4://eve:x@server///depot/base/a.txt").status, E_FAIL);
    EXPECT_EQ(host_->Calls().back(),
              u"ForgetCredentials|Perforce: Can't create a new user - over license quota.");
}

TEST_F(PerforceClients, OtherFailuresAreToldInTheClientsWords)
{
    for (const auto& [way, words] :
         {std::pair{"refused", u"Perforce client error:\n\tConnect to server failed; check "
                               u"$P4PORT.\n\tTCP connect to 127.0.0.1:1 failed.\n\tconnect: "
                               u"127.0.0.1:1: Connection refused"},
          std::pair{"expired", u"Your session has expired, please login again."},
          std::pair{"invalid", u"Password invalid."},
          std::pair{"late", u"Fatal client error; disconnecting!"},
          std::pair{"workspace", u"Client 'ws' unknown - use 'client' command to create it."}})
    {
        Fail("*", way);
        ExpectFailed(FailedList(folder), E_FAIL, folder, words);
        ExpectFailed(FailedOpen(address), E_FAIL, address, words);
        EXPECT_THAT(Revisions(address), IsEmpty());
        EXPECT_FALSE(HasRevisions(address));
    }
    const std::vector<std::u16string> calls = host_->Calls();
    EXPECT_TRUE(std::none_of(calls.begin(), calls.end(), [](const std::u16string& call) {
        return call.starts_with(u"Forget");
    }));
}

TEST_F(PerforceClients, AFailureOfTheSecondRunLosesTheFirst)
{
    Fail("dirs", "refused");
    EXPECT_EQ(FailedList(folder).status, E_FAIL);
    std::uint32_t attributes = 0;
    EXPECT_EQ(File(address).As<IFileSystemItem>()->GetAttributes(&attributes), E_FAIL);
}

TEST_F(PerforceClients, OnlyListingsForgiveMissingFiles)
{
    Fail("fstat", "nofiles");
    EXPECT_THAT(List(folder), IsEmpty()) << "there are no folders either";
    Fail("print", "nofiles");
    ExpectFailed(FailedOpen(address), Win32Status(2), address, u"//depot/x - no such file(s).");
    Fail("filelog", "nofiles");
    EXPECT_THAT(Revisions(address), IsEmpty());
}

TEST_F(PerforceClients, WarningsOfASuccessfulRunAreDropped)
{
    Fail("*", "warning");
    EXPECT_THAT(List(folder), SizeIs(1));
    EXPECT_EQ(Content(address), "one");
    EXPECT_THAT(Revisions(address), SizeIs(1));
}

TEST_F(PerforceClients, ASilentFailureIsNone)
{
    Fail("*", "silent");
    EXPECT_THAT(List(folder), IsEmpty());
    EXPECT_EQ(Content(address), "");
    EXPECT_THAT(Revisions(address), IsEmpty());
    const Outcome outcome = OutcomeOf([&] {
        std::uint32_t a = 0;
        return File(address).As<IFileSystemItem>()->GetAttributes(&a);
    });
    EXPECT_EQ(outcome.status, Win32Status(2));
}

TEST_F(PerforceClients, AnUnknownWorkspaceHidesTheHistory)
{
    Fail("have", "workspace");
    EXPECT_THAT(Revisions(address), IsEmpty());
    EXPECT_FALSE(HasRevisions(address));
}

TEST_F(PerforceClients, WithoutRevisionsThereIsTheWorkingCopy)
{
    depot_.Print("filelog", "//depot/base/a.txt\n");
    depot_.Print("have", "//depot/base/a.txt#1 - /ws/a.txt\n");
    const auto list = Revisions(address);
    ASSERT_THAT(list, SizeIs(1));
    EXPECT_EQ(list[0].id, u"Working Copy");
    EXPECT_TRUE(HasRevisions(address));
}

// The file is then the depot's root.
TEST_F(PerforceClients, AnEmptyReportAsksForTheRootsFile)
{
    depot_.Print("filelog", "");
    EXPECT_THAT(Revisions(address), IsEmpty());
    EXPECT_EQ(depot_.TakeRuns().at(1), "have|//");
    EXPECT_THAT(Revisions(u"p4://u@server///depot/base/a.txt"), IsEmpty());
    EXPECT_EQ(depot_.TakeRuns().at(1), "-u|u|-p|server|have|//");
}

TEST_F(PerforceClients, NamesThatCannotBeAddressesLoseOnlyThemselves)
{
    depot_.Print("fstat", "... depotFile //depot/a\rb\n\n... depotFile //depot/c\n\n");
    ComPtr<IFolderContents> contents;
    ASSERT_EQ(Folder(folder)->GetContents(contents.Out()), S_OK);
    ComPtr<IFileSystemItem> item;
    EXPECT_EQ(contents->GetItem(0, item.Out()), E_INVALIDARG);
    EXPECT_EQ(contents->GetItem(1, item.Out()), S_OK);
}

TEST_F(PerforceClients, WithoutOneTheHostIsNotAskedAndTheFailureSaysSo)
{
    const TempFolder empty;
    const EnvironmentValue path("PATH", empty.Path().string().c_str());
    for (const Outcome& outcome : {FailedOpen(address), FailedList(folder)})
        EXPECT_THAT(outcome,
                    Failed(Win32Status(2),
                           u"Can't find the Perforce command line utility (p4.exe). Please check "
                           u"that the Perforce client is correctly installed."));
    EXPECT_THAT(Revisions(address), IsEmpty());
    EXPECT_FALSE(HasRevisions(address));
    EXPECT_THAT(host_->Calls(), IsEmpty());
}

TEST_F(PerforceClients, RunSideBySide)
{
    constexpr int threadCount = 4;
    std::vector<std::thread> threads;
    std::atomic<int> right{0};
    for (int i = 0; i < threadCount; ++i)
    {
        threads.emplace_back([&] {
            for (int round = 0; round < 5; ++round)
                right += List(folder).size() == 1 && Content(address) == "one" ? 1 : 0;
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(right, threadCount * 5);
}

} // namespace
} // namespace tarnwell::test
