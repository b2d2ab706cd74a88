// A listing with data streams that meets a file which can't be walked.
#include "frame/text.h"
#include "local/filesystem.h"
#include "support/errorinfo.h"
#include "support/fakehost.h"
#include "support/tempfolder.h"
#include "unit/fakebackup.h"

#include <gmock/gmock.h>

namespace tarnwell::test
{

namespace
{

// As a link without a target can't be opened.
TEST(StreamListingHere, AFileThatCannotBeWalkedShowsOnceAndItsTextStays)
{
    const TempFolder folder;
    std::filesystem::create_symlink("nowhere", folder / u"link");
    const auto host = FakeHost::Make();
    host->setting = VARIANT_TRUE;
    ComPtr<IFileSystem> system;
    ASSERT_EQ(MakeInstance<CWin32FileSystemObject>(nullptr, IID_IFileSystem, system.OutVoid()),
              S_OK);
    system.As<IFileSystemInit>()->SetHost(host->Unknown());
    ComPtr<IFolder> found;
    ASSERT_EQ(system->GetFolder(Wide(folder.Text()), VARIANT_TRUE, found.Out()), S_OK);

    const FakeBackup backup(std::vector<FakeStream>{{4, u":s1:$DATA"}});
    ClearError();
    ComPtr<IFolderContents> contents;
    EXPECT_EQ(found->GetContents(contents.Out()), S_OK);
    EXPECT_TRUE(TakeErrorText().starts_with(u"Failed to open \"" + (folder / u"link") +
                                            u"\" to enumerate data streams. "));
    std::uint32_t count = 0;
    EXPECT_EQ(contents->GetCount(&count), S_OK);
    EXPECT_EQ(count, 1U);
    EXPECT_EQ(backup.walks, 0);
}

} // namespace

} // namespace tarnwell::test
