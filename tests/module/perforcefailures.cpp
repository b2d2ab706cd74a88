// What becomes of what the Perforce client complains of.
#include "module/perforcetest.h"

namespace tarnwell::test
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class PerforceFailures : public PerforceClientTest
{
protected:
    PerforceFailures() : PerforceClientTest("only the stand-in fails as it is told to") {}
};

TEST_F(PerforceFailures, RefusedCredentialsAreTheHostsToForget)
{
    for (const auto& [way, words] :
         {std::pair{"password", u"Perforce password (P4PASSWD) invalid or unset."},
          std::pair{"newuser", u"Can't create a new user - over license quota."}})
    {
        Fail("*", way);
        const std::u16string hint =
            u"\n\nYou can configure this information in Options > Application > Credentials.";
        ExpectFailed(FailedList(folder_), E_FAIL, folder_, words + hint);
        ExpectFailed(FailedOpen(address_), E_FAIL, address_, words + hint);
        EXPECT_EQ(host_->Calls().back(), u"ForgetCredentials|Perforce: " + std::u16string(words));
        EXPECT_THAT(Revisions(address_), IsEmpty());
        EXPECT_FALSE(HasRevisions(address_));
    }
}

TEST_F(PerforceFailures, AWrongPasswordIsRefusedByTheServer)
{
    depot_.Tell("user\tann\tsecret");
    EXPECT_EQ(FailedOpen(u"p4://ann:wrong@server///depot/base/a.txt").status, E_FAIL);
    EXPECT_THAT(host_->Calls(), ElementsAre(u"ForgetCredentials|Perforce: Perforce password "
                                            u"(P4PASSWD) invalid or unset."));
    EXPECT_EQ(FailedOpen(u"p4://eve:x@server///depot/base/a.txt").status, E_FAIL);
    EXPECT_EQ(host_->Calls().back(),
              u"ForgetCredentials|Perforce: Can't create a new user - over license quota.");
}

TEST_F(PerforceFailures, OtherFailuresAreToldInTheClientsWords)
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
        ExpectFailed(FailedList(folder_), E_FAIL, folder_, words);
        ExpectFailed(FailedOpen(address_), E_FAIL, address_, words);
        EXPECT_THAT(Revisions(address_), IsEmpty());
        EXPECT_FALSE(HasRevisions(address_));
    }
    const std::vector<std::u16string> calls = host_->Calls();
    EXPECT_TRUE(std::none_of(calls.begin(), calls.end(), [](const std::u16string& call) {
        return call.starts_with(u"Forget");
    }));
}

TEST_F(PerforceFailures, AFailureOfTheSecondRunLosesTheFirst)
{
    Fail("dirs", "refused");
    EXPECT_EQ(FailedList(folder_).status, E_FAIL);
    std::uint32_t attributes = 0;
    EXPECT_EQ(File(address_).As<IFileSystemItem>()->GetAttributes(&attributes), E_FAIL);
}

TEST_F(PerforceFailures, OnlyListingsForgiveMissingFiles)
{
    Fail("fstat", "nofiles");
    EXPECT_THAT(List(folder_), IsEmpty()) << "there are no folders either";
    Fail("print", "nofiles");
    ExpectFailed(FailedOpen(address_), Win32Status(2), address_, u"//depot/x - no such file(s).");
    Fail("filelog", "nofiles");
    EXPECT_THAT(Revisions(address_), IsEmpty());
}

// The whole phrase, with its "(s)".
TEST_F(PerforceFailures, OtherMissingFilesAreNotForgiven)
{
    const std::u16string words = u"//depot/x: no such file or directory";
    Fail("fstat", "nofile");
    ExpectFailed(FailedList(folder_), Win32Status(2), folder_, words);
    Fail("fstat", "silent");
    Fail("dirs", "nofile");
    ExpectFailed(FailedList(folder_), Win32Status(2), folder_, words);
}

TEST_F(PerforceFailures, WarningsOfASuccessfulRunAreDropped)
{
    Fail("*", "warning");
    EXPECT_THAT(List(folder_), SizeIs(1));
    EXPECT_EQ(Content(address_), "one");
    EXPECT_THAT(Revisions(address_), SizeIs(1));
}

TEST_F(PerforceFailures, ASilentFailureIsNone)
{
    Fail("*", "silent");
    EXPECT_THAT(List(folder_), IsEmpty());
    EXPECT_EQ(Content(address_), "");
    EXPECT_THAT(Revisions(address_), IsEmpty());
    const Outcome outcome = OutcomeOf([&] {
        std::uint32_t a = 0;
        return File(address_).As<IFileSystemItem>()->GetAttributes(&a);
    });
    EXPECT_EQ(outcome.status, Win32Status(2));
}

// A history hides its failure, but not from the host's memory.
TEST_F(PerforceFailures, CredentialsRefusedForAHistoryAreForgottenToo)
{
    Fail("filelog", "password");
    EXPECT_THAT(Revisions(address_), IsEmpty());
    EXPECT_EQ(host_->Calls().back(),
              u"ForgetCredentials|Perforce: Perforce password (P4PASSWD) invalid or unset.");
}

// Only after the workspace was asked for the file.
TEST_F(PerforceFailures, OfAHistoryAreLookedAtLast)
{
    Fail("filelog", "nofiles");
    EXPECT_THAT(Revisions(address_), IsEmpty());
    EXPECT_THAT(depot_.TakeRuns(), ElementsAre("filelog|-l|-t|//depot/base/a.txt", "have|//"));
    Fail("filelog", "late");
    depot_.Sync("a.txt");
    EXPECT_THAT(Revisions(address_), IsEmpty()) << "records and a working copy are lost";
    EXPECT_THAT(depot_.TakeRuns(),
                ElementsAre("filelog|-l|-t|//depot/base/a.txt", "have|//depot/base/a.txt"));
}

TEST_F(PerforceFailures, WhatIsListedBesideAMissingFileStays)
{
    depot_.Submit("sub/b.txt", "b");
    Fail("*", "nofilesbeside");
    EXPECT_THAT(List(folder_), SizeIs(2));
    EXPECT_EQ(FileFacts(address_).size, 3U);
    ExpectFailed(FailedOpen(address_), Win32Status(2), address_, u"//depot/x - no such file(s).");
    EXPECT_THAT(Revisions(address_), IsEmpty());
}

TEST_F(PerforceFailures, AMissingFileIsOneWithAnyExitCode)
{
    Fail("*", "nofilesfailed");
    EXPECT_THAT(List(folder_), IsEmpty());
    ExpectFailed(FailedOpen(address_), Win32Status(2), address_, u"//depot/x - no such file(s).");
    EXPECT_FALSE(HasRevisions(address_));
    const auto item = File(address_).As<IFileSystemItem>();
    std::uint32_t attributes = 0;
    const Outcome outcome = OutcomeOf([&] { return item->GetAttributes(&attributes); });
    EXPECT_EQ(outcome.status, Win32Status(2));
    EXPECT_TRUE(outcome.error->text.starts_with(u"Couldn't find the URI"));
}

} // namespace
} // namespace tarnwell::test
