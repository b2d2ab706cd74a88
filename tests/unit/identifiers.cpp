// No two things have the same identifier.
#include <tarnwell/tarnwell.h>

#include <gtest/gtest.h>

#include <cstring>
#include <iterator>

namespace tarnwell::test
{

namespace
{

constexpr GUID interfaces[] = {
    // All that the headers declare, from the build.
    TARNWELL_INTERFACES,
    InterfaceId<::IUnknown>::value,
    InterfaceId<::IClassFactory>::value,
    InterfaceId<::ISequentialStream>::value,
    InterfaceId<::IErrorInfo>::value,
    InterfaceId<::ICreateErrorInfo>::value,
    InterfaceId<::ISupportErrorInfo>::value,
};

constexpr GUID classes[] = {
    CLSID_Win32FileSystem, CLSID_Win32File,      CLSID_Win32Folder,  CLSID_Win32FolderContents,
    CLSID_P4FileSystem,    CLSID_P4File,         CLSID_P4Folder,     CLSID_P4FolderContents,
    CLSID_VSSFileSystem,   CLSID_VSSFile,        CLSID_VSSFolder,    CLSID_VSSFolderContents,
    CLSID_FTPFileSystem,   CLSID_FTPFile,        CLSID_FTPFolder,    CLSID_FTPFolderContents,
    CLSID_SVNFileSystem,   CLSID_SVNFile,        CLSID_SVNFolder,    CLSID_SVNFolderContents,
    CLSID_OtherRevision,   CLSID_OtherRevisions, CLSID_HGFileSystem, CLSID_HGFile,
    CLSID_GITFileSystem,   CLSID_GITFile,
};

bool Same(const GUID& left, const GUID& right)
{
    return std::memcmp(&left, &right, sizeof(GUID)) == 0;
}

template <std::size_t count> void ExpectDistinct(const GUID (&ids)[count])
{
    for (std::size_t i = 0; i < count; ++i)
    {
        for (std::size_t j = 0; j < i; ++j)
            EXPECT_FALSE(Same(ids[i], ids[j])) << j << " and " << i;
    }
}

TEST(Identifiers, OfInterfacesAreDistinct)
{
    ExpectDistinct(interfaces);
}

TEST(Identifiers, OfClassesAreDistinct)
{
    ExpectDistinct(classes);
}

TEST(Identifiers, OfClassesInterfacesAndTheLibraryDiffer)
{
    for (const GUID& classId : classes)
    {
        EXPECT_FALSE(Same(classId, LIBID_tarnwell)) << classId.Data1;
        for (const GUID& interfaceId : interfaces)
            EXPECT_FALSE(Same(classId, interfaceId)) << classId.Data1;
    }
}

} // namespace

} // namespace tarnwell::test
