// The Perforce file system whose platform calls fail: which message each failure has, and that
// nothing is leaked and nothing stays behind.
#include "faults/clientsystem.h"

#include "perforce/p4objects.h"
#include "support/fakehost.h"
#include "support/perforcedepot.h"

namespace tarnwell::test
{

namespace
{

namespace fs = std::filesystem;

const std::u16string inDepot = u"p4:////depot/base/a.txt";

const std::u16string communication = u"An error occurred while communicating with Perforce. ";

class FailingPerforce : public FailingClientSystem
{
protected:
    FailingPerforce()
        : FailingClientSystem(std::in_place_type<P4FileSystemObject>, u"p4:////depot/base", inDepot)
    {
        host_->credentials = {S_OK, u"ann", u"secret", u"server"};
        system_.As<IFileSystemInit>()->SetHost(host_->Unknown());
        depot_.Submit("a.txt", "one");
        depot_.Submit("a.txt", "two");
        depot_.Submit("sub/b.txt", "b");
    }

    PerforceDepot depot_;
    const ComPtr<FakeHost> host_ = FakeHost::Make();
};

TEST_F(FailingPerforce, WithoutAFaultEverythingWorks)
{
    EXPECT_EQ(List(), S_OK);
    EXPECT_EQ(Stat(), S_OK);
    EXPECT_EQ(Open(), S_OK);
    EXPECT_EQ(Revisions(), 2U);
}

TEST_F(FailingPerforce, ThereIsNoClient)
{
    const std::u16string text = u"Can't find the Perforce command line utility (p4.exe). Please "
                                u"check that the Perforce client is correctly installed. ";
    EXPECT_THAT(ListWith("CreateProcessW", 1, ERROR_FILE_NOT_FOUND),
                FailsWith(StatusFromError(ERROR_FILE_NOT_FOUND), text));
    EXPECT_THAT(OpenWith("CreateProcessW", 1, ERROR_FILE_NOT_FOUND),
                FailsWith(StatusFromError(ERROR_FILE_NOT_FOUND), text));
}

TEST_F(FailingPerforce, WithoutAClientNobodyIsAsked)
{
    EXPECT_EQ(OpenWith("FindClient", 1).status, S_OK) << "it was there all the same";
    EXPECT_TRUE(host_->Calls().empty());
    EXPECT_TRUE(depot_.Runs().back().starts_with("print|"));
    EXPECT_EQ(Open(), S_OK);
    EXPECT_TRUE(depot_.Runs().back().starts_with("-u|ann|-P|secret|-p|server|print|"));
}

TEST_F(FailingPerforce, TheClientCannotBeRun)
{
    for (const auto& [operation, calls] :
         {std::pair{"CreateProcessW", 2}, std::pair{"CreatePipe", 6},
          std::pair{"SetHandleInformation", 6}})
    {
        for (int n = 1; n <= calls; ++n)
            EXPECT_THAT(ListWith(operation, n), FailsWith(someStatus, communication));
        EXPECT_THAT(OpenWith(operation, 1), FailsWith(someStatus, communication));
    }
}

TEST_F(FailingPerforce, ThereIsNoPlaceForTheContent)
{
    EXPECT_THAT(
        OpenWith("MakePrintTarget", 1),
        FailsWith(someStatus, u"Failed to create a temporary file for \"" + inDepot + u"\". "));
    EXPECT_TRUE(host_->Calls().empty()) << "nobody is asked for what has no place";
    EXPECT_TRUE(depot_.Runs().empty());
}

TEST_F(FailingPerforce, TheContentCannotBeOpened)
{
    EXPECT_THAT(
        OpenWith("OpenPrintTarget", 1),
        FailsWith(someStatus, u"Failed to open \"" + inDepot + u"\" for reading or writing. "));
}

TEST_F(FailingPerforce, TheContentStaysOnlyWhereItsRemovalFailsToo)
{
    {
        Faults faults;
        faults.Fail("OpenPrintTarget", 1, someError);
        faults.Fail("RemovePrintTarget", 1, someError);
        EXPECT_EQ(Open(), someStatus);
        EXPECT_EQ(faults.Failures(), 2);
    }
    EXPECT_FALSE(fs::is_empty(temporary_.Path()));
    for (const auto& left : fs::directory_iterator(temporary_.Path()))
        fs::remove_all(left);
}

TEST_F(FailingPerforce, WithoutATemporaryFolderThatFitsTheCurrentOneServes)
{
    const std::string folder = "/" + std::string(MAX_PATH, 'x');
    const EnvironmentValue tooLong("TMPDIR", folder.c_str());
    const fs::path before = fs::current_path();
    fs::current_path(temporary_.Path());
    EXPECT_EQ(ResultOf([&] { return Open(); }).status, S_OK);
    EXPECT_TRUE(fs::is_empty("."));
    fs::current_path(before);
}

TEST_F(FailingPerforce, ADateThatCannotBeConvertedIsUnknown)
{
    Faults faults;
    faults.Fail("SystemTimeToFileTime", 1, someError);
    ComPtr<IRevisions> revisions;
    system_.As<IFileSystemRevisions>()->GetRevisions(Wide(inDepot), 0, revisions.Out());
    ComPtr<IRevision> first;
    ASSERT_EQ(revisions->GetItem(0, first.Out()), S_OK);
    std::uint64_t time = 7;
    EXPECT_EQ(first->GetModifiedTime(&time), S_OK);
    EXPECT_EQ(time, 0U);
}

// It was set to success before.
TEST_F(FailingPerforce, AnExitCodeThatIsNotToldIsSuccess)
{
    depot_.Tell("fail\t*\texpired");
    EXPECT_EQ(List(), E_FAIL);
    EXPECT_EQ(With("GetExitCodeProcess", 1, someError, [&] { return Open(); }).status, S_OK);
}

// Nobody is told, but nobody waits either.
TEST_F(FailingPerforce, WithoutItsReaderAnOutputIsEmpty)
{
    Faults faults;
    faults.Fail("_beginthreadex", 1, someError);
    EXPECT_EQ(Revisions(), 0U);
}

TEST_F(FailingPerforce, RevisionsHideEveryFailure)
{
    for (const char* const operation : {"CreateProcessW", "CreatePipe", "SetHandleInformation"})
    {
        Faults faults;
        faults.Fail(operation, 1, someError);
        ClearError();
        EXPECT_EQ(Revisions(), 0U) << operation;
        EXPECT_EQ(TakeErrorText(), u"(none)");
        EXPECT_EQ(faults.Failures(), 1);
    }
    // Those of the second run as well.
    for (const auto& [operation, n] : {std::pair{"CreateProcessW", 2}, std::pair{"CreatePipe", 4}})
    {
        Faults faults;
        faults.Fail(operation, n, someError);
        EXPECT_EQ(Revisions(), 0U) << operation;
        EXPECT_EQ(faults.Failures(), 1);
    }
}

} // namespace

} // namespace tarnwell::test
