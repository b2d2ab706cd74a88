// What the module may not do. The tests usually run as somebody to whom nothing is forbidden, so
// that they become nobody for a while; where that isn't possible they are skipped.
#include "module/localtest.h"
#include "support/ordinaryuser.h"

#include <sys/stat.h>
#include <unistd.h>

namespace tarnwell::test
{

namespace
{

class Permissions : public LocalTest
{
protected:
    Permissions()
    {
        OrdinaryUser::TakeOver(folder);
    }
    void SetUp() override
    {
        if (!OrdinaryUser().Possible())
            GTEST_SKIP() << "can't become an ordinary user";
    }
    void Forbid(const std::u16string& path, mode_t left = 0)
    {
        EXPECT_EQ(chmod(std::filesystem::path(path).c_str(), left), 0);
    }
};

TEST_F(Permissions, AFileThatMayNotBeReadShowsNeitherSizeNorTime)
{
    const std::u16string path = Put(u"a.txt", "12345");
    Forbid(path);
    const OrdinaryUser user;
    const Facts facts = FactsOf(File(path));
    EXPECT_EQ(facts.name, u"a.txt");
    EXPECT_NE(facts.attributes, 0U);
    EXPECT_EQ(facts.size, 0U);
    EXPECT_EQ(facts.time, 0U);
}

TEST_F(Permissions, AFolderThatMayNotBeWrittenGetsNoTemporaryFile)
{
    const std::u16string sub = MakeDirectory(u"sub");
    Forbid(sub, 0555);
    const OrdinaryUser user;
    const std::u16string path = Joined(sub, u"a.txt");
    Bstr made;
    EXPECT_THAT(
        OutcomeOf([&] { return system->CreateTempFile(Ole(path), made.Out()); }),
        Failed(Win32Status(5), u"Failed to create a temporary file for \"" + path + u"\"."));
}

TEST_F(Permissions, AFileThatMayNotBeReadIsNotOpened)
{
    const std::u16string path = Put(u"a.txt", "12345");
    Forbid(path);
    const OrdinaryUser user;
    const auto file = File(path);
    ComPtr<IFileStream> stream;
    EXPECT_THAT(
        OutcomeOf([&] { return file->Open(readAccess, openExisting, stream.Out()); }),
        Failed(Win32Status(5), u"Failed to open \"" + path + u"\" for reading or writing."));
}

TEST_F(Permissions, ALookupBehindAClosedFolderFails)
{
    const std::u16string sub = MakeDirectory(u"sub");
    Forbid(sub);
    const OrdinaryUser user;
    const std::u16string path = Joined(sub, u"a.txt");
    EXPECT_THAT(GetFile(path), Failed(Win32Status(5), u"Failed to open \"" + path + u"\"."));
    EXPECT_THAT(GetFile(path, false), Succeeded()) << "it needn't exist";
}

TEST_F(Permissions, AClosedFolderIsNotListed)
{
    const std::u16string sub = MakeDirectory(u"sub");
    Forbid(sub);
    const OrdinaryUser user;
    const auto found = Folder(sub);
    ComPtr<IFolderContents> contents;
    EXPECT_THAT(
        OutcomeOf([&] { return found->GetContents(contents.Out()); }),
        Failed(Win32Status(5), u"Failed to read the contents of the folder \"" + sub + u"\"."));
}

TEST_F(Permissions, OneFolderInAClosedOneFails)
{
    const std::u16string sub = MakeDirectory(u"sub");
    Forbid(sub, 0555);
    const OrdinaryUser user;
    const std::u16string path = Joined(sub, u"new");
    EXPECT_THAT(OutcomeOf([&] { return NewFolder(path)->Create(VARIANT_FALSE); }),
                Failed(Win32Status(5), u"Failed to create a folder at \"" + path + u"\"."));
}

// Deliberate: a level that may not be made might exist already.
TEST_F(Permissions, ARefusalAtTheLastLevelPassesUnnoticed)
{
    const std::u16string sub = MakeDirectory(u"sub");
    Forbid(sub, 0555);
    const OrdinaryUser user;
    const std::u16string path = Joined(sub, u"new");
    EXPECT_THAT(OutcomeOf([&] { return NewFolder(path)->Create(VARIANT_TRUE); }), Succeeded());
    EXPECT_FALSE(Exists(path));
    const std::u16string deeper = Joined(path, u"deeper");
    EXPECT_THAT(OutcomeOf([&] { return NewFolder(deeper)->Create(VARIANT_TRUE); }),
                Failed(Win32Status(3), u"Failed to create a folder at \"" + deeper + u"\"."))
        << "and shows at the level below";
}

TEST_F(Permissions, AFileInAClosedFolderIsNotDeleted)
{
    const std::u16string sub = MakeDirectory(u"sub");
    const std::u16string path = Joined(sub, u"a.txt");
    WriteBytes(path, "kept");
    Forbid(sub, 0555);
    const OrdinaryUser user;
    const auto item = File(path).As<IFileSystemItem>();
    const std::u16string message = u"Can't delete the file or folder \"" + path + u"\".";
    EXPECT_THAT(OutcomeOf([&] { return item->Delete(VARIANT_TRUE, VARIANT_FALSE); }),
                Failed(Win32Status(5), message));
    EXPECT_THAT(OutcomeOf([&] { return item->Delete(VARIANT_TRUE, VARIANT_TRUE); }),
                Failed(E_FAIL, message));
    EXPECT_EQ(ReadBytes(path), "kept");
}

TEST_F(Permissions, SomebodyElsesFileKeepsItsAttributesAndTime)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "there is nobody else to own a file";
    const std::u16string path = Put(u"a.txt");
    const Facts before = FactsOf(File(path));
    {
        const OrdinaryUser user;
        const auto file = File(path);
        EXPECT_THAT(OutcomeOf([&] { return file.As<IFileSystemItem>()->SetAttributes(1); }),
                    Failed(Win32Status(5),
                           u"Failed to get attributes for the file or folder \"" + path + u"\"."));
        EXPECT_EQ(FactsOf(file).attributes, before.attributes);
        EXPECT_THAT(
            OutcomeOf([&] { return file.As<IFileSystemItemExt>()->SetModifiedTime(1000000000); }),
            Failed(Win32Status(5), u"Failed to open \"" + path + u"\" for reading or writing."));
    }
    EXPECT_EQ(FactsOf(File(path)), before);
}

TEST_F(Permissions, ReadOnlyTakesTheWriteBitsOfAll)
{
    const std::u16string path = Put(u"a.txt");
    Forbid(path, 0666);
    const auto item = File(path).As<IFileSystemItem>();
    const auto mode = [&] {
        struct stat facts;
        EXPECT_EQ(stat(std::filesystem::path(path).c_str(), &facts), 0);
        return facts.st_mode & 0777;
    };
    EXPECT_EQ(item->SetAttributes(1), S_OK);
    EXPECT_EQ(mode(), 0444U);
    EXPECT_EQ(item->SetAttributes(128), S_OK);
    EXPECT_EQ(mode(), 0644U) << "only the owner's comes back";
    EXPECT_EQ(item->SetAttributes(2 | 4 | 32), S_OK);
    EXPECT_EQ(mode(), 0644U) << "other attributes stay with the item";
    EXPECT_EQ(FactsOf(item).attributes, 38U);
}

TEST_F(Permissions, TheTimeOnTheDiskIsExact)
{
    const std::u16string path = Put(u"a.txt");
    // 2001-02-03 04:05:06.1234567 UTC
    constexpr std::uint64_t ticksUntil1970 = 116444736000000000;
    constexpr std::uint64_t seconds = 981173106;
    constexpr std::uint64_t time = ticksUntil1970 + seconds * 10000000 + 1234567;
    ASSERT_EQ(File(path).As<IFileSystemItemExt>()->SetModifiedTime(time), S_OK);
    struct stat facts;
    ASSERT_EQ(stat(std::filesystem::path(path).c_str(), &facts), 0);
    EXPECT_EQ(facts.st_mtim.tv_sec, static_cast<time_t>(seconds));
    EXPECT_EQ(facts.st_mtim.tv_nsec, 123456700);
}

} // namespace

} // namespace tarnwell::test
