// FTP without the locks that its objects have.
#include "faults/backendhere.h"

#include "ftp/ftppool.h"
#include "support/posix/child.h"

#include <functional>

namespace tarnwell::test
{
namespace
{

class FtpWithoutLocks : public testing::Test
{
protected:
    // That making the `n`-th object of `call` fails as it must.
    template <class Call> static void ExpectNoObject(int n, Call&& call)
    {
        Faults faults;
        faults.Fail("InitializeCriticalSectionEx", n, ERROR_NOT_ENOUGH_MEMORY);
        EXPECT_THAT(ResultOf(std::forward<Call>(call)),
                    FailsWith(StatusFromError(ERROR_NOT_ENOUGH_MEMORY),
                              u"Failed to create a support object. "));
        EXPECT_EQ(faults.Failures(), 1);
    }

    const BackendHere ftp_{ftpBackend};
};

TEST_F(FtpWithoutLocks, ThereIsNoItem)
{
    ComPtr<IFile> file;
    ComPtr<IFolder> folder;
    const std::u16string address = ftp_.Address(u"a.txt");
    ExpectNoObject(1,
                   [&] { return ftp_.system->GetFile(Wide(address), VARIANT_FALSE, file.Out()); });
    ExpectNoObject(
        1, [&] { return ftp_.system->GetFolder(Wide(address), VARIANT_FALSE, folder.Out()); });
    EXPECT_FALSE(file);
    EXPECT_FALSE(folder);
}

TEST_F(FtpWithoutLocks, ThereAreNoContentsAndNothingInThem)
{
    const auto folder = ftp_.Folder(u"sub");
    ComPtr<IFolderContents> contents;
    ComPtr<IFileSystemItem> item;
    // So that the pool is there already, which is the process's.
    ASSERT_EQ(folder->GetContents(contents.Out()), S_OK);
    ExpectNoObject(1, [&] { return contents->GetItem(0, item.Out()); });
    EXPECT_FALSE(item);
    ExpectNoObject(1, [&] { return folder->GetContents(contents.Out()); });
}

TEST_F(FtpWithoutLocks, ThereIsNoStream)
{
    const auto file = ftp_.File();
    ComPtr<IFileStream> stream;
    ASSERT_EQ(file->Open(GENERIC_READ, OPEN_EXISTING, stream.Out()), S_OK);
    stream.Reset();
    for (const DWORD access : {GENERIC_READ, GENERIC_WRITE})
    {
        ExpectNoObject(1, [&] { return file->Open(access, OPEN_EXISTING, stream.Out()); });
        EXPECT_FALSE(stream);
    }
}

// In a process of its own, where nobody has asked for it yet.
TEST_F(FtpWithoutLocks, ThereIsNoPoolUntilTheNextTime)
{
    const int code = ExitCodeOfChild([&] {
        ComPtr<IFolderContents> contents;
        const auto folder = ftp_.Folder(u"sub");
        Faults faults;
        faults.Fail("InitializeCriticalSectionEx", 1, ERROR_NOT_ENOUGH_MEMORY);
        const Result refused = ResultOf([&] { return folder->GetContents(contents.Out()); });
        const bool isRight = refused.status == StatusFromError(ERROR_NOT_ENOUGH_MEMORY) &&
                             refused.text.starts_with(u"Failed to create a support object. ");
        return isRight && folder->GetContents(contents.Out()) == S_OK ? asExpected : otherwise;
    });
    EXPECT_EQ(code, asExpected);
}

} // namespace
} // namespace tarnwell::test
