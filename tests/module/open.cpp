// Opening a local file in all ways.
#include "module/localtest.h"
#include "support/ordinaryuser.h"
#include "support/wine.h"

namespace tarnwell::test
{

namespace
{

class Opening : public LocalTest
{
protected:
    Outcome TryOpen(const std::u16string& path, std::uint32_t access, std::uint32_t disposition)
    {
        const auto file = NewFile(path);
        ComPtr<IFileStream> stream;
        Outcome outcome = OutcomeOf([&] { return file->Open(access, disposition, stream.Out()); });
        EXPECT_EQ(outcome.status == S_OK, static_cast<bool>(stream));
        return outcome;
    }
    static std::u16string FailedToOpen(const std::u16string& path)
    {
        return u"Failed to open \"" + path + u"\" for reading or writing.";
    }
};

struct DispositionRow
{
    std::uint32_t disposition;
    std::uint32_t access;
    std::uint32_t errorIfThere;    // 0 for success
    std::uint32_t errorIfMissing;  // 0 for success
    std::string_view contentAfter; // of a file that held "content"
};

constexpr DispositionRow dispositionRows[] = {
    {createNew, writeAccess, 80, 0, "content"},
    {createAlways, writeAccess, 0, 0, ""},
    {createAlways, readAccess | writeAccess, 0, 0, ""},
    {openExisting, readAccess, 0, 2, "content"},
    {openExisting, writeAccess, 0, 2, "content"},
    {openExisting, readAccess | writeAccess, 0, 2, "content"},
    {openAlways, readAccess, 0, 0, "content"},
    {openAlways, writeAccess, 0, 0, "content"},
    {truncateExisting, writeAccess, 0, 2, ""},
    {0, readAccess, 87, 87, "content"},
    {6, readAccess, 87, 87, "content"},
};

TEST_F(Opening, DispositionsOnAFileThatIsThere)
{
    for (const DispositionRow& row : dispositionRows)
    {
        SCOPED_TRACE(testing::Message() << row.disposition << ", " << row.access);
        const std::u16string path = Put(u"there");
        const Outcome outcome = TryOpen(path, row.access, row.disposition);
        if (row.errorIfThere == 0)
            EXPECT_THAT(outcome, Succeeded());
        else
            EXPECT_THAT(outcome, Failed(Win32Status(row.errorIfThere), FailedToOpen(path)));
        EXPECT_EQ(ReadBytes(path), row.contentAfter);
    }
}

TEST_F(Opening, DispositionsOnAFileThatIsMissing)
{
    for (const DispositionRow& row : dispositionRows)
    {
        SCOPED_TRACE(testing::Message() << row.disposition << ", " << row.access);
        const std::u16string path = folder / u"missing";
        const Outcome outcome = TryOpen(path, row.access, row.disposition);
        if (row.errorIfMissing == 0)
            EXPECT_THAT(outcome, Succeeded());
        else
            EXPECT_THAT(outcome, Failed(Win32Status(row.errorIfMissing), FailedToOpen(path)));
        EXPECT_EQ(Exists(path), row.errorIfMissing == 0);
        std::filesystem::remove(std::filesystem::path(path));
    }
}

TEST_F(Opening, EmptyingWithoutWritingIsRefused)
{
    if (IsUnderWine())
        GTEST_SKIP() << "Wine empties the file";
    const std::u16string path = Put(u"a.txt");
    EXPECT_THAT(TryOpen(path, readAccess, truncateExisting),
                Failed(Win32Status(87), FailedToOpen(path)));
    EXPECT_EQ(ReadBytes(path), "content");
}

TEST_F(Opening, NeitherReadingNorWritingIsRefused)
{
    const std::u16string path = Put(u"a.txt");
    for (const std::uint32_t access : {0U, 1U, 0x20000000U, 0x3FFFFFFFU})
    {
        EXPECT_THAT(TryOpen(path, access, createAlways),
                    Refused(E_INVALIDARG,
                            u"Internal error (invalid stream open mode) for \"" + path + u"\"."));
    }
    EXPECT_EQ(ReadBytes(path), "content");
}

TEST_F(Opening, AMissingFolderIsToldApart)
{
    const std::u16string path = Joined(folder / u"missing", u"a.txt");
    EXPECT_THAT(TryOpen(path, writeAccess, createAlways),
                Failed(Win32Status(3), FailedToOpen(path)));
}

TEST_F(Opening, AFolderInPlaceOfTheFileFails)
{
    const auto file = NewFile(folder / u"later");
    MakeDirectory(u"later");
    ComPtr<IFileStream> stream;
    EXPECT_THAT(OutcomeOf([&] { return file->Open(readAccess, openExisting, stream.Out()); }),
                Failed(Win32Status(5), FailedToOpen(folder / u"later")));
}

TEST_F(Opening, AReadOnlyFileIsNotWritten)
{
    OrdinaryUser::TakeOver(folder);
    const OrdinaryUser user;
    if (!user.Possible())
        GTEST_SKIP() << "can't become an ordinary user";
    const std::u16string path = Put(u"a.txt");
    ASSERT_EQ(File(path).As<IFileSystemItem>()->SetAttributes(readOnlyAttribute), S_OK);
    EXPECT_EQ(ReadAll(Open(path)), "content");
    if (IsUnderWine())
        GTEST_SKIP() << "Wine lets root write";
    for (const std::uint32_t access : {writeAccess, readAccess | writeAccess})
    {
        EXPECT_THAT(TryOpen(path, access, openExisting),
                    Failed(Win32Status(5), FailedToOpen(path)));
    }
    EXPECT_EQ(ReadBytes(path), "content");
}

TEST_F(Opening, TheItemGoesOnTellingItsOldFacts)
{
    const auto file = NewFile(folder / u"new.txt");
    const Facts before = FactsOf(file);
    ComPtr<IFileStream> stream;
    ASSERT_EQ(file->Open(writeAccess, createAlways, stream.Out()), S_OK);
    ASSERT_EQ(Write(stream, "12345"), S_OK);
    ASSERT_EQ(stream->Close(), S_OK);
    EXPECT_EQ(FactsOf(file), before);
    EXPECT_EQ(FactsOf(file).size, 0U);
    EXPECT_EQ(ReadBytes(folder / u"new.txt"), "12345");
}

TEST_F(Opening, AFileThatIsBeingReadCanBeMadeAnew)
{
    const std::u16string path = Put(u"a.txt");
    const auto reader = Open(path);
    const auto writer = Open(path, writeAccess | readAccess, createAlways);
    EXPECT_EQ(ReadAll(reader), "");
    ASSERT_EQ(Write(writer, "new"), S_OK);
    EXPECT_EQ(ReadAll(reader), "new");
}

TEST_F(Opening, ReadingAndWritingAtOnce)
{
    const std::u16string path = Put(u"a.txt", "abcdef");
    const auto stream = Open(path, readAccess | writeAccess);
    ASSERT_EQ(Write(stream, "XY"), S_OK);
    EXPECT_EQ(ReadAll(stream), "cdef");
    EXPECT_EQ(ReadBytes(path), "XYcdef");
}

} // namespace

} // namespace tarnwell::test
