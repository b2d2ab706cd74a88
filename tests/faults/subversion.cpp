// The Subversion file system whose platform calls fail: which message each failure has, and that
// nothing is leaked and nothing stays behind.
#include "faults/clientsystem.h"

#include "subversion/svnobjects.h"
#include "support/fakehost.h"
#include "support/posix/standinclient.h"
#include "support/svnoutput.h"

namespace tarnwell::test
{

namespace
{

const std::u16string address = u"svnfile:///r/trunk";

const std::u16string svnCommunication = u"An error occurred while communicating with Subversion. ";

// A client that prints what the real one once did.
const std::string body = "case \"$*\" in *info*) cat <<'END'\n" + std::string(infoOutput) +
                         "END\n;; *list*) cat <<'END'\n" + std::string(listOutput) +
                         "END\n;; *log*) cat <<'END'\n" + std::string(logOutput) +
                         "END\n;; *) echo content;; esac\n";

class FailingSubversion : public FailingClientSystem
{
protected:
    FailingSubversion()
        : FailingClientSystem(std::in_place_type<SVNFileSystemObject>, address, address)
    {
    }

    const StandInClient client_{"svn", body};
    const TempFolder output_;
};

TEST_F(FailingSubversion, WithoutAFaultEverythingWorks)
{
    EXPECT_EQ(List(), S_OK);
    EXPECT_EQ(Stat(), S_OK);
    EXPECT_EQ(Open(), S_OK);
    EXPECT_EQ(Revisions(), 3U);
}

TEST_F(FailingSubversion, ThereIsNoClient)
{
    EXPECT_THAT(ListWith("CreateProcessW", 1, ERROR_FILE_NOT_FOUND),
                FailsWith(StatusFromError(ERROR_FILE_NOT_FOUND),
                          u"Can't find the Subversion command line utility (svn.exe). Please check "
                          u"that the Subversion client is correctly installed. "));
}

TEST_F(FailingSubversion, TheClientCannotBeRun)
{
    EXPECT_THAT(ListWith("CreateProcessW", 1), FailsWith(someStatus, svnCommunication));
    EXPECT_THAT(ListWith("CreatePipe", 1), FailsWith(someStatus, svnCommunication));
    EXPECT_THAT(ListWith("CreatePipe", 2), FailsWith(someStatus, svnCommunication));
}

TEST_F(FailingSubversion, ThereIsNoPlaceForItsOutput)
{
    EXPECT_THAT(
        ListWith("CreateOutputFile", 1),
        FailsWith(someStatus, u"Failed to create a temporary file for \"" + address + u"\". "));
}

TEST_F(FailingSubversion, TheOutputCannotBeRead)
{
    for (const char* const operation : {"LoadXml", "ReadXmlText", "SelectXmlNodes"})
        EXPECT_THAT(ListWith(operation, 1), FailsWith(someStatus, svnCommunication)) << operation;
    // The first five facts of the first item, and the last fact of the last.
    for (const int n : {2, 3, 4, 5, 6, 20})
        EXPECT_THAT(ListWith("ReadXmlText", n), FailsWith(someStatus, svnCommunication));
    // Not the client's error stream but its output; that is read by one thread at a time.
    EXPECT_THAT(ListWith("MultiByteToWideChar", 1), FailsWith(someStatus, svnCommunication));
    EXPECT_THAT(ListWith("SetFilePointer", 1), FailsWith(someStatus, svnCommunication));
}

TEST_F(FailingSubversion, ADateThatCannotBeConvertedIsUnknown)
{
    EXPECT_EQ(ListWith("SystemTimeToFileTime", 1).status, S_OK);
}

TEST_F(FailingSubversion, AnExitCodeThatIsNotToldIsAFailure)
{
    const StandInClient complaining("svn", "echo 'svn: warning' >&2\n" + body);
    EXPECT_EQ(List(), S_OK);
    EXPECT_THAT(ListWith("GetExitCodeProcess", 1),
                FailsWith(E_FAIL, u"An error occurred while accessing \"" + address +
                                      u"\"\n\nsvn: warning ["));
}

// However long it is: so that no walk goes over it once for each item.
TEST_F(FailingSubversion, EachFactOfAListingIsAskedForOnce)
{
    constexpr int count = 2000;
    std::string items;
    for (int i = 0; i < count; ++i)
        items += "<entry kind=\"file\"><name>" + std::to_string(i) +
                 "</name><size>1</size><commit revision=\"1\"><date>2024-03-05T10:20:30.1Z</date>"
                 "</commit></entry>";
    WriteBytes(output_ / u"list", "<lists><list path=\"file:///r\">" + items + "</list></lists>");
    const StandInClient client("svn", "cat " + (output_.Path() / "list").string());
    const Faults faults;
    EXPECT_EQ(List(), S_OK);
    EXPECT_EQ(faults.Calls("CreateProcessW"), 1);
    EXPECT_EQ(faults.Calls("LoadXml"), 1);
    EXPECT_EQ(faults.Calls("SelectXmlNodes"), 1);
    EXPECT_EQ(faults.Calls("ReadXmlText"), 1 + 5 * count);
    EXPECT_EQ(faults.Calls("SystemTimeToFileTime"), count);
}

TEST_F(FailingSubversion, RevisionsHideEveryFailure)
{
    for (const char* const operation : {"CreateProcessW", "CreatePipe", "CreateOutputFile",
                                        "LoadXml", "ReadXmlText", "SelectXmlNodes"})
    {
        Faults faults;
        faults.Fail(operation, 1, someError);
        ClearError();
        EXPECT_EQ(Revisions(), 0U) << operation;
        EXPECT_EQ(TakeErrorText(), u"(none)");
        EXPECT_EQ(faults.Failures(), 1);
    }
}

} // namespace

} // namespace tarnwell::test
