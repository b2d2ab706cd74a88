// Copies here, where a colon is a part of a name.
#include "module/localtest.h"
#include "support/fakeprogress.h"

namespace tarnwell::test
{

namespace
{

TEST_F(LocalTest, ACopyTakesAColonForAPartOfTheName)
{
    FakeProgress progress;
    const std::u16string source = Put(u"a.txt:s1", "new");
    EXPECT_EQ(system->CopyItem(Ole(source), Ole(folder / u"b:c"), &progress), S_OK);
    EXPECT_EQ(ReadBytes(folder / u"b:c"), "new");
    EXPECT_EQ(progress.presets.at(0), VARIANT_TRUE) << "the platform's copy did it";
}

TEST_F(LocalTest, ATemporaryFileTakesABackslashForAPartOfTheName)
{
    Bstr made;
    EXPECT_EQ(system->CreateTempFile(Ole(folder / u"a\\b"), made.Out()), S_OK);
    EXPECT_EQ(made.View(), folder / u"vrltmp0");
}

} // namespace

} // namespace tarnwell::test
