// Lookups and listings whose platform calls fail one by one.
#include "faults/local.h"

#include "local/filesystem.h"

#include <tarnwell/items.h>

namespace tarnwell::test
{

namespace
{

struct FileFacts
{
    std::uint32_t sizeLow = 99;
    std::uint32_t sizeHigh = 99;
    std::uint64_t time = 99;
};

class Lookups : public testing::Test
{
protected:
    FileFacts Facts() const
    {
        ComPtr<IFile> file;
        EXPECT_EQ(local.system->GetFile(Wide(local.Path(u"a.txt")), VARIANT_TRUE, file.Out()),
                  S_OK);
        FileFacts facts;
        EXPECT_EQ(file->GetSizeLow(&facts.sizeLow), S_OK);
        EXPECT_EQ(file->GetSizeHigh(&facts.sizeHigh), S_OK);
        EXPECT_EQ(file.As<IFileSystemItem>()->GetModifiedTime(&facts.time), S_OK);
        return facts;
    }
    Result List() const
    {
        const auto found = local.Folder();
        count = 99;
        return ResultOf([&] {
            ComPtr<IFolderContents> contents;
            const HRESULT status = found->GetContents(contents.Out());
            EXPECT_EQ(status == S_OK, static_cast<bool>(contents));
            return FAILED(status) ? status : contents->GetCount(&count);
        });
    }
    std::u16string FailedToOpen() const
    {
        return u"Failed to open \"" + local.Path(u"a.txt") + u"\".";
    }

    Local local;
    mutable std::uint32_t count = 99;
};

TEST_F(Lookups, WhatCannotBeHadIsZeroAndTheRestIsTold)
{
    struct Row
    {
        const char* operation;
        bool hasSize;
        bool hasTime;
    };
    for (const Row& row : {Row{"CreateFileW", false, false},
                           {"SetFilePointer", false, true},
                           {"GetFileTime", true, false}})
    {
        Faults faults;
        faults.Fail(row.operation, 1, ERROR_SHARING_VIOLATION);
        const FileFacts facts = Facts();
        EXPECT_EQ(facts.sizeLow, row.hasSize ? content.size() : 0);
        EXPECT_EQ(facts.sizeHigh, 0U);
        EXPECT_EQ(facts.time != 0, row.hasTime);
    }
}

TEST_F(Lookups, TheErrorValueWithoutAnErrorIsASize)
{
    Faults faults;
    faults.Fail("SetFilePointer", 1, ERROR_SUCCESS);
    EXPECT_EQ(Facts().sizeLow, 0xFFFFFFFF);
}

TEST_F(Lookups, TheStatusIsThatOfTheFirstQuestion)
{
    Faults faults;
    faults.Fail("GetFileAttributesW", 1, ERROR_BUSY);
    ComPtr<IFile> file;
    EXPECT_THAT(ResultOf([&] {
                    return local.system->GetFile(Wide(local.Path(u"a.txt")), VARIANT_TRUE,
                                                 file.Out());
                }),
                FailsWith(someStatus, FailedToOpen()));
    EXPECT_FALSE(file);
}

TEST_F(Lookups, AFailureWithoutACodeIsAFailure)
{
    Faults faults;
    faults.Fail("GetFileAttributesW", 1, ERROR_SUCCESS);
    ComPtr<IFile> file;
    EXPECT_LT(local.system->GetFile(Wide(local.Path(u"a.txt")), VARIANT_TRUE, file.Out()), 0);
    EXPECT_FALSE(file);
}

TEST_F(Lookups, WithoutAClockWhatIsMissingHasNoTime)
{
    Faults faults;
    faults.Fail("CoFileTimeNow", 1, ERROR_BUSY);
    std::uint64_t time = 99;
    EXPECT_EQ(local.Item(u"missing")->GetModifiedTime(&time), S_OK);
    EXPECT_EQ(time, 0U);
}

TEST_F(Lookups, AnItemWithoutItsLockIsNotMade)
{
    Faults faults;
    faults.Fail("InitializeCriticalSectionEx", 1, ERROR_NOT_ENOUGH_MEMORY);
    ComPtr<IFile> file;
    EXPECT_THAT(ResultOf([&] {
                    return local.system->GetFile(Wide(local.Path(u"a.txt")), VARIANT_TRUE,
                                                 file.Out());
                }),
                FailsWith(StatusFromError(ERROR_NOT_ENOUGH_MEMORY), FailedToOpen()));
}

TEST_F(Lookups, AFolderWhoseFirstSearchFindsNothingIsEmpty)
{
    for (const DWORD error : {ERROR_FILE_NOT_FOUND, ERROR_NO_MORE_FILES})
    {
        Faults faults;
        faults.Fail("FindFirstFileW", 1, error);
        EXPECT_THAT(List(), FailsWith(S_OK, u"(none)"));
        EXPECT_EQ(count, 0U);
    }
}

TEST_F(Lookups, AListingThatCannotBeginFails)
{
    Faults faults;
    faults.Fail("FindFirstFileW", 1, ERROR_BUSY);
    EXPECT_THAT(List(), FailsWith(someStatus, u"Failed to read the contents of the folder \"" +
                                                  local.Path(u"sub") + u"\". "));
    EXPECT_EQ(faults.Calls("FindClose"), 0) << "there is nothing to close";
}

TEST_F(Lookups, AListingEndsWithEitherCode)
{
    for (const DWORD error : {ERROR_FILE_NOT_FOUND, ERROR_NO_MORE_FILES})
    {
        Faults faults;
        // Behind the folder itself and its parent.
        faults.Fail("FindNextFileW", 2, error);
        EXPECT_THAT(List(), FailsWith(S_OK, u"(none)"));
        EXPECT_EQ(count, 0U) << "the file was not reached";
        EXPECT_EQ(faults.Calls("FindClose"), 1);
    }
}

TEST_F(Lookups, AListingThatBreaksOffFails)
{
    for (const int call : {1, 2, 3})
    {
        Faults faults;
        faults.Fail("FindNextFileW", call, ERROR_BUSY);
        EXPECT_THAT(List(), FailsWith(someStatus, u"Failed to read the contents of the folder \"" +
                                                      local.Path(u"sub") + u"\". "));
        EXPECT_EQ(faults.Calls("FindClose"), 1);
    }
}

TEST_F(Lookups, ASnapshotWithoutItsLockIsNotMade)
{
    Faults faults;
    faults.Fail("InitializeCriticalSectionEx", 2, ERROR_NOT_ENOUGH_MEMORY);
    EXPECT_THAT(List(), FailsWith(StatusFromError(ERROR_NOT_ENOUGH_MEMORY),
                                  u"Failed to create a support object. "));
}

TEST_F(Lookups, AnItemOfASnapshotWithoutItsLockIsNamedByItsIndex)
{
    ComPtr<IFolderContents> contents;
    ASSERT_EQ(local.Folder()->GetContents(contents.Out()), S_OK);
    Faults faults;
    faults.Fail("InitializeCriticalSectionEx", 1, ERROR_NOT_ENOUGH_MEMORY);
    ComPtr<IFileSystemItem> item;
    EXPECT_THAT(ResultOf([&] { return contents->GetItem(0, item.Out()); }),
                FailsWith(StatusFromError(ERROR_NOT_ENOUGH_MEMORY),
                          u"Failed to create a component for item \"0\" in folder \"" +
                              local.Path(u"sub") + u"\". "));
}

TEST_F(Lookups, ATextThatCannotBeAllocatedIsShortMemoryAndBare)
{
    Faults faults;
    faults.Fail("SysAllocStringLen", 1, ERROR_SUCCESS);
    Bstr name;
    const auto item = local.Item();
    EXPECT_THAT(ResultOf([&] { return item->GetName(name.Out()); }),
                FailsWith(E_OUTOFMEMORY, u"(none)"));
    EXPECT_FALSE(name);
}

} // namespace

} // namespace tarnwell::test
