// Copying by the platform.
#include "module/localtest.h"
#include "support/fakeprogress.h"
#include "support/wine.h"

namespace tarnwell::test
{

namespace
{

using testing::Each;

constexpr std::size_t piece = std::size_t{4} << 20;
constexpr std::uint32_t failIfExists = 1;

class Copy : public LocalTest
{
protected:
    Outcome CopyItem(const std::u16string& source, const std::u16string& destination)
    {
        return OutcomeOf(
            [&] { return system->CopyItem(Ole(source), Ole(destination), &progress); });
    }
    Outcome CopyEx(const std::u16string& source, const std::u16string& destination,
                   std::uint32_t flags)
    {
        const auto extended = system.As<IFileSystemCopyEx>();
        return OutcomeOf(
            [&] { return extended->CopyItemEx(Ole(source), Ole(destination), flags, &progress); });
    }
    static std::u16string FailedToCopy(const std::u16string& source,
                                       const std::u16string& destination)
    {
        return u"Failed to copy \"" + source + u"\" to \"" + destination + u"\".";
    }

    FakeProgress progress;
};

TEST_F(Copy, WithoutAProgressNobodyIsAsked)
{
    const std::u16string source = Put(u"a.txt", std::string(piece + 1, 'x'));
    const std::u16string target = folder / u"b.txt";
    EXPECT_THAT(OutcomeOf([&] { return system->CopyItem(Ole(source), Ole(target), nullptr); }),
                Succeeded());
    EXPECT_EQ(ReadBytes(target), ReadBytes(source));
}

TEST_F(Copy, TheTimeComesAlong)
{
    constexpr std::uint64_t someTime = 126256395061234500;
    const std::u16string source = Put(u"a.txt");
    ASSERT_EQ(File(source).As<IFileSystemItemExt>()->SetModifiedTime(someTime), S_OK);
    EXPECT_THAT(CopyItem(source, folder / u"b.txt"), Succeeded());
    EXPECT_EQ(FactsOf(File(folder / u"b.txt")).time, someTime);
}

TEST_F(Copy, AMissingSourceFails)
{
    const std::u16string source = folder / u"missing";
    const std::u16string target = folder / u"b.txt";
    EXPECT_THAT(CopyItem(source, target), Failed(Win32Status(2), FailedToCopy(source, target)));
    EXPECT_FALSE(Exists(target));
    EXPECT_EQ(progress.Questions(), 0);
}

TEST_F(Copy, OntoItselfFailsAndLosesNothing)
{
    const std::u16string path = Put(u"a.txt", "mine");
    EXPECT_THAT(CopyItem(path, path), Failed(Win32Status(32), FailedToCopy(path, path)));
    EXPECT_EQ(ReadBytes(path), "mine");
}

TEST_F(Copy, FoldersAreNotCopied)
{
    const std::u16string sub = MakeDirectory(u"sub");
    const std::u16string file = Put(u"a.txt");
    EXPECT_THAT(CopyItem(sub, folder / u"b"),
                Failed(Win32Status(5), FailedToCopy(sub, folder / u"b")));
    EXPECT_THAT(CopyItem(file, sub), Failed(Win32Status(5), FailedToCopy(file, sub)));
}

TEST_F(Copy, FlagsReachThePlatform)
{
    const std::u16string source = Put(u"a.txt", "new");
    const std::u16string target = Put(u"b.txt", "old");
    EXPECT_THAT(CopyEx(source, target, failIfExists),
                Failed(Win32Status(80), FailedToCopy(source, target)));
    EXPECT_EQ(ReadBytes(target), "old");
    EXPECT_THAT(CopyEx(source, target, 0), Succeeded());
    EXPECT_EQ(ReadBytes(target), "new");
}

TEST_F(Copy, FailuresNameTheInterfaceThatWasCalled)
{
    const std::u16string missing = folder / u"missing";
    EXPECT_THAT(CopyItem(missing, folder / u"b"), NamesInterface(IID_IFileSystem));
    EXPECT_THAT(CopyEx(missing, folder / u"b", 0), NamesInterface(IID_IFileSystemCopyEx));
}

TEST_F(Copy, NullPathsAreEmptyOnes)
{
    EXPECT_THAT(OutcomeOf([&] { return system->CopyItem(nullptr, nullptr, &progress); }),
                Failed(Win32Status(3), FailedToCopy(u"", u"")));
}

class CopyProgress : public Copy
{
protected:
    void SetUp() override
    {
        if (IsUnderWine())
            GTEST_SKIP() << "Wine does not ask in between";
    }
    std::u16string PutPieces(std::size_t count)
    {
        return Put(u"a.txt", std::string(count * piece, 'x'));
    }
};

TEST_F(CopyProgress, IsAskedOnTheCallersThreadWithYesInTheValue)
{
    EXPECT_THAT(CopyItem(PutPieces(2), folder / u"b.txt"), Succeeded());
    EXPECT_GE(progress.Questions(), 2);
    EXPECT_THAT(progress.presets, Each(VARIANT_TRUE));
    EXPECT_THAT(progress.threads, Each(std::this_thread::get_id()));
}

TEST_F(CopyProgress, AHostThatWritesNoAnswerGoesOn)
{
    progress.answer = [](int) {
        return std::nullopt;
    };
    EXPECT_THAT(CopyItem(PutPieces(1), folder / u"b.txt"), Succeeded());
    EXPECT_GE(progress.Questions(), 1);
    EXPECT_TRUE(Exists(folder / u"b.txt"));
}

TEST_F(CopyProgress, AnyValueButZeroGoesOnWhateverTheStatus)
{
    progress.answer = [](int) {
        return VARIANT_BOOL{1};
    };
    progress.status = E_FAIL;
    EXPECT_THAT(CopyItem(PutPieces(1), folder / u"b.txt"), Succeeded());
}

TEST_F(CopyProgress, ANoFailsAndLeavesNothing)
{
    const std::u16string source = PutPieces(2);
    const std::u16string target = folder / u"b.txt";
    for (const int last : {1, 2})
    {
        FakeProgress asked;
        asked.answer = [last](int n) {
            return n < last ? VARIANT_TRUE : VARIANT_FALSE;
        };
        EXPECT_THAT(OutcomeOf([&] { return system->CopyItem(Ole(source), Ole(target), &asked); }),
                    Failed(Win32Status(1235), FailedToCopy(source, target)));
        EXPECT_EQ(asked.Questions(), last);
        EXPECT_FALSE(Exists(target));
    }
    EXPECT_EQ(std::filesystem::file_size(source), 2 * piece);
}

} // namespace

} // namespace tarnwell::test
