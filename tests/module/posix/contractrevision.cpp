// A revision of a real repository.
#include "module/contractrows.h"
#include "module/localtest.h"
#include "support/repository.h"

namespace tarnwell::test
{
namespace
{

ComPtr<::IUnknown> Revision(const TempFolder&)
{
    const Repository repository;
    repository.Commit(u"a.txt", "content", "subject");
    const auto system = TheModule().CreateFileSystem(CLSID_GITFileSystem);
    ComPtr<IRevisions> revisions;
    system.As<IFileSystemRevisions>()->GetRevisions(Ole(repository / u"a.txt"), 0, revisions.Out());
    ComPtr<IRevision> revision;
    revisions->GetItem(1, revision.Out());
    return revision.As<::IUnknown>();
}

ClassContract RevisionContract()
{
    return {"OtherRevision", Revision,        {IID_IRevision, IidOf<::ISupportErrorInfo>()},
            {IID_IRevision}, RevisionNulls(), {}};
}

INSTANTIATE_TEST_SUITE_P(GitRevision, Contract, testing::Values(RevisionContract()), ContractName);

} // namespace
} // namespace tarnwell::test
