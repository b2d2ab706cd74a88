// What the file systems of working copies say when their clients can't be run.
#include "faults/local.h"

#include "frame/messages.h"
#include "git/gitobjects.h"
#include "mercurial/hgobjects.h"

namespace tarnwell::test
{

namespace
{

struct Row
{
    const char* operation;
    int call;
    DWORD error;
    MessageId message;
};

// Opens a file, and asks for its revisions, with this row's failure. No client is started.
template <class System> void ExpectFailure(const Row& row, const char16_t* address)
{
    SCOPED_TRACE(testing::Message() << row.operation << ' ' << row.call << ", " << row.error);
    ComPtr<IFileSystem> system;
    ComPtr<IFile> file;
    ASSERT_EQ(MakeInstance<System>(nullptr, IID_IFileSystem, system.OutVoid()), S_OK);
    ASSERT_EQ(system->GetFile(Wide(address), VARIANT_FALSE, file.Out()), S_OK);
    {
        Faults faults;
        faults.Fail(row.operation, row.call, row.error);
        ComPtr<IFileStream> stream;
        const HRESULT status = StatusFromError(row.error);
        EXPECT_THAT(ResultOf([&] { return file->Open(GENERIC_READ, OPEN_EXISTING, stream.Out()); }),
                    FailsWith(status, FormatMessageWithStatus(row.message, status)));
        EXPECT_FALSE(stream);
        EXPECT_EQ(faults.Failures(), 1);
    }
    Faults faults;
    faults.Fail(row.operation, row.call, row.error);
    ComPtr<IRevisions> revisions;
    std::uint32_t count = 77;
    const Result listing = ResultOf([&] {
        return system.As<IFileSystemRevisions>()->GetRevisions(Wide(address), 0, revisions.Out());
    });
    EXPECT_EQ(listing.status, S_OK);
    EXPECT_EQ(listing.text, u"(none)");
    ASSERT_EQ(revisions->GetCount(&count), S_OK);
    EXPECT_EQ(count, 0U);
    EXPECT_EQ(faults.Failures(), 1);
}

template <class System>
void ExpectMessages(MessageId notFound, MessageId communication, const char16_t* address)
{
    for (const Row& row : {Row{"CreatePipe", 1, someError, communication},
                           Row{"CreatePipe", 2, someError, communication},
                           Row{"CreatePipe", 1, ERROR_FILE_NOT_FOUND, communication},
                           Row{"CreateProcessW", 1, someError, communication},
                           Row{"CreateProcessW", 1, ERROR_PATH_NOT_FOUND, communication},
                           Row{"CreateProcessW", 1, ERROR_FILE_NOT_FOUND, notFound}})
        ExpectFailure<System>(row, address);
}

TEST(FailingClients, OfGitAreNamed)
{
    ExpectMessages<GITFileSystemObject>(MessageId::GitClientNotFound,
                                        MessageId::GitCommunicationFailed, u"git:///r/a.txt");
}

TEST(FailingClients, OfMercurialAreNamed)
{
    ExpectMessages<HGFileSystemObject>(MessageId::MercurialClientNotFound,
                                       MessageId::MercurialCommunicationFailed, u"hg:///r/a.txt");
}

} // namespace

} // namespace tarnwell::test
