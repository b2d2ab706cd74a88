// Streams are read to their end, closed or let go, and need nothing of what made them.
#include "backends/suites/backendtest.h"
#include "support/environmentvalue.h"

namespace tarnwell::test
{
namespace
{

class ReadingStreams : public BackendTest
{
protected:
    ComPtr<IFileStream> Opened(std::u16string_view name) const
    {
        ComPtr<IFileStream> stream;
        EXPECT_THAT(Open(Address(name), stream), Succeeded());
        return stream;
    }
    // What one call gives, which must succeed.
    static std::string Read(const ComPtr<IFileStream>& stream, std::uint32_t size)
    {
        std::string bytes(size, '\0');
        ULONG count = 77;
        EXPECT_THAT(OutcomeOf([&] {
                        return stream.As<::ISequentialStream>()->Read(bytes.data(), size, &count);
                    }),
                    Succeeded());
        return bytes.substr(0, count);
    }
    static HRESULT ReadClosed(const ComPtr<IFileStream>& stream)
    {
        char byte = 0;
        ULONG count = 7;
        const HRESULT status = stream.As<::ISequentialStream>()->Read(&byte, 1, &count);
        EXPECT_EQ(count, 0U);
        return status;
    }
};

TEST_P(ReadingStreams, GoToTheEndAndBeyond)
{
    const auto stream = Opened(u"text.txt");
    EXPECT_EQ(Read(stream, 0), "");
    EXPECT_EQ(Read(stream, 5), "conte");
    EXPECT_EQ(Read(stream, 5), "nt") << "a short count isn't a failure";
    EXPECT_EQ(Read(stream, 5), "") << "the end isn't S_FALSE";
    EXPECT_EQ(Read(stream, 5), "");
}

TEST_P(ReadingStreams, RefuseToWrite)
{
    const auto stream = Opened(u"text.txt");
    ULONG written = 7;
    const Outcome outcome =
        OutcomeOf([&] { return stream.As<::ISequentialStream>()->Write("x", 1, &written); });
    EXPECT_LT(outcome.status, 0);
    EXPECT_EQ(written, 0U);
    EXPECT_EQ(ReadAll(stream), "content");
    EXPECT_EQ(Content(Address(u"text.txt")), "content");
}

TEST_P(ReadingStreams, AreClosedTwiceAndThenFail)
{
    const auto stream = Opened(u"text.txt");
    EXPECT_THAT(OutcomeOf([&] { return stream->Close(); }), Succeeded());
    EXPECT_THAT(OutcomeOf([&] { return stream->Close(); }), Succeeded());
    EXPECT_EQ(ReadClosed(stream), Win32Status(6));
}

TEST_P(ReadingStreams, OutliveAllThatMadeThem)
{
    const auto stream = Opened(u"large");
    system.Reset();
    EXPECT_EQ(host_->References(), 1U) << "a stream needs no host";
    EXPECT_EQ(ReadAll(stream), largeContent);
}

TEST_P(ReadingStreams, LeaveNoFile)
{
    const TempFolder temporary;
    const EnvironmentValue variable(temporaryFolderVariable, temporary.Path().string().c_str());
    const auto isEmpty = [&] {
        return std::filesystem::is_empty(temporary.Path());
    };
    auto stream = Opened(u"text.txt");
    EXPECT_EQ(ReadAll(stream), "content");
    EXPECT_EQ(stream->Close(), S_OK);
    EXPECT_TRUE(isEmpty()) << "when it is closed";
    stream = Opened(u"large");
    stream.Reset();
    EXPECT_TRUE(isEmpty()) << "when it is let go";
    FailedOpen(Address(u"none.txt"));
    EXPECT_TRUE(isEmpty()) << "when it isn't made";
}

class AddressedStreams : public ReadingStreams
{
};

TEST_P(AddressedStreams, NeedNotTellHowMuchTheyRead)
{
    const auto stream = Opened(u"text.txt");
    char buffer[4];
    EXPECT_EQ(stream.As<::ISequentialStream>()->Read(buffer, sizeof buffer, nullptr), S_OK);
    EXPECT_EQ(std::string_view(buffer, sizeof buffer), "cont");
    EXPECT_EQ(ReadAll(stream), "ent");
}

bool HasAddresses(const Backend& backend)
{
    return backend.family == Family::Addressed;
}

TARNWELL_OVER_BACKENDS(ReadingStreams, Backends());
TARNWELL_OVER_BACKENDS(AddressedStreams, BackendsThat(HasAddresses));

} // namespace
} // namespace tarnwell::test
