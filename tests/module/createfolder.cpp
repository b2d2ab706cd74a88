// Making folders, one or with their ancestors.
#include "module/localtest.h"

namespace tarnwell::test
{

namespace
{

class FolderCreation : public LocalTest
{
protected:
    Outcome Create(const std::u16string& path, bool recursive)
    {
        const auto made = NewFolder(path);
        return OutcomeOf([&] { return made->Create(recursive ? VARIANT_TRUE : VARIANT_FALSE); });
    }
    static std::u16string FailedToCreate(const std::u16string& path)
    {
        return u"Failed to create a folder at \"" + path + u"\".";
    }
    static std::u16string FileInTheWay(const std::u16string& path)
    {
        return u"Unable to replace an existing file with a new folder \"" + path + u"\".";
    }
};

TEST_F(FolderCreation, OneFolder)
{
    const std::u16string path = folder / u"new";
    EXPECT_THAT(Create(path, false), Succeeded());
    EXPECT_TRUE(std::filesystem::is_directory(std::filesystem::path(path)));
}

TEST_F(FolderCreation, OneThatExistsFails)
{
    const std::u16string path = MakeDirectory(u"sub");
    EXPECT_THAT(Create(path, false), Failed(Win32Status(183), FailedToCreate(path)));
}

TEST_F(FolderCreation, OneWithoutItsParentFails)
{
    const std::u16string path = Joined(folder / u"missing", u"new");
    EXPECT_THAT(Create(path, false), Failed(Win32Status(3), FailedToCreate(path)));
    EXPECT_FALSE(Exists(folder / u"missing"));
}

TEST_F(FolderCreation, OneInPlaceOfAFileFails)
{
    const auto made = NewFolder(folder / u"a.txt");
    Put(u"a.txt");
    EXPECT_THAT(OutcomeOf([&] { return made->Create(VARIANT_FALSE); }),
                Failed(Win32Status(183), FailedToCreate(folder / u"a.txt")));
    EXPECT_EQ(ReadBytes(folder / u"a.txt"), "content");
}

TEST_F(FolderCreation, WithAncestors)
{
    const std::u16string path = Joined(Joined(folder / u"a", u"b"), u"c");
    EXPECT_THAT(Create(path, true), Succeeded());
    EXPECT_TRUE(std::filesystem::is_directory(std::filesystem::path(path)));
    EXPECT_THAT(Create(path, true), Succeeded()) << "all of it exists";
}

TEST_F(FolderCreation, RunsOfSeparatorsCountAsOne)
{
    const std::u16string path = folder / u"a";
    EXPECT_THAT(Create(path + separator + separator + u"b" + separator + separator, true),
                Succeeded());
    EXPECT_TRUE(std::filesystem::is_directory(std::filesystem::path(Joined(path, u"b"))));
}

TEST_F(FolderCreation, AFileOnTheWayIsNamed)
{
    const std::u16string middle = Put(u"middle");
    EXPECT_THAT(Create(Joined(Joined(middle, u"b"), u"c"), true),
                Failed(Win32Status(183), FileInTheWay(middle)));
    EXPECT_EQ(ReadBytes(middle), "content");
}

TEST_F(FolderCreation, AFileAtTheEndIsNamed)
{
    const auto made = NewFolder(folder / u"a.txt");
    Put(u"a.txt");
    EXPECT_THAT(OutcomeOf([&] { return made->Create(VARIANT_TRUE); }),
                Failed(Win32Status(183), FileInTheWay(folder / u"a.txt")));
}

TEST_F(FolderCreation, TheLevelThatFailsIsNamed)
{
    const std::u16string level = Joined(folder / u"a", std::u16string(300, u'x'));
    const auto made = NewFolder(Joined(level, u"b"));
    EXPECT_THAT(OutcomeOf([&] { return made->Create(VARIANT_TRUE); }),
                FailedSomehow(FailedToCreate(level)));
    EXPECT_TRUE(Exists(folder / u"a")) << "levels before it stay";
}

TEST_F(FolderCreation, ARootIsThereAlready)
{
    const std::u16string root = std::filesystem::path(folder.Text()).root_path().u16string();
    EXPECT_THAT(Create(root, true), Succeeded());
    EXPECT_THAT(Create(u"", true), Succeeded()) << "nothing is left to make";
}

} // namespace

} // namespace tarnwell::test
