// Copies from stream to stream, on two sessions.
#include "ftp/ftpcopy.h"

#include "frame/filetimes.h"
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
