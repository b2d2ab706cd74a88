// Every platform call of opening a file at a revision, and of listing its revisions, fails in
// turn. The content that comes out is whole or there is an error; a list is whole or empty; and
// nothing is left, on the disk or in the process.
#include "faults/local.h"

#include "git/gitobjects.h"
#include "support/environmentvalue.h"
#include "support/repository.h"

#include <set>
#include <sys/wait.h>

namespace tarnwell::test
{

namespace
{

namespace fs = std::filesystem;

class EveryCallOfGit : public testing::Test
{
protected:
    EveryCallOfGit()
    {
        repository_.Commit(u"a.txt", std::string(content), "first");
        EXPECT_EQ(MakeInstance<GITFileSystemObject>(nullptr, IID_IFileSystem, system_.OutVoid()),
                  S_OK);
        fs::current_path(current_.Path());
    }
    ~EveryCallOfGit() override
    {
        fs::current_path(before_);
    }

    // To its end, in one piece. What it gave is for `bytes`.
    HRESULT ReadFrom(const ComPtr<IFileStream>& stream, std::string& bytes) const
    {
        char buffer[32];
        ULONG count = 0;
        const HRESULT status =
            stream.As<::ISequentialStream>()->Read(buffer, sizeof buffer, &count);
        bytes.assign(buffer, count);
        return status;
    }

    HRESULT CountRevisions(std::uint32_t& count) const
    {
        ComPtr<IRevisions> revisions;
        const HRESULT status = system_.As<IFileSystemRevisions>()->GetRevisions(
            Wide(repository_ / u"a.txt"), 0, revisions.Out());
        EXPECT_EQ(status == S_OK, static_cast<bool>(revisions));
        if (status == S_OK)
            revisions->GetCount(&count);
        return status;
    }

    // Runs `act` once for each of its calls, with that one failing. It gets the operation's name
    // by `expect`, behind the faults.
    template <class Act, class Expect> void FailEach(Act act, Expect expect)
    {
        int calls = 0;
        {
            const Faults faults;
            act();
            calls = faults.Calls();
        }
        EXPECT_GT(calls, 0);
        for (int n = 1; n <= calls; ++n)
        {
            for (const DWORD error : {ERROR_BUSY, ERROR_FILE_NOT_FOUND, ERROR_NOT_ENOUGH_MEMORY})
                FailOne(n, error, act, expect);
        }
    }

private:
    template <class Act, class Expect> void FailOne(int n, DWORD error, Act act, Expect expect)
    {
        const Held before = Held::Now();
        std::string operation;
        {
            Faults faults;
            faults.FailNth(n, error);
            act();
            ASSERT_EQ(faults.Failures(), 1);
            operation = faults.Trace()[static_cast<std::size_t>(n - 1)];
        }
        SCOPED_TRACE(testing::Message() << operation << " as call " << n << ", error " << error);
        expect(operation);
        EXPECT_EQ(Held::Now(), before);
        EXPECT_TRUE(fs::is_empty(temporary_.Path()));
        EXPECT_TRUE(fs::is_empty(current_.Path()));
        // Of a client that wasn't waited for the system may keep the end.
        const pid_t left = waitpid(-1, nullptr, 0);
        EXPECT_TRUE(left == -1 || operation == "WaitForSingleObject");
    }

    const TempFolder home_;
    const EnvironmentValue homeVariable_{"HOME", home_.Path().c_str()};

protected:
    const Repository repository_;

private:
    const TempFolder current_;
    const TempFolder temporary_;
    const EnvironmentValue temporaryVariable_{"TMPDIR", temporary_.Path().c_str()};
    const fs::path before_ = fs::current_path();

protected:
    ComPtr<IFileSystem> system_;
};

TEST_F(EveryCallOfGit, OpensTheWholeContentOrFails)
{
    ComPtr<IFile> file;
    ASSERT_EQ(
        system_->GetFile(Wide(u"git://" + (repository_ / u"a.txt")), VARIANT_FALSE, file.Out()),
        S_OK);
    Result opening;
    HRESULT reading = S_OK;
    std::string bytes;
    const auto act = [&] {
        ComPtr<IFileStream> stream;
        opening = ResultOf([&] { return file->Open(GENERIC_READ, OPEN_EXISTING, stream.Out()); });
        EXPECT_EQ(opening.status == S_OK, static_cast<bool>(stream));
        reading = stream ? ReadFrom(stream, bytes) : S_OK;
    };
    // Those without which there is no content.
    const std::set<std::string> needed{"GetFileAttributesW",   "GetTempFileNameW",
                                       "CreateFileW",          "CreatePipe",
                                       "SetHandleInformation", "CreateProcessW",
                                       "SetFilePointer",       "InitializeCriticalSectionEx"};
    std::set<std::string> failed;
    const auto expect = [&](const std::string& operation) {
        EXPECT_EQ(FAILED(opening.status), needed.contains(operation));
        EXPECT_EQ(opening.text == u"(none)", opening.status == S_OK);
        if (FAILED(opening.status))
        {
            failed.insert(operation);
            return;
        }
        EXPECT_TRUE(reading == S_OK || operation == "ReadFile");
        EXPECT_EQ(bytes, reading == S_OK ? content : "");
    };
    FailEach(act, expect);
    EXPECT_EQ(failed, needed);
}

TEST_F(EveryCallOfGit, ListsAllOrNothing)
{
    Result listing;
    std::uint32_t count = 0;
    const auto act = [&] {
        listing = ResultOf([&] { return CountRevisions(count); });
    };
    // Those without which there is no list, and that of the collection itself, whose failure is no
    // secret.
    const std::set<std::string> needed{
        "GetTempFileNameW", "CreateFileW",    "CreatePipe", "SetHandleInformation",
        "CreateProcessW",   "SetFilePointer", "ReadFile",   "MultiByteToWideChar"};
    std::set<std::string> hidden;
    const auto expect = [&](const std::string& operation) {
        EXPECT_EQ(FAILED(listing.status), operation == "InitializeCriticalSectionEx");
        EXPECT_EQ(listing.text == u"(none)", listing.status == S_OK);
        if (FAILED(listing.status))
            return;
        EXPECT_TRUE(count == 2 || count == 0) << count;
        if (count == 0)
            hidden.insert(operation);
    };
    FailEach(act, expect);
    EXPECT_EQ(hidden, needed);
}

} // namespace

} // namespace tarnwell::test
