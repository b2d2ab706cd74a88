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

} // namespace
} // namespace tarnwell::test
