// The extended form of paths, which has no limit and takes everything literally.
#include "module/localtest.h"

namespace tarnwell::test
{

namespace
{

class ExtendedPaths : public LocalTest
{
protected:
    std::u16string Extended(const std::u16string& name)
    {
        return u"\\\\?\\" + (folder / name);
    }
};

TEST_F(ExtendedPaths, NameTheSameFiles)
{
    Put(u"a.txt", "12345");
    const std::u16string path = Extended(u"a.txt");
    const Facts facts = FactsOf(File(path));
    EXPECT_EQ(facts.path, path);
    EXPECT_EQ(facts.name, u"a.txt");
    EXPECT_EQ(facts.parent, u"\\\\?\\" + folder.Text());
    EXPECT_EQ(ReadAll(Open(path)), "12345");
    EXPECT_THAT(NamesOf(List(u"\\\\?\\" + folder.Text())), testing::ElementsAre(u"a.txt"));
}

TEST_F(ExtendedPaths, ReachBeyondTheLimit)
{
    std::u16string path = Extended(std::u16string(200, u'a'));
    path += u'\\' + std::u16string(200, u'b');
    EXPECT_THAT(OutcomeOf([&] { return NewFolder(path)->Create(VARIANT_TRUE); }), Succeeded());
    const std::u16string file = path + u"\\file";
    ASSERT_EQ(Write(Open(file, writeAccess, createNew), "deep"), S_OK);
    EXPECT_THAT(NamesOf(List(path)), testing::ElementsAre(u"file"));
    EXPECT_EQ(FactsOf(File(file)).parent, path);
    EXPECT_EQ(ReadAll(Open(file)), "deep");
    EXPECT_EQ(File(file).As<IFileSystemItem>()->Delete(VARIANT_TRUE, VARIANT_FALSE), S_OK);
    EXPECT_THAT(NamesOf(List(path)), testing::IsEmpty());
}

} // namespace

} // namespace tarnwell::test
