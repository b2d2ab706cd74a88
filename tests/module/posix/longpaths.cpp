// Paths near the longest that the system takes.
#include "module/localtest.h"

#include <algorithm>

namespace tarnwell::test
{

namespace
{

class LongPaths : public LocalTest
{
protected:
    // A path of `length` units below the folder, of levels as long as can be.
    std::u16string PathOfLength(std::size_t length)
    {
        std::u16string path = folder.Text();
        while (path.size() + 1 < length)
        {
            const std::size_t left = length - path.size() - 1;
            path += u'/';
            // Not so long that nothing but a separator is left for the last level.
            path.append(left > 256 ? 250 : std::min<std::size_t>(left, 255), u'd');
        }
        return path;
    }
};

TEST_F(LongPaths, OfFourThousandUnitsWork)
{
    const std::u16string path = PathOfLength(4000);
    ASSERT_EQ(path.size(), 4000U);
    EXPECT_THAT(OutcomeOf([&] { return NewFolder(path)->Create(VARIANT_TRUE); }), Succeeded());

    const std::u16string file = path + u"/file";
    ASSERT_EQ(Write(Open(file, writeAccess, createNew), "deep"), S_OK);
    EXPECT_THAT(NamesOf(List(path)), testing::ElementsAre(u"file"));
    EXPECT_EQ(FactsOf(File(file)).parent, path);
    EXPECT_EQ(ReadAll(Open(file)), "deep");
    EXPECT_EQ(File(file).As<IFileSystemItem>()->Delete(VARIANT_TRUE, VARIANT_FALSE), S_OK);
    EXPECT_THAT(NamesOf(List(path)), testing::IsEmpty());
}

TEST_F(LongPaths, AreDeletedWithAllTheirLevels)
{
    const std::u16string path = PathOfLength(4000);
    ASSERT_EQ(NewFolder(path)->Create(VARIANT_TRUE), S_OK);
    const std::u16string top = path.substr(0, path.find(u'/', folder.Text().size() + 1));
    EXPECT_EQ(Folder(top).As<IFileSystemItem>()->Delete(VARIANT_TRUE, VARIANT_TRUE), S_OK);
    EXPECT_FALSE(Exists(top));
}

TEST_F(LongPaths, BeyondTheSystemsLimitFailWithTheirText)
{
    const std::u16string path = PathOfLength(5000);
    EXPECT_THAT(GetFile(path), Failed(Win32Status(206), u"Failed to open \"" + path + u"\"."));
    EXPECT_LT(NewFolder(path)->Create(VARIANT_FALSE), 0);
    ComPtr<IFolderContents> contents;
    EXPECT_LT(NewFolder(path)->GetContents(contents.Out()), 0);
}

} // namespace

} // namespace tarnwell::test
