// The type library in the module's file, and its registration.
#include "support/loadedmodule.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <string>

namespace tarnwell::test
{

namespace
{

struct Coclass
{
    const char16_t* name;
    const char16_t* help;
    GUID clsid;
};

const Coclass coclasses[] = {
    {u"Win32FileSystem", u"File system for the Win32 file system.", CLSID_Win32FileSystem},
    {u"Win32File", u"File object for the Win32 file system.", CLSID_Win32File},
    {u"Win32Folder", u"Folder object for the Win32 file system.", CLSID_Win32Folder},
    {u"Win32FolderContents", u"Folder contents object for the Win32 file system.",
     CLSID_Win32FolderContents},
    {u"P4FileSystem", u"File system for the P4 file system.", CLSID_P4FileSystem},
    {u"P4File", u"File object for the P4 file system.", CLSID_P4File},
    {u"P4Folder", u"Folder object for the P4 file system.", CLSID_P4Folder},
    {u"P4FolderContents", u"Folder contents object for the P4 file system.",
     CLSID_P4FolderContents},
    {u"VSSFileSystem", u"File system for the VSS file system.", CLSID_VSSFileSystem},
    {u"VSSFile", u"File object for the VSS file system.", CLSID_VSSFile},
    {u"VSSFolder", u"Folder object for the VSS file system.", CLSID_VSSFolder},
    {u"VSSFolderContents", u"Folder contents object for the VSS file system.",
     CLSID_VSSFolderContents},
    {u"FTPFileSystem", u"File system for the FTP file system.", CLSID_FTPFileSystem},
    {u"FTPFile", u"File object for the FTP file system.", CLSID_FTPFile},
    {u"FTPFolder", u"Folder object for the FTP file system.", CLSID_FTPFolder},
    {u"FTPFolderContents", u"Folder contents object for the FTP file system.",
     CLSID_FTPFolderContents},
    {u"SVNFileSystem", u"File system for the Subversion file system.", CLSID_SVNFileSystem},
    {u"SVNFile", u"File object for the Subversion file system.", CLSID_SVNFile},
    {u"SVNFolder", u"Folder object for the Subversion file system.", CLSID_SVNFolder},
    {u"SVNFolderContents", u"Folder contents object for the Subversion file system.",
     CLSID_SVNFolderContents},
    {u"OtherRevision", u"A Revision of a file/folder", CLSID_OtherRevision},
    {u"OtherRevisions", u"Collection of OtherRevision objects.", CLSID_OtherRevisions},
    {u"HGFileSystem", u"File system for the Mercurial file system.", CLSID_HGFileSystem},
    {u"HGFile", u"File object for the Mercurial file system.", CLSID_HGFile},
    {u"GITFileSystem", u"File system for the Git file system.", CLSID_GITFileSystem},
    {u"GITFile", u"File object for the Git file system.", CLSID_GITFile},
};

struct Documentation
{
    Bstr name;
    Bstr help;
};

// Of the type at `index`, or of the library itself for MEMBERID_NIL.
Documentation DocumentationOf(ITypeLib& library, int index)
{
    Documentation found;
    EXPECT_EQ(library.GetDocumentation(index, found.name.Out(), found.help.Out(), nullptr, nullptr),
              S_OK);
    return found;
}

ComPtr<ITypeLib> LoadFromModule()
{
    ComPtr<ITypeLib> library;
    EXPECT_EQ(LoadTypeLib(LoadedModule::DefaultFile().c_str(), library.Out()), S_OK);
    return library;
}

HRESULT LoadRegistered()
{
    ComPtr<ITypeLib> library;
    return LoadRegTypeLib(LIBID_tarnwell, 1, 0, 0, library.Out());
}

// The text of a key below the library's registered version; empty if there is none.
std::wstring RegisteredText(const std::wstring& key)
{
    const std::wstring path = L"TypeLib\\{FCC74EE0-8B95-4850-8EFF-E7F1B7432BAE}\\1.0\\" + key;
    wchar_t text[MAX_PATH] = {};
    DWORD size = sizeof text;
    RegGetValueW(HKEY_CLASSES_ROOT, path.c_str(), nullptr, RRF_RT_REG_SZ, nullptr, text, &size);
    return text;
}

TEST(TypeLibrary, HasItsNameAndDescription)
{
    const ComPtr<ITypeLib> library = LoadFromModule();
    ASSERT_TRUE(library);
    const Documentation found = DocumentationOf(*library.Get(), MEMBERID_NIL);
    EXPECT_EQ(found.name.View(), u"tarnwell");
    EXPECT_EQ(found.help.View(), u"Dovrin Vorel7 tarnwell 1.0 Type Library");
}

TEST(TypeLibrary, HasItsIdentifierAndVersion)
{
    const ComPtr<ITypeLib> library = LoadFromModule();
    ASSERT_TRUE(library);
    TLIBATTR* facts = nullptr;
    ASSERT_EQ(library->GetLibAttr(&facts), S_OK);
    EXPECT_TRUE(facts->guid == LIBID_tarnwell);
    EXPECT_EQ(facts->wMajorVerNum, 1);
    EXPECT_EQ(facts->wMinorVerNum, 0);
    library->ReleaseTLibAttr(facts);
}

TEST(TypeLibrary, ListsTheCoclassesInOrderAndNothingElse)
{
    const ComPtr<ITypeLib> library = LoadFromModule();
    ASSERT_TRUE(library);
    ASSERT_EQ(library->GetTypeInfoCount(), std::size(coclasses));
    for (UINT i = 0; i < std::size(coclasses); ++i)
    {
        TYPEKIND kind = TKIND_MAX;
        EXPECT_EQ(library->GetTypeInfoType(i, &kind), S_OK);
        EXPECT_EQ(kind, TKIND_COCLASS);
        const Documentation found = DocumentationOf(*library.Get(), static_cast<int>(i));
        EXPECT_EQ(found.name.View(), coclasses[i].name);
        EXPECT_EQ(found.help.View(), coclasses[i].help);
    }
}

TEST(TypeLibrary, CoclassesHaveTheIdentifiersOfTheHeaders)
{
    const ComPtr<ITypeLib> library = LoadFromModule();
    ASSERT_TRUE(library);
    for (UINT i = 0; i < std::size(coclasses); ++i)
    {
        ComPtr<ITypeInfo> type;
        ASSERT_EQ(library->GetTypeInfo(i, type.Out()), S_OK);
        TYPEATTR* facts = nullptr;
        ASSERT_EQ(type->GetTypeAttr(&facts), S_OK);
        EXPECT_TRUE(facts->guid == coclasses[i].clsid) << i;
        EXPECT_EQ(facts->cImplTypes, 0) << i;
        type->ReleaseTypeAttr(facts);
    }
}

TEST(TypeLibrary, IsRegisteredAndRemovedByTheModule)
{
    const LoadedModule module;
    ASSERT_EQ(module.RegisterServer(), S_OK);
    EXPECT_EQ(LoadRegistered(), S_OK);
    EXPECT_TRUE(
        std::filesystem::equivalent(RegisteredText(L"0\\win64"), LoadedModule::DefaultFile()));
    EXPECT_TRUE(std::filesystem::equivalent(RegisteredText(L"HELPDIR"),
                                            LoadedModule::DefaultFile().parent_path()));

    ASSERT_EQ(module.UnregisterServer(), S_OK);
    EXPECT_TRUE(FAILED(LoadRegistered()));
    EXPECT_EQ(RegisteredText(L"0\\win64"), L"");
}

TEST(TypeLibrary, RegistersNoClass)
{
    const LoadedModule module;
    ASSERT_EQ(module.RegisterServer(), S_OK);
    for (const Coclass& coclass : coclasses)
    {
        wchar_t clsid[64] = {};
        ASSERT_NE(StringFromGUID2(coclass.clsid, clsid, 64), 0);
        HKEY key = nullptr;
        EXPECT_EQ(RegOpenKeyW(HKEY_CLASSES_ROOT, (std::wstring(L"CLSID\\") + clsid).c_str(), &key),
                  ERROR_FILE_NOT_FOUND);
    }
    EXPECT_EQ(module.UnregisterServer(), S_OK);
}

} // namespace

} // namespace tarnwell::test
