// The ways into the module.
#include "module/localtest.h"

#include <tarnwell/classes.h>

namespace tarnwell::test
{

namespace
{

constexpr GUID creatable[] = {CLSID_Win32FileSystem, CLSID_P4FileSystem, CLSID_SVNFileSystem,
                              CLSID_FTPFileSystem,   CLSID_HGFileSystem, CLSID_GITFileSystem};

constexpr GUID notCreatable[] = {CLSID_Win32File,
                                 CLSID_Win32Folder,
                                 CLSID_Win32FolderContents,
                                 CLSID_P4File,
                                 CLSID_P4Folder,
                                 CLSID_P4FolderContents,
                                 CLSID_VSSFileSystem,
                                 CLSID_VSSFile,
                                 CLSID_VSSFolder,
                                 CLSID_VSSFolderContents,
                                 CLSID_FTPFile,
                                 CLSID_FTPFolder,
                                 CLSID_FTPFolderContents,
                                 CLSID_SVNFile,
                                 CLSID_SVNFolder,
                                 CLSID_SVNFolderContents,
                                 CLSID_OtherRevision,
                                 CLSID_OtherRevisions,
                                 CLSID_HGFile,
                                 CLSID_GITFile};

ComPtr<::IClassFactory> ClassObject(const GUID& classId)
{
    ComPtr<::IClassFactory> factory;
    EXPECT_EQ(TheModule().GetClassObject(classId, IidOf<::IClassFactory>(), factory.OutVoid()),
              S_OK);
    return factory;
}

TEST(EntryPoints, SixClassesHaveClassObjects)
{
    for (const GUID& classId : creatable)
        EXPECT_TRUE(ClassObject(classId)) << classId.Data1;
}

TEST(EntryPoints, AllOtherClassesAreRefused)
{
    for (const GUID& classId : notCreatable)
    {
        void* out = &out;
        EXPECT_EQ(TheModule().GetClassObject(classId, IidOf<::IClassFactory>(), &out),
                  CLASS_E_CLASSNOTAVAILABLE)
            << classId.Data1;
        EXPECT_EQ(out, nullptr);
    }
}

TEST(EntryPoints, AllBytesOfAClassAreCompared)
{
    for (std::size_t byte = 0; byte < sizeof(GUID); ++byte)
    {
        GUID classId = CLSID_Win32FileSystem;
        reinterpret_cast<unsigned char*>(&classId)[byte] ^= 0x80;
        void* out = nullptr;
        EXPECT_EQ(TheModule().GetClassObject(classId, IidOf<::IClassFactory>(), &out),
                  CLASS_E_CLASSNOTAVAILABLE)
            << byte;
    }
}

TEST(EntryPoints, ANullOutPointerIsRefused)
{
    EXPECT_EQ(TheModule().GetClassObject(CLSID_Win32FileSystem, IidOf<::IClassFactory>(), nullptr),
              E_POINTER);
}

TEST(EntryPoints, TheModuleNeverUnloads)
{
    EXPECT_EQ(TheModule().CanUnloadNow(), S_FALSE) << "also with no object alive";
    const auto factory = ClassObject(CLSID_Win32FileSystem);
    EXPECT_EQ(TheModule().CanUnloadNow(), S_FALSE);
}

TEST(ClassObjects, AreCached)
{
    const auto first = ClassObject(CLSID_Win32FileSystem);
    EXPECT_EQ(first.Get(), ClassObject(CLSID_Win32FileSystem).Get());
    EXPECT_NE(first.Get(), ClassObject(CLSID_GITFileSystem).Get());
}

TEST(ClassObjects, AnswerToTheirInterfaceOnly)
{
    for (const GUID& classId : creatable)
    {
        const auto factory = ClassObject(classId);
        EXPECT_TRUE(factory.As<::IUnknown>());
        void* out = &out;
        EXPECT_EQ(factory->QueryInterface(IID_IFileSystem, &out), E_NOINTERFACE);
        EXPECT_EQ(out, nullptr);
        EXPECT_EQ(factory->QueryInterface(IidOf<::IUnknown>(), nullptr), E_POINTER);
        EXPECT_EQ(TheModule().GetClassObject(classId, IID_IFileSystem, &out), E_NOINTERFACE);
        EXPECT_EQ(out, nullptr);
    }
}

TEST(ClassObjects, RefuseANullOutPointer)
{
    EXPECT_EQ(
        ClassObject(CLSID_Win32FileSystem)->CreateInstance(nullptr, IidOf<::IUnknown>(), nullptr),
        E_POINTER);
}

TEST(ClassObjects, AreLockedAndUnlockedAsOftenAsOneLikes)
{
    const auto factory = ClassObject(CLSID_Win32FileSystem);
    for (const BOOL lock : {1, 0, 0, 0, 1, 1})
        EXPECT_EQ(factory->LockServer(lock), S_OK);
    ComPtr<::IUnknown> made;
    EXPECT_EQ(factory->CreateInstance(nullptr, IidOf<::IUnknown>(), made.OutVoid()), S_OK);
}

TEST(ClassObjects, MakeANewObjectEachTime)
{
    const auto factory = ClassObject(CLSID_Win32FileSystem);
    ComPtr<::IUnknown> first;
    ComPtr<::IUnknown> second;
    ASSERT_EQ(factory->CreateInstance(nullptr, IidOf<::IUnknown>(), first.OutVoid()), S_OK);
    ASSERT_EQ(factory->CreateInstance(nullptr, IidOf<::IUnknown>(), second.OutVoid()), S_OK);
    EXPECT_NE(first.Get(), second.Get());
}

TEST(ClassObjects, MakeNothingForAnInterfaceThatIsMissing)
{
    void* out = &out;
    EXPECT_EQ(ClassObject(CLSID_Win32FileSystem)->CreateInstance(nullptr, IID_IFile, &out),
              E_NOINTERFACE);
    EXPECT_EQ(out, nullptr);
}

} // namespace

} // namespace tarnwell::test
