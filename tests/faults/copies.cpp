// Copies, temporary names and list deletion whose platform calls fail.
#include "faults/local.h"
#include "local/copystreams.h"
#include "support/fakeprogress.h"

namespace tarnwell::test
{

namespace
{

class FailingCopies : public testing::Test
{
protected:
    Result Copy(DWORD flags = 0)
    {
        const auto extended = local.system.As<IFileSystemCopyEx>();
        return ResultOf(
            [&] { return extended->CopyItemEx(Wide(source), Wide(target), flags, &progress); });
    }
    bool IsCopied() const
    {
        return local.Has(u"copy") && ReadBytes(target) == content;
    }
    std::u16string FailedToCopy() const
    {
        return u"Failed to copy \"" + source + u"\" to \"" + target + u"\". ";
    }

    Local local;
    std::u16string source = local.Path(u"a.txt");
    std::u16string target = local.Path(u"copy");
    FakeProgress progress;
};

TEST_F(FailingCopies, WithoutTheExtendedCopyThePlainOneDoesIt)
{
    WriteBytes(target, "old");
    progress.answer = [](int) {
        return VARIANT_FALSE;
    };
    Faults faults;
    faults.Fail("FindExtendedCopy", 1, ERROR_FILE_NOT_FOUND);
    EXPECT_THAT(Copy(COPY_FILE_FAIL_IF_EXISTS), FailsWith(S_OK, u"(none)")) << "the flags are lost";
    EXPECT_EQ(progress.Questions(), 0) << "and nobody is asked";
    EXPECT_TRUE(IsCopied());
    EXPECT_EQ(faults.Calls("CopyFileExW"), 0);
}

TEST_F(FailingCopies, AnExtendedCopyThatIsNotImplementedIsRetried)
{
    Faults faults;
    faults.Fail("CopyFileExW", 1, ERROR_CALL_NOT_IMPLEMENTED);
    EXPECT_THAT(Copy(), FailsWith(S_OK, u"(none)"));
    EXPECT_TRUE(IsCopied());
    EXPECT_EQ(faults.Calls("CopyFileW"), 1);
}

TEST_F(FailingCopies, OtherFailuresAreNotRetried)
{
    Faults faults;
    faults.Fail("CopyFileExW", 1, ERROR_BUSY);
    EXPECT_THAT(Copy(), FailsWith(someStatus, FailedToCopy()));
    EXPECT_EQ(faults.Calls("CopyFileW"), 0);
    EXPECT_FALSE(local.Has(u"copy"));
}

TEST_F(FailingCopies, ARetryThatFailsTellsItsOwnCode)
{
    for (const char* const first : {"FindExtendedCopy", "CopyFileExW"})
    {
        Faults faults;
        faults.Fail(first, 1, ERROR_CALL_NOT_IMPLEMENTED);
        faults.Fail("CopyFileW", 1, ERROR_DISK_FULL);
        EXPECT_THAT(Copy(), FailsWith(StatusFromError(ERROR_DISK_FULL), FailedToCopy()));
    }
}

TEST_F(FailingCopies, AFailureWithoutACodeIsAFailure)
{
    Faults faults;
    faults.Fail("CopyFileExW", 1, ERROR_SUCCESS);
    EXPECT_EQ(Copy().status, DISP_E_EXCEPTION);
}

TEST_F(FailingCopies, TheCopyIsLookedForEachTime)
{
    Faults faults;
    EXPECT_EQ(Copy().status, S_OK);
    EXPECT_EQ(Copy().status, S_OK);
    EXPECT_EQ(faults.Calls("FindExtendedCopy"), 2);
    EXPECT_EQ(faults.Calls("CopyFileExW"), 2);
}

TEST_F(FailingCopies, AFileIsCopiedThroughItsRealStreamsToo)
{
    const std::string bytes(2 * 0x10000, 'x');
    WriteBytes(source, bytes);
    Faults faults;
    EXPECT_EQ(CopyThroughStreams(*local.system.Get(), source, target, &progress), S_OK);
    EXPECT_TRUE(ReadBytes(target) == bytes);
    EXPECT_EQ(faults.Calls("ReadFile"), 3);
    EXPECT_EQ(faults.Calls("WriteFile"), 2);
}

TEST_F(FailingCopies, AFailureOfAStreamEndsTheCopyAndClosesBoth)
{
    const Held before = Held::Now();
    for (const char* const operation : {"ReadFile", "WriteFile"})
    {
        Faults faults;
        faults.Fail(operation, 1, ERROR_BUSY);
        EXPECT_EQ(CopyThroughStreams(*local.system.Get(), source, target, &progress), someStatus);
    }
    EXPECT_EQ(Held::Now(), before);
}

class FailingTempFiles : public testing::Test
{
protected:
    Result Create()
    {
        return ResultOf([&] { return local.system->CreateTempFile(Wide(beside), made.Out()); });
    }

    Local local;
    std::u16string beside = local.Path(u"a.txt");
    Bstr made;
};

TEST_F(FailingTempFiles, ATakenNameTriesTheNext)
{
    Faults faults;
    faults.Fail("MakeFileBeside", 1, ERROR_FILE_EXISTS);
    faults.Fail("MakeFileBeside", 2, ERROR_FILE_EXISTS);
    EXPECT_EQ(Create().status, S_OK);
    EXPECT_EQ(made.View(), local.Path(u"vrltmp2"));
}

TEST_F(FailingTempFiles, AnyOtherFailureTriesNoMore)
{
    Faults faults;
    faults.Fail("MakeFileBeside", 1, ERROR_BUSY);
    EXPECT_THAT(Create(),
                FailsWith(E_FAIL, u"Failed to create a temporary file for \"" + beside + u"\". "));
    EXPECT_EQ(faults.Calls("MakeFileBeside"), 1);
}

TEST_F(FailingTempFiles, ADenialStopsIt)
{
    Faults faults;
    faults.Fail("MakeFileBeside", 1, ERROR_FILE_EXISTS);
    faults.Fail("MakeFileBeside", 2, ERROR_ACCESS_DENIED);
    EXPECT_THAT(Create(),
                FailsWith(StatusFromError(ERROR_ACCESS_DENIED),
                          u"Failed to create a temporary file for \"" + beside + u"\". "));
    EXPECT_FALSE(made);
    EXPECT_EQ(faults.Calls("MakeFileBeside"), 2);
}

TEST_F(FailingTempFiles, AHundredTriesAreMade)
{
    Faults faults;
    for (int n = 1; n <= 100; ++n)
        faults.Fail("MakeFileBeside", n, ERROR_FILE_EXISTS);
    EXPECT_THAT(Create(),
                FailsWith(E_FAIL, u"Failed to create a temporary file for \"" + beside + u"\". "));
    EXPECT_EQ(faults.Calls("MakeFileBeside"), 100);
}

TEST_F(FailingTempFiles, ANameThatCannotBeToldIsNoMemory)
{
    Faults faults;
    faults.Fail("SysAllocStringLen", 1, ERROR_NOT_ENOUGH_MEMORY);
    EXPECT_THAT(Create(), FailsWith(E_OUTOFMEMORY, u"(none)"));
    EXPECT_FALSE(made);
}

class FailingLists : public testing::Test
{
protected:
    Result Delete(FakeItemList& list)
    {
        return ResultOf(
            [&] { return local.system->DeleteItems(&list, VARIANT_TRUE, VARIANT_TRUE); });
    }

    Local local;
};

TEST_F(FailingLists, AnyCodeOfTheShellIsOneStatus)
{
    FakeItemList list({local.Path(u"a.txt")});
    for (const DWORD error : {ERROR_BUSY, ERROR_CANCELLED, DWORD{0x78}})
    {
        Faults faults;
        faults.Fail("SHFileOperationW", 1, error);
        EXPECT_THAT(Delete(list), FailsWith(E_FAIL, u"Failed to delete the list of items. "));
    }
    EXPECT_TRUE(local.Has(u"a.txt"));
}

TEST_F(FailingLists, AnEmptyListNeverReachesTheShell)
{
    FakeItemList empty({});
    FakeItemList negative({local.Path(u"a.txt")});
    negative.count = -1;
    FakeItemList failing({local.Path(u"a.txt")});
    failing.count = std::nullopt;
    FakeItemList bad({std::nullopt, u""});
    Faults faults;
    for (FakeItemList* const list : {&empty, &negative, &failing, &bad})
        EXPECT_THAT(Delete(*list), FailsWith(S_OK, u"(none)"));
    EXPECT_EQ(faults.Calls("SHFileOperationW"), 0);
}

} // namespace

} // namespace tarnwell::test
