// Looking up what only this platform has: drives, shares, data streams, locked files.
#include "module/localtest.h"
#include "module/windows/held.h"

namespace tarnwell::test
{

namespace
{

std::u16string FailedToOpen(const std::u16string& path)
{
    return u"Failed to open \"" + path + u"\".";
}

class WindowsLookup : public LocalTest
{
};

TEST_F(WindowsLookup, ADriveIsItsOwnParent)
{
    for (const std::u16string root : {u"C:\\", u"C:/", u"\\\\?\\C:\\"})
    {
        const Facts facts = FactsOf(Folder(root));
        EXPECT_EQ(facts.path, root);
        EXPECT_EQ(facts.name, u"");
        EXPECT_EQ(facts.parent, root);
        EXPECT_EQ(facts.attributes & folderAttribute, folderAttribute);
        EXPECT_THAT(GetFile(root), Failed(Win32Status(2), FailedToOpen(root)));
    }
}

TEST_F(WindowsLookup, TheParentBelowADriveIsTheDrive)
{
    const Facts facts = FactsOf(Folder(u"C:\\windows"));
    EXPECT_EQ(facts.path, u"C:\\windows");
    EXPECT_EQ(facts.parent, u"C:\\");
    EXPECT_EQ(FactsOf(NewFile(u"C:\\no-such-file-of-tarnwell")).parent, u"C:\\");
}

TEST_F(WindowsLookup, DriveRelativePathsStaySo)
{
    Put(u"a.txt");
    const CurrentFolder current(folder.Path());
    const std::u16string drive = folder.Text().substr(0, 2);

    const Facts facts = FactsOf(File(drive + u"a.txt"));
    EXPECT_EQ(facts.path, drive + u"a.txt");
    EXPECT_EQ(facts.name, u"a.txt");
    EXPECT_EQ(facts.parent, drive);
    const Facts missing = FactsOf(NewFile(drive + u"missing"));
    EXPECT_EQ(missing.path, drive + u"missing");
    EXPECT_EQ(missing.name, u"missing");
    EXPECT_EQ(missing.parent, drive);
    EXPECT_THAT(NamesOf(List(drive)), testing::ElementsAre(u"a.txt"))
        << "no separator goes behind the colon";
}

TEST_F(WindowsLookup, PathsFromTheRootStaySo)
{
    const CurrentFolder current("C:\\");
    const Facts facts = FactsOf(Folder(u"\\windows"));
    EXPECT_EQ(facts.path, u"\\windows");
    EXPECT_EQ(facts.name, u"windows");
    EXPECT_EQ(facts.parent, u"\\");
}

TEST_F(WindowsLookup, ItemsOnSharesHaveTheirParents)
{
    const Facts facts = FactsOf(NewFile(u"\\\\no-such-server\\share\\a\\b"));
    EXPECT_EQ(facts.name, u"b");
    EXPECT_EQ(facts.parent, u"\\\\no-such-server\\share\\a");
}

TEST_F(WindowsLookup, PathsJoinAsTheRulesSay)
{
    const auto combined = [&](const std::u16string& base, const std::u16string& relative) {
        Bstr result;
        EXPECT_EQ(system->CombinePath(Ole(base), Ole(relative), result.Out()), S_OK);
        return std::u16string(result.View());
    };
    EXPECT_EQ(combined(u"C:", u"name"), u"C:name");
    EXPECT_EQ(combined(u"C:\\", u"name"), u"C:\\name");
    EXPECT_EQ(combined(u"C:\\a", u"D:\\b"), u"C:\\a\\D:\\b");
    EXPECT_EQ(combined(u"C:\\a\\", u"b"), u"C:\\a\\b");
}

TEST_F(WindowsLookup, ALockedFileShowsNeitherSizeNorTime)
{
    const std::u16string path = Put(u"a.txt", "12345");
    const Held held(path, GENERIC_READ, 0);
    ASSERT_EQ(held.Error(), ERROR_SUCCESS);
    const Facts facts = FactsOf(File(path));
    EXPECT_EQ(facts.name, u"a.txt");
    EXPECT_NE(facts.attributes, 0U);
    EXPECT_EQ(facts.size, 0U);
    EXPECT_EQ(facts.time, 0U);
}

TEST_F(WindowsLookup, AStreamYetToBeMadeIsAnItem)
{
    const std::u16string path = Put(u"a.txt", "12345");
    const Facts stream = FactsOf(NewFile(path + u":s1"));
    EXPECT_EQ(stream.name, u"a.txt:s1");
    EXPECT_EQ(stream.path, path + u":s1");
    EXPECT_EQ(stream.parent, folder.Text());
    EXPECT_EQ(stream.size, 0U);
    EXPECT_EQ(stream.attributes, FactsOf(File(path)).attributes);
    EXPECT_EQ(stream.time, FactsOf(File(path)).time);
}

TEST_F(WindowsLookup, AStreamThatMustExistAndDoesNotFails)
{
    const std::u16string path = Put(u"a.txt") + u":s1";
    EXPECT_THAT(GetFile(path), Failed(Win32Status(2), FailedToOpen(path)));
    const std::u16string ofMissing = folder / u"missing.txt:s1";
    EXPECT_THAT(GetFile(ofMissing), Failed(Win32Status(2), FailedToOpen(ofMissing)));
    EXPECT_EQ(FactsOf(NewFile(ofMissing)).path, ofMissing);
}

TEST_F(WindowsLookup, AFolderPathWithAStreamIsTheFolder)
{
    const std::u16string sub = MakeDirectory(u"sub");
    const Facts facts = FactsOf(Folder(sub + u":s1"));
    EXPECT_EQ(facts.path, sub);
    EXPECT_EQ(facts.name, u"sub");
    EXPECT_THAT(GetFile(sub + u":s1"), Failed(Win32Status(2), FailedToOpen(sub + u":s1")));
}

} // namespace

} // namespace tarnwell::test
