// The stream of a local file, as data and as an archive reader sees it.
#include "module/localtest.h"

namespace tarnwell::test
{

namespace
{

constexpr std::u16string_view readFailed =
    u"Failed to read the requested data from the file stream.";
constexpr std::u16string_view writeFailed = u"Failed to write the data to the file stream.";

class Streams : public LocalTest
{
protected:
    struct Reading
    {
        Outcome outcome;
        std::string bytes;
    };

    template <class View> static Reading Read(const ComPtr<IFileStream>& stream, std::uint32_t size)
    {
        const auto view = stream.As<View>();
        std::string bytes(size, '\0');
        ULONG read = 77;
        Reading reading;
        if constexpr (std::is_same_v<View, ::ISequentialStream>)
        {
            reading.outcome = OutcomeOf([&] { return view->Read(bytes.data(), size, &read); });
        }
        else
        {
            std::uint32_t processed = 77;
            reading.outcome = OutcomeOf([&] { return view->Read(bytes.data(), size, &processed); });
            read = processed;
        }
        reading.bytes = bytes.substr(0, read);
        return reading;
    }
    static Outcome Write(const ComPtr<IFileStream>& stream, std::string_view bytes)
    {
        const auto view = stream.As<::ISequentialStream>();
        ULONG written = 0;
        return OutcomeOf(
            [&] { return view->Write(bytes.data(), static_cast<ULONG>(bytes.size()), &written); });
    }
    static Outcome Seek(const ComPtr<IFileStream>& stream, std::int64_t offset,
                        std::uint32_t origin, std::uint64_t* position = nullptr)
    {
        const auto view = stream.As<ILib7zInStream>();
        return OutcomeOf([&] { return view->Seek(offset, origin, position); });
    }
};

TEST_F(Streams, ALargeRequestIsFilled)
{
    std::string content;
    while (content.size() < 300000)
        content += std::to_string(content.size()) + "\r\n";
    const auto stream = Open(Put(u"a.txt", content));
    EXPECT_EQ(Read<::ISequentialStream>(stream, 1 << 20).bytes, content);
}

TEST_F(Streams, WrittenBytesAreTheFiles)
{
    const std::u16string path = folder / u"new";
    const auto stream = Open(path, writeAccess, createAlways);
    EXPECT_THAT(Write(stream, "one\n"), Succeeded());
    EXPECT_THAT(Write(stream, ""), Succeeded());
    EXPECT_THAT(Write(stream, std::string_view("t\0o\r\n", 5)), Succeeded());
    EXPECT_EQ(stream->Close(), S_OK);
    EXPECT_EQ(ReadBytes(path), std::string("one\nt\0o\r\n", 9));
}

TEST_F(Streams, AReaderRefusesToWrite)
{
    const std::u16string path = Put(u"a.txt");
    EXPECT_THAT(Write(Open(path), "x"), Failed(Win32Status(5), writeFailed));
    EXPECT_EQ(ReadBytes(path), "content");
}

TEST_F(Streams, AWriterRefusesToRead)
{
    const auto stream = Open(Put(u"a.txt"), writeAccess);
    const Reading reading = Read<::ISequentialStream>(stream, 3);
    EXPECT_THAT(reading.outcome, Failed(Win32Status(5), readFailed));
    ASSERT_TRUE(reading.outcome.error);
    EXPECT_TRUE(reading.outcome.error->interfaceId == IID_ISequentialStream);
}

TEST_F(Streams, AClosedStreamFailsByThePlatform)
{
    const auto stream = Open(Put(u"a.txt"), readAccess | writeAccess);
    ASSERT_EQ(stream->Close(), S_OK);
    EXPECT_THAT(Read<::ISequentialStream>(stream, 3).outcome, Failed(Win32Status(6), readFailed));
    EXPECT_THAT(Write(stream, "x"), Failed(Win32Status(6), writeFailed));
    EXPECT_THAT(Seek(stream, 0, 0), FailedBare(Win32Status(6)));
    EXPECT_THAT(Read<ILib7zInStream>(stream, 3).outcome, Failed(Win32Status(6), readFailed));
}

TEST_F(Streams, ArchivesReadTheSameFile)
{
    const auto stream = Open(Put(u"a.txt", "12345678"));
    EXPECT_EQ(Read<::ISequentialStream>(stream, 2).bytes, "12");
    EXPECT_EQ(Read<ILib7zInStream>(stream, 2).bytes, "34");
    EXPECT_EQ(Read<ILib7zSequentialInStream>(stream, 2).bytes, "56");
    EXPECT_EQ(Read<::ISequentialStream>(stream, 9).bytes, "78");
    const Reading end = Read<ILib7zInStream>(stream, 2);
    EXPECT_THAT(end.outcome, Succeeded());
    EXPECT_EQ(end.bytes, "");
}

TEST_F(Streams, AnArchiveThatMayNotReadGetsNothing)
{
    const auto stream = Open(Put(u"a.txt"), writeAccess);
    for (const Reading& reading :
         {Read<ILib7zSequentialInStream>(stream, 3), Read<ILib7zInStream>(stream, 3)})
    {
        EXPECT_THAT(reading.outcome, Failed(Win32Status(5), readFailed));
        EXPECT_EQ(reading.bytes, "");
    }
}

struct SeekRow
{
    std::int64_t offset;
    std::uint32_t origin;
    std::uint64_t position;
};

TEST_F(Streams, ArchivesMoveFromStartPositionAndEnd)
{
    const auto stream = Open(Put(u"a.txt", "12345678"));
    for (const SeekRow& row : {SeekRow{2, 0, 2},
                               {3, 1, 5},
                               {-4, 1, 1},
                               {-1, 2, 7},
                               {0, 2, 8},
                               {0, 1, 8},
                               {5, 2, 13},
                               {std::int64_t{5} << 32, 0, std::uint64_t{5} << 32}})
    {
        std::uint64_t position = 99;
        EXPECT_THAT(Seek(stream, row.offset, row.origin, &position), Succeeded());
        EXPECT_EQ(position, row.position);
    }
    EXPECT_EQ(ReadAll(stream), "") << "behind the end there is nothing";
    EXPECT_THAT(Seek(stream, 6, 0, nullptr), Succeeded()) << "the position needn't be told";
    EXPECT_EQ(ReadAll(stream), "78");
}

TEST_F(Streams, ABadMoveIsBareAndMovesNothing)
{
    const auto stream = Open(Put(u"a.txt", "12345678"));
    ASSERT_THAT(Seek(stream, 3, 0), Succeeded());
    std::uint64_t position = 99;
    EXPECT_THAT(Seek(stream, -1, 0, &position), FailedBare(Win32Status(131)));
    EXPECT_EQ(position, 0U);
    EXPECT_THAT(Seek(stream, -4, 1, &position), FailedBare(Win32Status(131)));
    EXPECT_THAT(Seek(stream, -9, 2, &position), FailedBare(Win32Status(131)));
    EXPECT_THAT(Seek(stream, 0, 3, &position), FailedBare(Win32Status(87)));
    EXPECT_EQ(ReadAll(stream), "45678");
}

TEST_F(Streams, ABadMoveLeavesAnEarlierText)
{
    const auto stream = Open(Put(u"a.txt"));
    ASSERT_LT(GetFile(folder / u"missing").status, 0);
    ComPtr<IFile> file;
    ASSERT_LT(system->GetFile(Ole(folder / u"missing"), VARIANT_TRUE, file.Out()), 0);
    EXPECT_LT(stream.As<ILib7zInStream>()->Seek(-1, 0, nullptr), 0);
    EXPECT_TRUE(TakeErrorText().starts_with(u"Failed to open"));
}

TEST_F(Streams, WritingBehindTheEndLeavesAGap)
{
    const std::u16string path = Put(u"a.txt", "ab");
    const auto stream = Open(path, writeAccess);
    ASSERT_THAT(Seek(stream, 4, 0), Succeeded());
    ASSERT_THAT(Write(stream, "z"), Succeeded());
    ASSERT_EQ(stream->Close(), S_OK);
    EXPECT_EQ(ReadBytes(path), std::string("ab\0\0z", 5));
}

TEST_F(Streams, AnArchiveMustSayWhereItsCountGoes)
{
    const auto stream = Open(Put(u"a.txt"));
    char buffer[4];
    EXPECT_THAT(OutcomeOf([&] { return stream.As<ILib7zInStream>()->Read(buffer, 4, nullptr); }),
                Refused(E_POINTER, u"Internal error (null pointer argument)."));
    EXPECT_EQ(ReadAll(stream), "content");
}

} // namespace

} // namespace tarnwell::test
