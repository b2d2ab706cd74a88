// Earlier versions of local files, as a machine without snapshots tells of them.
#include "module/localtest.h"

namespace tarnwell::test
{

namespace
{

class LocalRevisions : public LocalTest
{
protected:
    Outcome Has(const std::u16string& path)
    {
        has = 7;
        return OutcomeOf(
            [&] { return system.As<IFileSystemRevisions>()->HasRevisions(Ole(path), 1, &has); });
    }
    Outcome List(const std::u16string& path)
    {
        return OutcomeOf([&] {
            return system.As<IFileSystemRevisions>()->GetRevisions(Ole(path), 1, revisions.Out());
        });
    }

    VARIANT_BOOL has = 7;
    ComPtr<IRevisions> revisions;
};

TEST_F(LocalRevisions, ANewFileHasNone)
{
    const std::u16string path = Put(u"a.txt");
    for (const std::u16string& each :
         {path, folder.Text(), folder / u"missing", std::u16string(u"a.txt"), std::u16string(),
          std::u16string(u"\\\\?\\") + path,
          std::u16string(u"\\\\localhost\\C$\\@GMT-2024.05.01-10.30.00\\no such file")})
    {
        EXPECT_THAT(Has(each), Succeeded());
        EXPECT_EQ(has, VARIANT_FALSE);
        EXPECT_THAT(List(each), Succeeded());
        ASSERT_TRUE(revisions);
        std::uint32_t count = 99;
        EXPECT_EQ(revisions->GetCount(&count), S_OK);
        EXPECT_EQ(count, 0U);
        ComPtr<IRevision> revision;
        EXPECT_EQ(revisions->GetItem(0, revision.Out()), E_INVALIDARG);
    }
}

TEST_F(LocalRevisions, TheListOutlivesTheFileSystem)
{
    List(Put(u"a.txt"));
    system = {};
    std::uint32_t count = 99;
    EXPECT_EQ(revisions->GetCount(&count), S_OK);
    EXPECT_EQ(count, 0U);
}

} // namespace

} // namespace tarnwell::test
