// The Subversion file system whose platform calls fail: which message each failure has, and that
// nothing is leaked and nothing stays behind.
#include "faults/local.h"

#include "subversion/svnobjects.h"
#include "support/environmentvalue.h"
#include "support/fakehost.h"
#include "support/posix/standinclient.h"
#include "support/svnoutput.h"

namespace tarnwell::test
{

namespace
{

namespace fs = std::filesystem;

const std::u16string address = u"svnfile:///r/trunk";

const std::u16string svnCommunication = u"An error occurred while communicating with Subversion. ";

// A client that prints what the real one once did.
const std::string body = "case \"$*\" in *info*) cat <<'END'\n" + std::string(infoOutput) +
                         "END\n;; *list*) cat <<'END'\n" + std::string(listOutput) +
                         "END\n;; *log*) cat <<'END'\n" + std::string(logOutput) +
                         "END\n;; *) echo content;; esac\n";

class FailingSubversion : public testing::Test
{
protected:
    FailingSubversion()
    {
        EXPECT_EQ(MakeInstance<SVNFileSystemObject>(nullptr, IID_IFileSystem, system_.OutVoid()),
                  S_OK);
    }
    ~FailingSubversion() override
    {
        EXPECT_TRUE(fs::is_empty(temporary_.Path()));
    }

    HRESULT List() const
    {
        ComPtr<IFolder> folder;
        HRESULT status = system_->GetFolder(Wide(address), VARIANT_FALSE, folder.Out());
        if (FAILED(status))
            return status;
        ComPtr<IFolderContents> contents;
        status = folder->GetContents(contents.Out());
        EXPECT_EQ(status == S_OK, static_cast<bool>(contents));
        return status;
    }
    HRESULT Stat() const
    {
        ComPtr<IFile> file;
        const HRESULT status = system_->GetFile(Wide(address), VARIANT_FALSE, file.Out());
        std::uint32_t size = 0;
        return FAILED(status) ? status : file->GetSizeLow(&size);
    }
    HRESULT Open() const
    {
        ComPtr<IFile> file;
        HRESULT status = system_->GetFile(Wide(address), VARIANT_FALSE, file.Out());
        if (FAILED(status))
            return status;
        ComPtr<IFileStream> stream;
        status = file->Open(GENERIC_READ, OPEN_EXISTING, stream.Out());
        EXPECT_EQ(status == S_OK, static_cast<bool>(stream));
        return status;
    }
    // Succeeds always; how many there are.
    std::uint32_t Revisions() const
    {
        ComPtr<IRevisions> revisions;
        EXPECT_EQ(
            system_.As<IFileSystemRevisions>()->GetRevisions(Wide(address), 0, revisions.Out()),
            S_OK);
        std::uint32_t count = 0;
        EXPECT_EQ(revisions->GetCount(&count), S_OK);
        return count;
    }

    // The listing with the `n`-th call of `operation` failing.
    Result ListWith(const char* operation, int n, DWORD error = someError) const
    {
        Faults faults;
        faults.Fail(operation, n, error);
        const Result result = ResultOf([&] { return List(); });
        EXPECT_EQ(faults.Failures(), 1) << operation << ' ' << n;
        return result;
    }

    const StandInClient client_{"svn", body};
    const TempFolder output_;
    const TempFolder temporary_;
    const EnvironmentValue variable_{"TMPDIR", temporary_.Path().c_str()};
    ComPtr<IFileSystem> system_;
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
