// Deleting a list through the system's shell.
#include "module/localtest.h"
#include "support/fakeprogress.h"

namespace tarnwell::test
{

namespace
{

class DeleteList : public LocalTest
{
protected:
    Outcome Delete(std::vector<std::optional<std::u16string>> entries, bool recursive)
    {
        FakeItemList list(std::move(entries));
        const VARIANT_BOOL all = recursive ? VARIANT_TRUE : VARIANT_FALSE;
        Outcome outcome = OutcomeOf([&] { return system->DeleteItems(&list, VARIANT_TRUE, all); });
        EXPECT_EQ(list.references, 0U);
        return outcome;
    }
};

TEST_F(DeleteList, AllItemsGoAndNothingElse)
{
    const std::u16string file = Put(u"a b.txt");
    const std::u16string sub = MakeDirectory(u"sub");
    WriteBytes(Joined(sub, u"inside"), "");
    Put(u"kept");
    EXPECT_THAT(Delete({file, sub}, true), Succeeded());
    EXPECT_FALSE(Exists(file));
    EXPECT_FALSE(Exists(sub));
    EXPECT_TRUE(Exists(folder / u"kept"));
}

TEST_F(DeleteList, AMissingItemFails)
{
    EXPECT_THAT(Delete({folder / u"missing"}, true),
                Failed(E_FAIL, u"Failed to delete the list of items."));
}

TEST_F(DeleteList, BadEntriesArePassedOver)
{
    const std::u16string file = Put(u"a.txt");
    EXPECT_THAT(Delete({std::nullopt, u"", file}, true), Succeeded());
    EXPECT_FALSE(Exists(file));
    EXPECT_THAT(Delete({std::nullopt, u""}, true), Succeeded());
}

TEST_F(DeleteList, AnEmptyListIsDone)
{
    EXPECT_THAT(Delete({}, true), Succeeded());
    FakeItemList list({folder / u"missing"});
    list.count = std::nullopt;
    EXPECT_THAT(OutcomeOf([&] { return system->DeleteItems(&list, VARIANT_TRUE, VARIANT_TRUE); }),
                Succeeded());
}

} // namespace

} // namespace tarnwell::test
