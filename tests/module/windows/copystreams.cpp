// Copies with a named data stream at one end.
#include "module/localtest.h"
#include "module/windows/held.h"
#include "support/fakeprogress.h"
#include "support/wine.h"

namespace tarnwell::test
{

namespace
{

class CopyStreams : public LocalTest
{
protected:
    Outcome Copy(const std::u16string& source, const std::u16string& destination)
    {
        return OutcomeOf(
            [&] { return system->CopyItem(Ole(source), Ole(destination), &progress); });
    }

    FakeProgress progress;
};

TEST_F(CopyStreams, AMissingStreamFailsWithTheTextOfTheCopy)
{
    const std::u16string source = Put(u"a.txt") + u":none";
    const std::u16string target = folder / u"b.txt";
    EXPECT_THAT(Copy(source, target), Failed(Win32Status(2), u"Failed to copy \"" + source +
                                                                 u"\" to \"" + target + u"\"."));
    EXPECT_FALSE(Exists(target));
}

TEST_F(CopyStreams, FromAFileToAStreamThatIsNotThereYet)
{
    const std::u16string file = Put(u"a.txt", "main");
    EXPECT_THAT(Copy(file, folder / u"b.txt:new"), Succeeded());
    EXPECT_EQ(ReadBytes(folder / u"b.txt:new"), "main");
    EXPECT_THAT(progress.presets, testing::ElementsAre(VARIANT_FALSE)) << "through the streams";
}

class CopyRealStreams : public CopyStreams
{
protected:
    void SetUp() override
    {
        if (IsUnderWine())
            GTEST_SKIP() << "Wine does not enumerate data streams";
        WriteBytes(stream, bytes);
    }

    std::u16string file = Put(u"a.txt", "main");
    std::u16string stream = file + u":s1";
    std::string bytes = std::string(100'000, 's');
};

TEST_F(CopyRealStreams, FromAStreamToAFile)
{
    EXPECT_THAT(Copy(stream, folder / u"b.txt"), Succeeded());
    EXPECT_EQ(ReadBytes(folder / u"b.txt"), bytes);
}

TEST_F(CopyRealStreams, AreListedWhereTheHostWantsThem)
{
    host->setting = VARIANT_TRUE;
    EXPECT_THAT(NamesOf(List(folder.Text())), testing::ElementsAre(u"a.txt", u"a.txt:s1"));
    EXPECT_EQ(FactsOf(File(stream)).size, bytes.size());
}

} // namespace

} // namespace tarnwell::test
