// Which class a failure names: that of the object which was called. The linker puts a function
// before the one that looks the class's name up, since no class has a name here.
#include "unit/posix/namedclasses.h"

#include "git/gitobjects.h"
#include "perforce/p4objects.h"
#include "platform/wide.h"
#include "subversion/svnobjects.h"
#include "support/environmentvalue.h"
#include "unit/fakebackendtest.h"

namespace tarnwell::test
{

thread_local GUID named;

}

extern "C" HRESULT __wrap_ProgIDFromCLSID(REFCLSID classId, LPOLESTR* progId)
{
    tarnwell::test::named = classId;
    *progId = nullptr;
    return REGDB_E_CLASSNOTREG;
}

namespace tarnwell::test
{
namespace
{

class NamedClasses : public FakeBackendTest
{
protected:
    Bstr text;
};

TEST_F(NamedClasses, OfAFileSystem)
{
    ComPtr<IFile> file;
    const auto get = [&] {
        return system->GetFile(Wide(u"nothing"), VARIANT_TRUE, file.Out());
    };
    EXPECT_TRUE(Names(CLSID_FTPFileSystem, get));
    ASSERT_EQ(MakeInstance<GITFileSystemObject>(nullptr, IID_IFileSystem, system.OutVoid()), S_OK);
    EXPECT_TRUE(Names(CLSID_GITFileSystem, get));
    const auto revisions = system.As<IFileSystemRevisions>();
    EXPECT_TRUE(Names(CLSID_GITFileSystem,
                      [&] { return revisions->GetRevisions(Wide(u"a"), 0, nullptr); }));
    EXPECT_TRUE(Names(CLSID_GITFileSystem,
                      [&] { return revisions->HasRevisions(Wide(u"a"), 0, nullptr); }));
    ASSERT_EQ(system->GetFile(Wide(u"git:///a"), VARIANT_FALSE, file.Out()), S_OK);
    EXPECT_TRUE(Names(CLSID_GITFile, [&] { return file->GetSizeLow(nullptr); }));
}

TEST_F(NamedClasses, OfItems)
{
    const auto file = File(u"nothing");
    EXPECT_TRUE(Names(CLSID_FTPFile, [&] { return file->GetSizeHigh(nullptr); }));
    EXPECT_TRUE(
        Names(CLSID_FTPFile, [&] { return file.As<IFileSystemItem>()->GetName(text.Out()); }));
    const auto folder = Folder(u"nothing");
    const auto item = folder.As<IFileSystemItem>();
    const auto comparable = folder.As<IFileSystemItemComparableUrl>();
    std::uint64_t time = 0;
    EXPECT_TRUE(Names(CLSID_FTPFolder, [&] { return item->GetModifiedTime(&time); }));
    EXPECT_TRUE(Names(CLSID_FTPFolder, [&] { return item->GetParentPath(text.Out()); }));
    EXPECT_TRUE(Names(CLSID_FTPFolder, [&] { return comparable->GetComparableName(text.Out()); }));
    Server().failure.emplace(E_ACCESSDENIED, u"no entry", SourcePosition{u"fake", 3});
    ComPtr<IFolderContents> contents;
    EXPECT_TRUE(Names(CLSID_FTPFolder, [&] { return folder->GetContents(contents.Out()); }));
}

TEST_F(NamedClasses, OfContents)
{
    const auto contents = Contents({});
    ComPtr<IFileSystemItem> item;
    EXPECT_TRUE(Names(CLSID_FTPFolderContents, [&] { return contents->GetItem(0, item.Out()); }));
}

// Each file system's own, whose objects are otherwise the same.
template <class System, class Contents>
void ExpectNamed(const std::u16string& address, const GUID& systemClass, const GUID& fileClass,
                 const GUID& folderClass, const GUID& contentsClass)
{
    ComPtr<IFileSystem> system;
    ASSERT_EQ(MakeInstance<System>(nullptr, IID_IFileSystem, system.OutVoid()), S_OK);
    ComPtr<IFile> file;
    ComPtr<IFolder> folder;
    EXPECT_TRUE(Names(
        systemClass, [&] { return system->GetFile(Wide(u"nothing"), VARIANT_FALSE, file.Out()); }));
    ASSERT_EQ(system->GetFile(Wide(address), VARIANT_FALSE, file.Out()), S_OK);
    EXPECT_TRUE(Names(fileClass, [&] { return file->GetSizeLow(nullptr); }));
    ASSERT_EQ(system->GetFolder(Wide(address), VARIANT_FALSE, folder.Out()), S_OK);
    const EnvironmentValue noClient("PATH", "/nonexistent");
    ComPtr<IFolderContents> none;
    EXPECT_TRUE(Names(folderClass, [&] { return folder->GetContents(none.Out()); }));
    const auto contents = MakeFolderContents<Contents>(nullptr, {});
    ComPtr<IFileSystemItem> item;
    EXPECT_TRUE(Names(contentsClass, [&] { return contents->GetItem(0, item.Out()); }));
}

TEST_F(NamedClasses, OfPerforceAndSubversion)
{
    ExpectNamed<P4FileSystemObject, P4FolderContentsObject>(u"p4:////depot/a", CLSID_P4FileSystem,
                                                            CLSID_P4File, CLSID_P4Folder,
                                                            CLSID_P4FolderContents);
    ExpectNamed<SVNFileSystemObject, SVNFolderContentsObject>(u"svn://host/a", CLSID_SVNFileSystem,
                                                              CLSID_SVNFile, CLSID_SVNFolder,
                                                              CLSID_SVNFolderContents);
}

TEST_F(NamedClasses, OfRevisions)
{
    ComPtr<IRevisions> revisions;
    ComPtr<IRevision> revision;
    ASSERT_EQ(MakeRevisions(std::vector<RevisionRecord>(1), CLSID_GITFileSystem, revisions.Out()),
              S_OK);
    ASSERT_EQ(revisions->GetItem(0, revision.Out()), S_OK);
    EXPECT_TRUE(Names(CLSID_OtherRevisions, [&] { return revisions->GetCount(nullptr); }));
    EXPECT_TRUE(Names(CLSID_OtherRevision, [&] { return revision->GetUri(nullptr); }));
    EXPECT_TRUE(Names(CLSID_OtherRevision, [&] { return revision->GetRevisionTime(nullptr); }));
}

} // namespace
} // namespace tarnwell::test
