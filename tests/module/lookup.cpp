// From a path to an item.
#include "backends/backend.h"
#include "module/localtest.h"

namespace tarnwell::test
{

namespace
{

std::u16string FailedToOpen(const std::u16string& path)
{
    return u"Failed to open \"" + path + u"\".";
}

class Lookup : public LocalTest
{
};

TEST_F(Lookup, ASlashSeparatesEverywhere)
{
    Put(u"a.txt");
    const std::u16string path = folder.Text() + u"/a.txt";
    const Facts facts = FactsOf(File(path));
    EXPECT_EQ(facts.name, u"a.txt");
    EXPECT_EQ(facts.parent, folder.Text());
}

TEST_F(Lookup, WhatMustExistAndDoesNotFails)
{
    const std::u16string leaf = folder / u"missing";
    EXPECT_THAT(GetFile(leaf), Failed(Win32Status(2), FailedToOpen(leaf)));
    EXPECT_THAT(GetFolder(leaf), Failed(Win32Status(2), FailedToOpen(leaf)));
    const std::u16string deep = Joined(leaf, u"deeper");
    EXPECT_THAT(GetFile(deep), Failed(Win32Status(3), FailedToOpen(deep)));
    EXPECT_THAT(GetFolder(deep), Failed(Win32Status(3), FailedToOpen(deep)));
}

TEST_F(Lookup, NamesStandInFailuresAsTheyAre)
{
    for (const std::u16string_view name : localBackend.names)
    {
        const std::u16string path = folder / name;
        EXPECT_THAT(GetFile(path), Failed(Win32Status(2), FailedToOpen(path)));
    }
}

TEST_F(Lookup, AnyValueButZeroMeansThatItMustExist)
{
    const std::u16string path = folder / u"missing";
    ComPtr<IFile> file;
    EXPECT_EQ(system->GetFile(Ole(path), 1, file.Out()), Win32Status(2));
}

TEST_F(Lookup, WhatIsMissingIsAnItemYetToBeMade)
{
    const std::u16string path = folder / u"missing";
    for (const Facts& facts : {FactsOf(NewFile(path)), FactsOf(NewFolder(path))})
    {
        EXPECT_EQ(facts.path, path);
        EXPECT_EQ(facts.name, u"missing");
        EXPECT_EQ(facts.parent, folder.Text());
        EXPECT_EQ(facts.attributes, 0U);
        EXPECT_EQ(facts.size, 0U);
    }
}

TEST_F(Lookup, WhatIsMissingHasThePresentTime)
{
    constexpr std::uint64_t ticksPerDay = 864000000000;
    const std::uint64_t justNow = FactsOf(File(Put(u"a.txt"))).time;
    const std::uint64_t time = FactsOf(NewFile(folder / u"missing")).time;
    EXPECT_GE(time, justNow);
    EXPECT_LT(time, justNow + ticksPerDay);
}

TEST_F(Lookup, WhatIsMissingKeepsItsTrailingSeparator)
{
    const std::u16string path = folder / u"missing" + separator;
    const Facts facts = FactsOf(NewFolder(path));
    EXPECT_EQ(facts.path, path);
    EXPECT_EQ(facts.name, u"");
    EXPECT_EQ(facts.parent, folder / u"missing");
}

TEST_F(Lookup, TheOtherKindIsNotFound)
{
    const std::u16string file = Put(u"a.txt");
    const std::u16string sub = MakeDirectory(u"sub");
    for (const bool mustExist : {true, false})
    {
        EXPECT_THAT(GetFolder(file, mustExist), Failed(Win32Status(2), FailedToOpen(file)));
        EXPECT_THAT(GetFile(sub, mustExist), Failed(Win32Status(2), FailedToOpen(sub)));
        EXPECT_THAT(GetFile(sub + separator, mustExist),
                    Failed(Win32Status(2), FailedToOpen(sub + separator)));
    }
}

TEST_F(Lookup, AFoldersTrailingSeparatorIsDropped)
{
    const std::u16string sub = MakeDirectory(u"sub");
    const Facts facts = FactsOf(Folder(sub + separator));
    EXPECT_EQ(facts.path, sub);
    EXPECT_EQ(facts.name, u"sub");
    EXPECT_EQ(facts.parent, folder.Text());
}

TEST_F(Lookup, OfTwoTrailingSeparatorsOneIsDropped)
{
    const std::u16string sub = MakeDirectory(u"sub");
    const Facts facts = FactsOf(Folder(sub + separator + separator));
    EXPECT_EQ(facts.path, sub + separator);
    EXPECT_EQ(facts.name, u"");
    EXPECT_EQ(facts.parent, sub);
}

TEST_F(Lookup, AFilesTrailingSeparatorMakesItMissing)
{
    const std::u16string path = Put(u"a.txt") + separator;
    EXPECT_THAT(GetFile(path), FailedSomehow(FailedToOpen(path)));
}

TEST_F(Lookup, ANullOrEmptyPathIsMissing)
{
    ComPtr<IFile> file;
    EXPECT_THAT(OutcomeOf([&] { return system->GetFile(nullptr, VARIANT_TRUE, file.Out()); }),
                Failed(Win32Status(3), FailedToOpen(u"")));
    ComPtr<IFolder> found;
    EXPECT_THAT(OutcomeOf([&] { return system->GetFolder(nullptr, VARIANT_TRUE, found.Out()); }),
                Failed(Win32Status(3), FailedToOpen(u"")));
    EXPECT_THAT(GetFile(u""), Failed(Win32Status(3), FailedToOpen(u"")));
    EXPECT_EQ(FactsOf(NewFile(u"")).path, u"");
}

TEST_F(Lookup, ARelativeNameStaysOne)
{
    Put(u"notes.txt", "123");
    const CurrentFolder current(folder.Path());
    const Facts facts = FactsOf(File(u"notes.txt"));
    EXPECT_EQ(facts.path, u"notes.txt");
    EXPECT_EQ(facts.name, u"notes.txt");
    EXPECT_EQ(facts.parent, u"");
    EXPECT_EQ(facts.size, 3U);

    const Facts missing = FactsOf(NewFile(u"missing.txt"));
    EXPECT_EQ(missing.path, u"missing.txt");
    EXPECT_EQ(missing.name, u"missing.txt");
    EXPECT_EQ(missing.parent, u"");
}

TEST_F(Lookup, ARelativePathStaysOne)
{
    MakeDirectory(u"sub");
    WriteBytes(Joined(folder / u"sub", u"a.txt"), "1");
    const CurrentFolder current(folder.Path());
    const Facts facts = FactsOf(File(u"sub/a.txt"));
    EXPECT_EQ(facts.path, u"sub" + separator + u"a.txt");
    EXPECT_EQ(facts.parent, u"sub");
}

TEST_F(Lookup, DotsNameThemselves)
{
    MakeDirectory(u"sub");
    const CurrentFolder current(folder.Path() / "sub");
    for (const std::u16string dots : {u".", u".."})
    {
        const Facts facts = FactsOf(Folder(dots));
        EXPECT_EQ(facts.path, dots);
        EXPECT_EQ(facts.name, dots);
        EXPECT_EQ(facts.parent, u"");
        EXPECT_EQ(facts.attributes & folderAttribute, folderAttribute);
    }
    const std::u16string above = Joined(folder / u"sub", u"..");
    EXPECT_EQ(FactsOf(Folder(above)).path, above);
    EXPECT_EQ(FactsOf(Folder(above)).name, u"..");
}

TEST_F(Lookup, SizesBeyond32BitsAreWhole)
{
    const std::u16string path = Put(u"large", "");
    constexpr std::uint64_t size = (std::uint64_t{5} << 32) + 7;
    std::filesystem::resize_file(std::filesystem::path(path), size);
    const auto file = File(path);
    std::uint32_t low = 0;
    std::uint32_t high = 0;
    EXPECT_EQ(file->GetSizeLow(&low), S_OK);
    EXPECT_EQ(file->GetSizeHigh(&high), S_OK);
    EXPECT_EQ(low, 7U);
    EXPECT_EQ(high, 5U);
}

TEST_F(Lookup, ASizeThatLooksLikeAnErrorIsASize)
{
    const std::u16string path = Put(u"large", "");
    std::filesystem::resize_file(std::filesystem::path(path), 0xFFFFFFFF);
    EXPECT_EQ(FactsOf(File(path)).size, 0xFFFFFFFFU);
}

TEST_F(Lookup, AnItemIsASnapshot)
{
    const std::u16string path = Put(u"a.txt", "12345");
    const auto file = File(path);
    const Facts before = FactsOf(file);
    WriteBytes(path, "123456789");
    EXPECT_EQ(FactsOf(file), before);
    std::filesystem::remove(std::filesystem::path(path));
    EXPECT_EQ(FactsOf(file), before);
}

} // namespace

} // namespace tarnwell::test
