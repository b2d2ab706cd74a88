// Which platform calls the question for revisions costs.
#include "faults/local.h"

#include "git/gitobjects.h"

namespace tarnwell::test
{
namespace
{

class RevisionsOf : public testing::Test
{
protected:
    // How many clients were started for it.
    int Clients(const std::u16string& path) const
    {
        ComPtr<IFileSystemRevisions> system;
        EXPECT_EQ(
            MakeInstance<GITFileSystemObject>(nullptr, IID_IFileSystemRevisions, system.OutVoid()),
            S_OK);
        const Faults faults;
        VARIANT_BOOL has = 77;
        EXPECT_EQ(system->HasRevisions(Wide(path), 0, &has), S_OK);
        EXPECT_EQ(has, VARIANT_FALSE);
        return faults.Calls("CreateProcessW");
    }

    const Local local;
};

TEST_F(RevisionsOf, AFolderTakeNoClient)
{
    EXPECT_EQ(Clients(local.Path(u"sub")), 0);
    EXPECT_EQ(Clients(u"git://" + local.Path(u"sub") + u"#12"), 0);
}

TEST_F(RevisionsOf, AFileTakeOne)
{
    EXPECT_EQ(Clients(local.Path(u"a.txt")), 1);
}

} // namespace
} // namespace tarnwell::test
