// The rest of what the local file system says by itself: its host, its mask, its way of joining.
#include "module/localtest.h"

namespace tarnwell::test
{

namespace
{

using testing::Contains;
using testing::IsEmpty;

class LocalSystem : public LocalTest
{
protected:
    void SetHost(::IUnknown* object)
    {
        EXPECT_EQ(system.As<IFileSystemInit>()->SetHost(object), S_OK);
    }
};

TEST_F(LocalSystem, HoldsTheHostUntilItIsReplaced)
{
    EXPECT_EQ(host->References(), 2U);
    SetHost(nullptr);
    EXPECT_EQ(host->References(), 1U);
}

TEST_F(LocalSystem, AHostWithoutAWindowIsNotHeld)
{
    host->hasWindow = false;
    SetHost(host->Unknown());
    EXPECT_EQ(host->References(), 1U);
}

TEST_F(LocalSystem, ItemsHoldTheHostThatTheyWereMadeWith)
{
    const auto file = File(Put(u"a.txt"));
    const auto other = FakeHost::Make();
    SetHost(other->Unknown());
    EXPECT_EQ(file.As<IFileSystemItem>()->Delete(VARIANT_TRUE, VARIANT_TRUE), S_OK);
    EXPECT_THAT(host->Calls(), Contains(u"GetWindow"));
    EXPECT_THAT(other->Calls(), IsEmpty());
    SetHost(nullptr);
    EXPECT_EQ(other->References(), 1U);
}

TEST_F(LocalSystem, WithoutHostEverythingWorks)
{
    SetHost(nullptr);
    const std::u16string path = Put(u"a.txt");
    EXPECT_EQ(NamesOf(List(folder.Text())).size(), 1U);
    EXPECT_EQ(File(path).As<IFileSystemItem>()->Delete(VARIANT_TRUE, VARIANT_TRUE), S_OK);
    EXPECT_FALSE(Exists(path));
}

TEST_F(LocalSystem, JoinsNullAsNothing)
{
    Bstr result;
    EXPECT_EQ(system->CombinePath(nullptr, Ole(u"x"), result.Out()), S_OK);
    EXPECT_EQ(result.View(), u"x");
}

TEST_F(LocalSystem, RefusesAListThatIsNone)
{
    EXPECT_THAT(OutcomeOf([&] { return system->DeleteItems(nullptr, VARIANT_TRUE, VARIANT_TRUE); }),
                Refused(E_POINTER, u"Internal error (null pointer argument)."));
}

} // namespace

} // namespace tarnwell::test
