// Files with names of all kinds: the right one is made, listed, read and deleted.
#include "module/localtest.h"

namespace tarnwell::test
{

namespace
{

using testing::Contains;
using testing::Not;

const std::u16string names[] = {
    u"with blank.txt",
    u" leading blank",
    u"100%1 %n %0",
    u"a;b,c'd&e=(f)[g]{h}",
    u"#1@2!3~4`5^6$7+8-9_0",
    u"dots.in.name",
    u"\u00E9t\u00E9.txt",
    u"\u65E5\u672C\u8A9E.txt",
    u"\U0001F600.txt",
    u"\U00020BB7\U0001F468\u200D\U0001F469",
    std::u16string(60, u'\u30C6'),
    std::u16string(120, u'x') + u".txt",
};

class Names : public LocalTest
{
};

TEST_F(Names, AreMadeListedReadAndDeleted)
{
    Put(u"beside");
    for (const std::u16string& name : names)
    {
        SCOPED_TRACE(testing::PrintToString(name));
        const std::u16string path = folder / name;
        const auto writer = Open(path, writeAccess, createNew);
        ASSERT_EQ(Write(writer, "held by " + std::to_string(name.size())), S_OK);
        ASSERT_EQ(writer->Close(), S_OK);
        EXPECT_EQ(ReadBytes(path), "held by " + std::to_string(name.size()));

        EXPECT_THAT(NamesOf(List(folder.Text())), testing::UnorderedElementsAre(name, u"beside"));
        EXPECT_EQ(FactsOf(File(path)).name, name);
        EXPECT_EQ(FactsOf(File(path)).path, path);

        EXPECT_EQ(File(path).As<IFileSystemItem>()->Delete(VARIANT_TRUE, VARIANT_FALSE), S_OK);
        EXPECT_FALSE(Exists(path));
        EXPECT_TRUE(Exists(folder / u"beside"));
    }
}

TEST_F(Names, OfFoldersWorkTheSame)
{
    for (const std::u16string& name : names)
    {
        SCOPED_TRACE(testing::PrintToString(name));
        const std::u16string path = folder / name;
        ASSERT_EQ(NewFolder(path)->Create(VARIANT_TRUE), S_OK);
        WriteBytes(Joined(path, u"in"), "1");
        EXPECT_THAT(NamesOf(List(path)), testing::ElementsAre(u"in"));
        EXPECT_EQ(Folder(path).As<IFileSystemItem>()->Delete(VARIANT_TRUE, VARIANT_TRUE), S_OK);
        EXPECT_FALSE(Exists(path));
    }
}

TEST_F(Names, StandInFailuresAsTheyAre)
{
    for (const std::u16string& name : names)
    {
        const std::u16string path = folder / name;
        EXPECT_THAT(GetFile(path), Failed(Win32Status(2), u"Failed to open \"" + path + u"\"."));
    }
}

} // namespace

} // namespace tarnwell::test
