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
    std::u16string Combined(const std::u16string& base, const std::u16string& relative)
    {
        Bstr result;
        EXPECT_EQ(system->CombinePath(Ole(base), Ole(relative), result.Out()), S_OK);
        return std::u16string(result.View());
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

TEST_F(LocalSystem, OffersOperationsByKind)
{
    for (const auto& [kind, expected] :
         {std::pair<std::uint32_t, std::uint32_t>{0, 7}, {1, 7}, {2, 65535}, {0xFFFFFFFF, 65535}})
    {
        std::uint32_t mask = 1;
        EXPECT_EQ(system->GetOperationMask(kind, host->Unknown(), &mask), S_OK);
        EXPECT_EQ(mask, expected) << kind;
        EXPECT_EQ(system->GetOperationMask(kind, nullptr, &mask), S_OK);
        EXPECT_EQ(mask, expected) << kind;
    }
    EXPECT_EQ(host->References(), 2U);
}

TEST_F(LocalSystem, JoinsPathsAsText)
{
    EXPECT_EQ(Combined(u"", u"x"), u"x");
    EXPECT_EQ(Combined(u"a", u""), u"a" + separator);
    EXPECT_EQ(Combined(u"a", u"b"), u"a" + separator + u"b");
    EXPECT_EQ(Combined(u"a/", u"b"), u"a/b");
    EXPECT_EQ(Combined(u"a", u"/b"), u"a" + separator + u"/b") << "nothing is looked into";
    EXPECT_EQ(Combined(u"/", u"b"), u"/b");
}

TEST_F(LocalSystem, JoinsNullAsNothing)
{
    Bstr result;
    EXPECT_EQ(system->CombinePath(nullptr, Ole(u"x"), result.Out()), S_OK);
    EXPECT_EQ(result.View(), u"x");
    EXPECT_EQ(system->CombinePath(nullptr, nullptr, result.Out()), S_OK);
    EXPECT_TRUE(result);
    EXPECT_EQ(result.View(), u"");
}

TEST_F(LocalSystem, RefusesAListThatIsNone)
{
    EXPECT_THAT(OutcomeOf([&] { return system->DeleteItems(nullptr, VARIANT_TRUE, VARIANT_TRUE); }),
                Refused(E_POINTER, u"Internal error (null pointer argument)."));
}

} // namespace

} // namespace tarnwell::test
