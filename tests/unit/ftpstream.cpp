// Streams over transfers, and what becomes of their sessions.
#include "ftp/ftpstream.h"

#include "frame/filetimes.h"
#include "ftp/ftpcopy.h"
#include "ftp/ftpoperations.h"
#include "ftp/ftppool.h"
#include "module/outcome.h"
#include "support/fakeprogress.h"
#include "unit/ftptest.h"

#include <array>

namespace tarnwell::test
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

class FtpStream : public FtpTest
{
protected:
    FtpStream()
    {
        internet.files[u"a.txt"] = "content";
    }

    ComPtr<IFileStream> Open(DWORD access = GENERIC_READ, const std::u16string& path = u"a.txt")
    {
        return FtpOpenUri(user, FTPUri(u"ftp://u:p@h/" + path), access);
    }
    static ComPtr<::ISequentialStream> Bytes(const ComPtr<IFileStream>& stream)
    {
        return stream.As<::ISequentialStream>();
    }
    std::size_t Waiting()
    {
        return DrainPool(internet);
    }
    // A session that waits is anybody's, and its connection is busy until the file is closed.
    void ExpectNobodyWaitsWhileTheFileIsOpen()
    {
        internet.closing = [this](const std::u16string& kind) {
            EXPECT_TRUE(kind != u"file" || Waiting() == 0);
        };
    }

    std::array<char, 16> buffer{};
    ULONG count = 77;
};

TEST_F(FtpStream, ReadsToTheEnd)
{
    const auto stream = Open();
    EXPECT_EQ(Bytes(stream)->Read(buffer.data(), 4, &count), S_OK);
    EXPECT_EQ(std::string_view(buffer.data(), count), "cont");
    EXPECT_EQ(Bytes(stream)->Read(buffer.data(), 16, &count), S_OK);
    EXPECT_EQ(std::string_view(buffer.data(), count), "ent");
    for (int i = 0; i < 2; ++i)
    {
        count = 77;
        EXPECT_EQ(Bytes(stream)->Read(buffer.data(), 16, &count), S_OK);
        EXPECT_EQ(count, 0U);
    }
}

TEST_F(FtpStream, Writes)
{
    const auto stream = Open(GENERIC_WRITE, u"new.txt");
    EXPECT_EQ(Bytes(stream)->Write("abc", 3, &count), S_OK);
    EXPECT_EQ(count, 3U);
    EXPECT_EQ(Bytes(stream)->Write("d", 1, nullptr), S_OK);
    EXPECT_EQ(stream->Close(), S_OK);
    EXPECT_EQ(internet.files[u"new.txt"], "abcd");
}

TEST_F(FtpStream, NeedNotCount)
{
    const auto stream = Open();
    EXPECT_EQ(Bytes(stream)->Read(buffer.data(), 4, nullptr), S_OK);
    EXPECT_EQ(std::string_view(buffer.data(), 4), "cont");
}

TEST_F(FtpStream, CloseEndsTheTransferAndGivesTheSessionBack)
{
    const auto stream = Open();
    internet.ForgetCalls();
    ExpectNobodyWaitsWhileTheFileIsOpen();
    EXPECT_EQ(stream->Close(), S_OK);
    EXPECT_THAT(internet.Calls(), ElementsAre(u"close file"));
    EXPECT_EQ(stream->Close(), S_OK);
    EXPECT_THAT(internet.Calls(), ElementsAre(u"close file"));
    EXPECT_EQ(Waiting(), 1U);
    EXPECT_THAT(OutcomeOf([&] { return Bytes(stream)->Read(buffer.data(), 1, &count); }),
                testing::Field(&Outcome::status, Win32Status(6)));
    EXPECT_EQ(count, 0U);
    EXPECT_EQ(Bytes(stream)->Write("x", 1, nullptr), Win32Status(6));
}

TEST_F(FtpStream, CloseReportsNothing)
{
    const auto stream = Open(GENERIC_WRITE);
    internet.Fail("InternetCloseHandle", 12031, u"426 Broken.");
    EXPECT_EQ(stream->Close(), S_OK);
}

TEST_F(FtpStream, ReleaseEndsTheTransferBeforeTheSessionGoesBack)
{
    ExpectNobodyWaitsWhileTheFileIsOpen();
    Open();
    EXPECT_THAT(internet.Calls(u"close"), ElementsAre(u"close file"));
    EXPECT_EQ(Waiting(), 1U);
}

TEST_F(FtpStream, AFailedReadHasItsTextAndDropsTheSession)
{
    const auto stream = Open();
    internet.ForgetCalls();
    internet.Fail("InternetReadFile", ERROR_INTERNET_CONNECTION_RESET,
                  u"426-Sorry.\r\n426 Cut off.\r\n");
    const Outcome outcome =
        OutcomeOf([&] { return Bytes(stream)->Read(buffer.data(), 16, &count); });
    EXPECT_EQ(outcome.status, Win32Status(12031));
    EXPECT_EQ(count, 0U);
    ASSERT_TRUE(outcome.error);
    EXPECT_EQ(outcome.error->interfaceId, IidOf<::ISequentialStream>());
    EXPECT_EQ(WithoutLine(WithLineFeeds(outcome.error->text)),
              u"Failed to read the requested data from the file stream.\n\n426 Cut off. "
              u"[ftpobjects@N]");
    EXPECT_THAT(internet.Calls(), ElementsAre(u"close connection", u"close root"));
    EXPECT_THAT(internet.Open(), ElementsAre(u"file")) << "until it is closed";
    EXPECT_EQ(stream->Close(), S_OK);
    EXPECT_THAT(internet.Open(), IsEmpty());
    EXPECT_EQ(Waiting(), 0U);
}

TEST_F(FtpStream, AFailedWriteHasItsTextAndDropsTheSession)
{
    auto stream = Open(GENERIC_WRITE);
    internet.Fail("InternetWriteFile", ERROR_INTERNET_EXTENDED_ERROR, u"552 Full.");
    const Outcome outcome = OutcomeOf([&] { return Bytes(stream)->Write("x", 1, &count); });
    EXPECT_EQ(outcome.status, Status(extendedStatus));
    EXPECT_EQ(WithoutLine(WithLineFeeds(outcome.error->text)),
              u"Failed to write the data to the file stream.\n\n552 Full. [ftpobjects@N]");
    stream.Reset();
    EXPECT_THAT(internet.Open(), IsEmpty());
    EXPECT_EQ(Waiting(), 0U);
}

TEST_F(FtpStream, AFailureWithoutACodeIsOneAllTheSame)
{
    const auto stream = Open();
    internet.responseFails = true;
    internet.Fail("InternetReadFile", 0);
    EXPECT_EQ(Bytes(stream)->Read(buffer.data(), 16, nullptr), Status(0x80020009));
}

TEST_F(FtpStream, AnotherOperationMeanwhileTakesAnotherSession)
{
    internet.folders[u""] = {{u"a.txt"}};
    const auto stream = Open();
    EXPECT_EQ(FtpQueryFolderItems(user, FTPUri(u"ftp://u:p@h")).size(), 1U);
    EXPECT_EQ(internet.Calls(u"connect").size(), 2U);
}

TEST_F(FtpStream, AFileThatCannotBeOpenedDropsTheSession)
{
    EXPECT_THAT(FailureOf([&] { Open(GENERIC_READ, u"none"); }),
                Threw(extendedStatus, u"Failed to open \"none\" for reading or writing.\n\n550 No "
                                      u"such file."));
    EXPECT_EQ(Waiting(), 0U);
    EXPECT_THAT(internet.Open(), IsEmpty());
}

TEST_F(FtpStream, APathWithControlCharactersIsRefusedUnsent)
{
    for (const DWORD access : {DWORD{GENERIC_READ}, DWORD{GENERIC_WRITE}})
    {
        EXPECT_THAT(FailureOf([&] { Open(access, u"a\u000bb"); }),
                    Threw(0x80070057, u"Failed to open \"a\u000bb\" for reading or writing."));
    }
    EXPECT_THAT(internet.Calls(), IsEmpty());
}

TEST_F(FtpStream, SaysWhichInterfacesLeaveTexts)
{
    const auto support = Open().As<::ISupportErrorInfo>();
    EXPECT_EQ(support->InterfaceSupportsErrorInfo(IID_IFileStream), S_OK);
    EXPECT_EQ(support->InterfaceSupportsErrorInfo(IidOf<::ISequentialStream>()), S_OK);
    EXPECT_EQ(support->InterfaceSupportsErrorInfo(IID_IFile), S_FALSE);
}

class FtpCopy : public FtpTest
{
protected:
    FtpCopy()
    {
        internet.files[u"from"] = std::string(65536, 'a') + std::string(65536, 'b') + "c";
    }

    std::optional<FtpFailure> Copying(ICopyProgress* progress = nullptr)
    {
        return FailureOfCopy([&] {
            FtpCopyUri(user, FTPUri(u"ftp://u:p@h/from"), FTPUri(u"ftp://u:p@h/to"), progress);
        });
    }
    // Of a stream that failed, from whatever place in the source.
    template <class Call> static std::optional<FtpFailure> FailureOfCopy(Call&& call)
    {
        try
        {
            std::forward<Call>(call)();
            return std::nullopt;
        }
        catch (const ComException& failure)
        {
            return FtpFailure{failure.code, WithLineFeeds(failure.message)};
        }
    }

    FakeProgress progress;
};

TEST_F(FtpCopy, CopiesEverythingAndKeepsBothSessions)
{
    EXPECT_FALSE(Copying(&progress));
    EXPECT_EQ(internet.files[u"to"], internet.files[u"from"]);
    EXPECT_EQ(progress.Questions(), 3);
    EXPECT_THAT(progress.presets, testing::Each(VARIANT_TRUE));
    EXPECT_EQ(internet.Calls(u"connect").size(), 2U) << "also to the same server";
    EXPECT_EQ(DrainPool(internet), 2U);
}

TEST_F(FtpCopy, TellsHowFarItIs)
{
    using Amount = FakeAmounts::Amount;
    for (const bool isListed : {true, false})
    {
        if (isListed)
            internet.folders[u""] = {{u"from", false, 131073}};
        else
            internet.folders.clear();
        FakeAmounts amounts;
        EXPECT_FALSE(Copying(&amounts));
        const std::uint64_t total = isListed ? 131073 : AmountUnknown;
        EXPECT_THAT(amounts.Told(),
                    testing::ElementsAre(Amount{0, total}, Amount{65536, total},
                                         Amount{131072, total}, Amount{131073, total}));
        EXPECT_TRUE(amounts.IsInOrder());
        EXPECT_EQ(internet.files[u"to"], internet.files[u"from"]);
        EXPECT_EQ(amounts.references, 0U);
    }
}

// Only then is anything more asked of the server.
TEST_F(FtpCopy, HostsThatDoNotWantToKnowCauseNoListing)
{
    EXPECT_FALSE(Copying(&progress));
    EXPECT_EQ(internet.Calls(u"find").size(), 0U);
}

TEST_F(FtpCopy, OpensTheSourceFirst)
{
    internet.files.erase(u"from");
    internet.files[u"to"] = "precious";
    EXPECT_TRUE(Copying());
    EXPECT_EQ(internet.files[u"to"], "precious");
}

TEST_F(FtpCopy, AnEmptyFileClosesBothAfterTheFirstRead)
{
    internet.files[u"from"] = "";
    EXPECT_FALSE(Copying(&progress));
    EXPECT_EQ(progress.Questions(), 0);
    EXPECT_TRUE(internet.files.contains(u"to"));
    EXPECT_EQ(internet.Calls(u"close file").size(), 2U);
}

TEST_F(FtpCopy, ANoCancelsAndLeavesAPart)
{
    progress.answer = [](int n) {
        return n == 2 ? VARIANT_FALSE : VARIANT_TRUE;
    };
    EXPECT_THAT(Copying(&progress), Threw(0x80004004, u"The operation was cancelled."));
    EXPECT_EQ(internet.files[u"to"].size(), 131072U);
    EXPECT_EQ(DrainPool(internet), 2U);
}

TEST_F(FtpCopy, WhoeverCannotAnswerGoesOn)
{
    progress.status = E_FAIL;
    progress.answer = [](int) {
        return VARIANT_FALSE;
    };
    EXPECT_FALSE(Copying(&progress));
    EXPECT_EQ(progress.Questions(), 3);
    EXPECT_FALSE(Copying(nullptr)) << "nobody to ask";
}

TEST_F(FtpCopy, AFailedReadKeepsTheOtherSession)
{
    internet.Fail("InternetReadFile", 12031, u"426 Cut off.");
    const auto failure = Copying();
    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->code, 0x80072EFFU);
    EXPECT_TRUE(
        failure->text.starts_with(u"Failed to read the requested data from the file stream. "));
    EXPECT_EQ(DrainPool(internet), 1U);
}

TEST_F(FtpCopy, AFailedWriteKeepsTheOtherSession)
{
    internet.Fail("InternetWriteFile", 12003, u"552 Full.");
    const auto failure = Copying();
    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->code, extendedStatus);
    EXPECT_TRUE(failure->text.starts_with(u"Failed to write the data to the file stream. "));
    EXPECT_EQ(DrainPool(internet), 1U);
}

// A stream that is no sequence of bytes.
class NoBytes final : public LocalObject<IFileStream>
{
public:
    HRESULT STDMETHODCALLTYPE Close() override
    {
        return S_OK;
    }
};

// An empty one, whose end is seen.
class SeenStream final : public IFileStream, public ::ISequentialStream
{
public:
    HRESULT closing = S_OK;
    int reads = 0;
    int closed = 0;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override
    {
        *out = nullptr;
        if (iid == IidOf<IFileStream>())
            *out = static_cast<IFileStream*>(this);
        else if (iid == IidOf<::ISequentialStream>())
            *out = static_cast<::ISequentialStream*>(this);
        return *out == nullptr ? E_NOINTERFACE : S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override
    {
        return 1;
    }
    ULONG STDMETHODCALLTYPE Release() override
    {
        return 1;
    }
    HRESULT STDMETHODCALLTYPE Close() override
    {
        ++closed;
        return closing;
    }
    HRESULT STDMETHODCALLTYPE Read(void*, ULONG, ULONG* count) override
    {
        ++reads;
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Write(const void*, ULONG, ULONG*) override
    {
        ADD_FAILURE() << "there is nothing to write";
        return S_OK;
    }
};

TEST_F(FtpCopy, TheEndOfTheSourceClosesBothStreams)
{
    SeenStream from;
    SeenStream to;
    CopyStream(&from, &to, &progress);
    EXPECT_EQ(from.reads, 1);
    EXPECT_EQ(from.closed, 1);
    EXPECT_EQ(to.closed, 1);
    EXPECT_EQ(progress.Questions(), 0);
}

TEST_F(FtpCopy, OnlyTheEndOfTheTargetIsLookedAt)
{
    SeenStream good;
    SeenStream bad;
    bad.closing = Win32Status(1117);
    EXPECT_FALSE(FailureOfCopy([&] { CopyStream(&bad, &good, nullptr); }));
    const auto failure = FailureOfCopy([&] { CopyStream(&good, &bad, nullptr); });
    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->code, 0x8007045DU);
    EXPECT_TRUE(failure->text.starts_with(u"Failed to write the data to the file stream. "));
    EXPECT_EQ(good.closed, 1) << "the source stays as it is";
}

TEST_F(FtpCopy, AStreamWithoutBytesIsRefused)
{
    NoBytes none;
    SeenStream stream;
    for (const auto& [from, to] : {std::pair<IFileStream*, IFileStream*>{&none, &stream},
                                   std::pair<IFileStream*, IFileStream*>{&stream, &none}})
    {
        EXPECT_THAT(FailureOf([&, from = from, to = to] { CopyStream(from, to, nullptr); }),
                    Threw(0x80004002, u"A required stream interface is missing."));
    }
    EXPECT_EQ(stream.reads, 0);
    EXPECT_EQ(stream.closed, 0);
}

} // namespace
} // namespace tarnwell::test
