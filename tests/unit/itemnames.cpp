// Names and addresses that items make of their own: the leaf, the parent, and what is compared.
#include "unit/fakebackendtest.h"

namespace tarnwell::test
{
namespace
{

class ItemNames : public FakeBackendTest
{
protected:
    std::u16string Name(const std::u16string& address)
    {
        return TextOf(File(address), &IFileSystemItem::GetName);
    }
    std::u16string Parent(const std::u16string& address)
    {
        return TextOf(File(address), &IFileSystemItem::GetParentPath);
    }
    std::u16string ComparableName(const std::u16string& address)
    {
        return TextOf(File(address), &IFileSystemItemComparableUrl::GetComparableName);
    }
    std::u16string ComparableUrl(const std::u16string& address)
    {
        return TextOf(File(address), &IFileSystemItemComparableUrl::GetComparableUrl);
    }
};

TEST_F(ItemNames, WithoutRevisions)
{
    EXPECT_EQ(Name(u"ftp://u:p@host/dir/a.txt"), u"a.txt");
    EXPECT_EQ(Name(u"ftp://host/a.txt"), u"a.txt") << "no separator in the path";
    EXPECT_EQ(Name(u"ftp://host/dir/"), u"");
    EXPECT_EQ(Parent(u"ftp://u:p@host:21/dir/a.txt"), u"ftp://u:p@host:21/dir");
    EXPECT_EQ(Parent(u"ftp://host/a.txt"), u"ftp://host/");
    EXPECT_EQ(Parent(u"ftp://host/"), u"ftp://host/");
    EXPECT_EQ(Parent(u"ftp://host/dir/a@b#c/d"), u"ftp://host/dir/a@b#c");
    EXPECT_EQ(ComparableName(u"ftp://host/dir/a@1#2"), u"a@1#2");
    EXPECT_EQ(ComparableUrl(u"ftp://u:p@host/dir/a@1#2"), u"ftp://u:p@host/dir/a@1#2");
}

TEST_F(ItemNames, TheRevisionBelongsToTheNameAndIsNotCompared)
{
    Server().addresses.marker.characters = u"@#";
    EXPECT_EQ(Name(u"p4://host/dir/a.txt#3"), u"a.txt#3");
    EXPECT_EQ(Parent(u"p4://host/dir/a.txt#3"), u"p4://host/dir");
    EXPECT_EQ(ComparableName(u"p4://host/dir/a.txt#3"), u"a.txt");
    EXPECT_EQ(ComparableUrl(u"p4://host/dir/a.txt#3"), u"p4://host/dir/a.txt");
    EXPECT_EQ(ComparableUrl(u"p4://host/dir/a.txt"), u"p4://host/dir/a.txt");
}

TEST_F(ItemNames, SeparatorsInsideTheRevisionSeparateNothing)
{
    Server().addresses.marker.characters = u"@";
    EXPECT_EQ(Name(u"svn://host/r/a@b/c"), u"a@b/c");
    EXPECT_EQ(Parent(u"svn://host/r/a@b/c"), u"svn://host/r");
    EXPECT_EQ(ComparableName(u"svn://host/r/a@b/c"), u"a");
    EXPECT_EQ(Name(u"svn://host/a@b/c"), u"a@b/c");
    EXPECT_EQ(Parent(u"svn://host/a@b/c"), u"svn://host/");
}

TEST_F(ItemNames, AUserIsNoRevisionForTheParent)
{
    Server().addresses.marker.characters = u"@";
    EXPECT_EQ(Parent(u"svn://u:p@host/r/a"), u"svn://u:p@host/r");
    EXPECT_EQ(Parent(u"svn://u:p@host/r/a@5"), u"svn://u:p@host/r");
    EXPECT_EQ(Name(u"svn://u@host/a"), u"a");
}

// Deliberate: the comparable address is cut over the whole text.
TEST_F(ItemNames, AUserWithoutARevisionCutsTheComparableAddress)
{
    Server().addresses.marker.characters = u"@";
    EXPECT_EQ(ComparableUrl(u"svn://u@host/r"), u"svn://u");
    EXPECT_EQ(ComparableUrl(u"svn://u@host/r@5"), u"svn://u@host/r");
}

TEST_F(ItemNames, APasswordWithoutAUserIsLostInTheParent)
{
    EXPECT_EQ(Parent(u"ftp://:pw@host/a/b"), u"ftp://host/a");
}

TEST_F(ItemNames, ANameThatIsAllRevision)
{
    Server().addresses.marker.characters = u"#";
    EXPECT_EQ(Name(u"p4://host/dir/#3"), u"#3");
    EXPECT_EQ(ComparableName(u"p4://host/dir/#3"), u"");
    EXPECT_EQ(Parent(u"p4://host/dir/#3"), u"p4://host/dir");
}

struct LeafCase
{
    std::u16string_view path;
    std::size_t marker;
    std::u16string_view onWindows;
    std::u16string_view onPosix;
};

constexpr std::size_t none = std::u16string_view::npos;

constexpr LeafCase leaves[] = {
    {u"", none, u"", u""},
    {u"a", none, u"a", u"a"},
    {u"a/b", none, u"b", u"b"},
    {u"a/b/", none, u"", u""},
    {u"C:\\x\\a.txt", none, u"a.txt", u"C:\\x\\a.txt"},
    {u"/x/a\\b", none, u"b", u"a\\b"},
    {u"C:a.txt", none, u"C:a.txt", u"C:a.txt"},
    {u"a/b#c/d", 3, u"b#c/d", u"b#c/d"},
    {u"a/b#c\\d", 3, u"b#c\\d", u"b#c\\d"},
    {u"a\\b#c/d", 3, u"b#c/d", u"a\\b#c/d"},
    {u"#c/d", 0, u"#c/d", u"#c/d"},
};

TEST(LeafOfAddress, GoesByTheRulesOfThePlatform)
{
    for (const LeafCase& leaf : leaves)
    {
        EXPECT_EQ(LeafOfAddress(leaf.path, leaf.marker, windowsPathRules), leaf.onWindows);
        EXPECT_EQ(LeafOfAddress(leaf.path, leaf.marker, posixPathRules), leaf.onPosix);
    }
}

TEST_F(ItemNames, AreFoundByTheRulesOfThisPlatform)
{
    EXPECT_EQ(Name(u"ftp://host/x\\a.txt"), LeafOfAddress(u"x\\a.txt", none, platformPathRules));
}

} // namespace
} // namespace tarnwell::test
