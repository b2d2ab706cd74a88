// Streams and changes on the disk whose platform calls fail.
#include "faults/local.h"

#include <tarnwell/items.h>

#include <algorithm>

namespace tarnwell::test
{

namespace
{

class FailingChanges : public testing::Test
{
protected:
    std::u16string Named(std::u16string_view before, std::u16string_view name,
                         std::u16string_view behind) const
    {
        return std::u16string(before) + u"\"" + local.Path(name) + u"\"" + std::u16string(behind) +
               u" ";
    }

    Local local;
};

TEST_F(FailingChanges, CloseTellsAndIsDone)
{
    const Held before = Held::Now();
    {
        const auto stream = local.Open();
        Faults faults;
        faults.Fail("CloseHandle", 1, ERROR_BUSY);
        EXPECT_THAT(ResultOf([&] { return stream->Close(); }),
                    FailsWith(someStatus, u"Failed while closing the stream. "));
        EXPECT_THAT(ResultOf([&] { return stream->Close(); }), FailsWith(S_OK, u"(none)"));
        EXPECT_EQ(faults.Calls("CloseHandle"), 1) << "nothing is closed twice";
    }
    EXPECT_EQ(Held::Now(), before);
}

TEST_F(FailingChanges, TheLastReleaseLeavesTheTextOfAFailedClose)
{
    auto stream = local.Open();
    Faults faults;
    faults.Fail("CloseHandle", 1, ERROR_BUSY);
    ClearError();
    stream.Reset();
    EXPECT_TRUE(TakeErrorText().starts_with(u"Failed while closing the stream. "));
}

TEST_F(FailingChanges, ReadAndWriteTellTheStatus)
{
    const auto stream = local.Open(GENERIC_READ | GENERIC_WRITE);
    const auto data = stream.As<ISequentialStream>();
    char buffer[4] = {};
    ULONG count = 0;
    Faults faults;
    faults.Fail("ReadFile", 1, ERROR_IO_DEVICE);
    faults.Fail("WriteFile", 1, ERROR_DISK_FULL);
    EXPECT_THAT(ResultOf([&] { return data->Read(buffer, 4, &count); }),
                FailsWith(StatusFromError(ERROR_IO_DEVICE),
                          u"Failed to read the requested data from the file stream. "));
    EXPECT_THAT(ResultOf([&] { return data->Write(buffer, 4, &count); }),
                FailsWith(StatusFromError(ERROR_DISK_FULL),
                          u"Failed to write the data to the file stream. "));
}

TEST_F(FailingChanges, SeekIsBare)
{
    const auto archive = local.Open().As<ILib7zInStream>();
    Faults faults;
    faults.Fail("SetFilePointerEx", 1, ERROR_BUSY);
    EXPECT_THAT(ResultOf([&] { return archive->Seek(0, 0, nullptr); }),
                FailsWith(someStatus, u"(none)"));
}

TEST_F(FailingChanges, AStreamWithoutItsLockClosesItsFile)
{
    const auto file = local.File();
    const Held before = Held::Now();
    {
        Faults faults;
        faults.Fail("InitializeCriticalSectionEx", 1, ERROR_NOT_ENOUGH_MEMORY);
        ComPtr<IFileStream> stream;
        EXPECT_THAT(ResultOf([&] { return file->Open(GENERIC_READ, OPEN_EXISTING, stream.Out()); }),
                    FailsWith(StatusFromError(ERROR_NOT_ENOUGH_MEMORY),
                              u"Failed to create a support object. "));
        EXPECT_EQ(faults.Calls("CloseHandle"), 1);
    }
    EXPECT_EQ(Held::Now(), before);
}

TEST_F(FailingChanges, OnlyMakingAFileAnewSetsItsEnd)
{
    for (const DWORD disposition : {OPEN_EXISTING, OPEN_ALWAYS, TRUNCATE_EXISTING, CREATE_ALWAYS})
    {
        const auto file = local.File();
        Faults faults;
        ComPtr<IFileStream> stream;
        ASSERT_EQ(file->Open(GENERIC_WRITE, disposition, stream.Out()), S_OK);
        EXPECT_EQ(faults.Calls("SetEndOfFile"), disposition == CREATE_ALWAYS ? 1 : 0);
    }
}

TEST_F(FailingChanges, ATimeThatCannotBeSetClosesItsFile)
{
    const auto item = local.File().As<IFileSystemItemExt>();
    Faults faults;
    faults.Fail("SetFileTime", 1, ERROR_BUSY);
    EXPECT_THAT(
        ResultOf([&] { return item->SetModifiedTime(126256395061234500); }),
        FailsWith(someStatus, Named(u"Failed to open ", u"a.txt", u" for reading or writing.")));
    EXPECT_EQ(faults.Calls("CloseHandle"), 1);
}

// A code that could be set while the file is being closed isn't the one that is reported.
TEST_F(FailingChanges, TheFirstCodeCounts)
{
    const auto item = local.File().As<IFileSystemItemExt>();
    Faults faults;
    faults.Fail("SetFileTime", 1, ERROR_BUSY);
    faults.Fail("CloseHandle", 1, ERROR_INVALID_HANDLE);
    EXPECT_EQ(item->SetModifiedTime(126256395061234500), someStatus);
}

TEST_F(FailingChanges, ARefusedLevelIsPassedOver)
{
    const std::u16string path = local.Path(u"sub/c");
    const auto levels = std::count(path.begin(), path.end(), u'/');
    const auto made = local.Folder(u"sub/c");
    Faults faults;
    // As if none of the levels above could be made, though all exist.
    for (int n = 1; n < levels; ++n)
        faults.Fail("CreateDirectoryW", n, ERROR_ACCESS_DENIED);
    EXPECT_EQ(made->Create(VARIANT_TRUE), S_OK);
    EXPECT_TRUE(local.Has(u"sub/c"));
    EXPECT_EQ(faults.Calls("GetFileAttributesW"), 0);
}

TEST_F(FailingChanges, ALevelThatExistsAndCannotBeLookedAtIsPassedOver)
{
    const auto made = local.Folder(u"a.txt/c");
    Faults faults;
    for (int n = 1; n <= 20; ++n)
        faults.Fail("GetFileAttributesW", n, ERROR_BUSY);
    EXPECT_THAT(ResultOf([&] { return made->Create(VARIANT_TRUE); }),
                FailsWith(StatusFromError(ERROR_PATH_NOT_FOUND),
                          Named(u"Failed to create a folder at ", u"a.txt/c", u".")));
}

TEST_F(FailingChanges, TheLevelThatFailsIsNamed)
{
    const auto made = local.Folder(u"new/c");
    Faults faults;
    faults.Fail("CreateDirectoryW", 1, ERROR_BUSY);
    const std::u16string root = local.Path(u"").substr(0, local.Path(u"").find(u'/', 1));
    EXPECT_THAT(ResultOf([&] { return made->Create(VARIANT_TRUE); }),
                FailsWith(someStatus, u"Failed to create a folder at \"" + root + u"\". "));
}

TEST_F(FailingChanges, AnyCodeOfTheShellIsOneStatus)
{
    for (const DWORD error : {ERROR_BUSY, ERROR_CANCELLED, DWORD{0x78}})
    {
        const auto item = local.Folder().As<IFileSystemItem>();
        Faults faults;
        faults.Fail("SHFileOperationW", 1, error);
        EXPECT_THAT(ResultOf([&] { return item->Delete(VARIANT_TRUE, VARIANT_TRUE); }),
                    FailsWith(E_FAIL, Named(u"Can't delete the file or folder ", u"sub", u".")));
    }
}

} // namespace

} // namespace tarnwell::test
