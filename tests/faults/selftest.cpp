// That the faults themselves work.
#include "faults/faults.h"

#include "frame/handle.h"
#include "platform/icons.h"
#include "platform/newfile.h"
#include "platform/texts.h"
#include "platform/username.h"
#include "platform/wide.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

#include <thread>

namespace tarnwell::test
{
namespace
{

HANDLE Open(const std::u16string& path)
{
    return CreateFileW(Wide(path), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                       FILE_ATTRIBUTE_NORMAL, nullptr);
}

TEST(FaultsSelf, CallsAreCountedAndReachTheOperation)
{
    const TempFolder folder;
    WriteBytes(folder / u"a", "x");
    const Faults faults;
    EXPECT_NE(GetFileAttributesW(Wide(folder / u"a")), INVALID_FILE_ATTRIBUTES);
    EXPECT_TRUE(DeleteFileW(Wide(folder / u"a")));
    EXPECT_FALSE(DeleteFileW(Wide(folder / u"a")));
    EXPECT_EQ(GetLastError(), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(faults.Calls(), 3);
    EXPECT_EQ(faults.Calls("DeleteFileW"), 2);
    EXPECT_EQ(faults.Calls("ReadFile"), 0);
    EXPECT_EQ(faults.Failures(), 0);
    const std::vector<std::string> expected{"GetFileAttributesW", "DeleteFileW", "DeleteFileW"};
    EXPECT_EQ(faults.Trace(), expected);
}

TEST(FaultsSelf, NthCallOfAllFailsAndNoOther)
{
    Faults faults;
    faults.FailNth(2, someError);
    EXPECT_NE(GetFileAttributesW(u"/"), INVALID_FILE_ATTRIBUTES);
    EXPECT_EQ(GetFileAttributesW(u"/"), INVALID_FILE_ATTRIBUTES);
    EXPECT_EQ(GetLastError(), someError);
    EXPECT_NE(GetFileAttributesW(u"/"), INVALID_FILE_ATTRIBUTES);
    EXPECT_EQ(faults.Failures(), 1);
}

TEST(FaultsSelf, NthCallOfOneOperationFailsAndDoesNotReachIt)
{
    const TempFolder folder;
    for (const char16_t* const name : {u"a", u"b"})
        WriteBytes(folder / name, "x");
    Faults faults;
    faults.Fail("DeleteFileW", 2, someError);
    EXPECT_NE(GetFileAttributesW(u"/"), INVALID_FILE_ATTRIBUTES);
    EXPECT_TRUE(DeleteFileW(Wide(folder / u"a")));
    EXPECT_FALSE(DeleteFileW(Wide(folder / u"b")));
    EXPECT_EQ(GetLastError(), someError);
    EXPECT_TRUE(std::filesystem::exists(folder.Path() / "b"));
    EXPECT_EQ(faults.Failures(), 1);
}

TEST(FaultsSelf, OrdersEndWithTheirOwner)
{
    {
        Faults faults;
        faults.FailNth(1, someError);
    }
    EXPECT_NE(GetFileAttributesW(u"/"), INVALID_FILE_ATTRIBUTES);
    const Faults faults;
    EXPECT_EQ(faults.Calls(), 0);
    EXPECT_NE(GetFileAttributesW(u"/"), INVALID_FILE_ATTRIBUTES);
    EXPECT_EQ(faults.Failures(), 0);
}

TEST(FaultsSelf, CallsOfOtherThreadsCount)
{
    Faults faults;
    faults.FailNth(2, someError);
    EXPECT_NE(GetFileAttributesW(u"/"), INVALID_FILE_ATTRIBUTES);
    DWORD error = ERROR_SUCCESS;
    std::thread([&] {
        if (GetFileAttributesW(u"/") == INVALID_FILE_ATTRIBUTES)
            error = GetLastError();
    }).join();
    EXPECT_EQ(error, someError);
}

TEST(FaultsSelf, FailedCloseReleasesAllTheSame)
{
    const TempFolder folder;
    WriteBytes(folder / u"a", "x");
    const HANDLE file = Open(folder / u"a");
    WIN32_FIND_DATAW record;
    const HANDLE find = FindFirstFileW(Wide(folder / u"*"), &record);
    ASSERT_TRUE(file != INVALID_HANDLE_VALUE && find != INVALID_HANDLE_VALUE);
    Faults faults;
    faults.Fail("CloseHandle", 1, someError);
    faults.Fail("FindClose", 1, someError);
    EXPECT_FALSE(CloseHandle(file));
    EXPECT_EQ(GetLastError(), someError);
    EXPECT_FALSE(CloseHandle(file));
    EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
    EXPECT_FALSE(FindClose(find));
    EXPECT_EQ(GetLastError(), someError);
}

// Each operation fails in its own way.
class FaultsInTheirWay : public testing::Test
{
protected:
    ~FaultsInTheirWay() override
    {
        EXPECT_EQ(faults.Failures(), faults.Calls());
    }

    void Order(const char* operation)
    {
        faults.Fail(operation, 1, someError);
        SetLastError(ERROR_SUCCESS);
    }
    static void ExpectNone(bool isNone)
    {
        EXPECT_TRUE(isNone);
        EXPECT_EQ(GetLastError(), someError);
    }

    Faults faults;
};

TEST_F(FaultsInTheirWay, OfFiles)
{
    const HANDLE none = INVALID_HANDLE_VALUE;
    WIN32_FIND_DATAW record;
    FILETIME time = {};

    Order("CreateFileW");
    ExpectNone(Open(u"/") == INVALID_HANDLE_VALUE);
    Order("ReadFile");
    ExpectNone(!ReadFile(none, nullptr, 0, nullptr, nullptr));
    Order("WriteFile");
    ExpectNone(!WriteFile(none, nullptr, 0, nullptr, nullptr));
    Order("SetFilePointer");
    ExpectNone(SetFilePointer(none, 0, nullptr, FILE_BEGIN) == INVALID_SET_FILE_POINTER);
    Order("SetFilePointerEx");
    ExpectNone(!SetFilePointerEx(none, {}, nullptr, FILE_BEGIN));
    Order("SetEndOfFile");
    ExpectNone(!SetEndOfFile(none));
    Order("GetFileTime");
    ExpectNone(!GetFileTime(none, nullptr, nullptr, &time));
    Order("SetFileTime");
    ExpectNone(!SetFileTime(none, nullptr, nullptr, &time));
    Order("SetFileAttributesW");
    ExpectNone(!SetFileAttributesW(u"/none", 0));
    Order("CreateDirectoryW");
    ExpectNone(!CreateDirectoryW(u"/", nullptr));
    Order("FindFirstFileW");
    ExpectNone(FindFirstFileW(u"/*", &record) == INVALID_HANDLE_VALUE);
    Order("FindNextFileW");
    ExpectNone(!FindNextFileW(none, &record));
}

TEST_F(FaultsInTheirWay, OfProcesses)
{
    WCHAR path[MAX_PATH] = {};
    HANDLE handle = nullptr;
    DWORD code = 77;

    std::u16string unopened;
    Order("MakeFileBeside");
    ExpectNone(!MakeFileBeside(u"/", u"/"));
    Order("CreateOutputFile");
    ExpectNone(CreateOutputFile(unopened) == INVALID_HANDLE_VALUE);
    EXPECT_EQ(unopened, u"");
    Order("MultiByteToWideChar");
    ExpectNone(MultiByteToWideChar(CP_UTF8, 0, "a", 1, path, MAX_PATH) == 0);
    Order("CreatePipe");
    ExpectNone(!CreatePipe(&handle, &handle, nullptr, 0));
    Order("SetHandleInformation");
    ExpectNone(!SetHandleInformation(handle, HANDLE_FLAG_INHERIT, 0));
    Order("GetEnvironmentStringsW");
    ExpectNone(GetEnvironmentStringsW() == nullptr);
    Order("CreateProcessW");
    ExpectNone(
        !CreateProcessW(nullptr, path, nullptr, nullptr, 1, 0, nullptr, nullptr, nullptr, nullptr));
    Order("WaitForSingleObject");
    ExpectNone(WaitForSingleObject(handle, INFINITE) == WAIT_FAILED);
    Order("GetExitCodeProcess");
    ExpectNone(!GetExitCodeProcess(handle, &code));
    EXPECT_EQ(code, 77U);
    Order("_beginthreadex");
    ExpectNone(_beginthreadex(nullptr, 0, nullptr, nullptr, 0, nullptr) == 0);

    EXPECT_EQ(handle, nullptr);
    EXPECT_EQ(*path, 0);
}

TEST_F(FaultsInTheirWay, OfResourcesAndTexts)
{
    std::u16string text;
    std::int32_t index = 0;
    void* images = nullptr;
    Order("LoadModuleText");
    ExpectNone(!LoadModuleText(106, 0, text));
    Order("FillInserts");
    ExpectNone(!FillInserts(u"x", {}, text));
    Order("FindSystemText");
    ExpectNone(!FindSystemText(ERROR_ACCESS_DENIED, text));
    Order("FindUserName");
    ExpectNone(!FindUserName(text));
    EXPECT_EQ(text, u"");
    Order("FindIcon");
    ExpectNone(!FindIcon(u"/", index, images));
    CRITICAL_SECTION section;
    Order("InitializeCriticalSectionEx");
    ExpectNone(!InitializeCriticalSectionEx(&section, 0, 0));

    Order("SysAllocString");
    EXPECT_EQ(SysAllocString(u"x"), nullptr);
    Order("SysAllocStringLen");
    EXPECT_EQ(SysAllocStringLen(u"x", 1), nullptr);
}

TEST(FaultsSelf, ComponentsFailWithStatuses)
{
    Faults faults;
    const auto order = [&](const char* operation) {
        faults.Fail(operation, 1, someError);
    };
    FILETIME time = {};
    order("CoFileTimeNow");
    EXPECT_EQ(CoFileTimeNow(&time), someStatus);
    LPOLESTR progId = nullptr;
    order("ProgIDFromCLSID");
    EXPECT_EQ(ProgIDFromCLSID({}, &progId), someStatus);
    ICreateErrorInfo* made = nullptr;
    faults.Fail("CreateErrorInfo", 1, static_cast<DWORD>(E_OUTOFMEMORY));
    EXPECT_EQ(CreateErrorInfo(&made), E_OUTOFMEMORY);
    EXPECT_EQ(made, nullptr);
    IErrorInfo* info = nullptr;
    order("GetErrorInfo");
    EXPECT_EQ(GetErrorInfo(0, &info), someStatus);
    order("SetErrorInfo");
    EXPECT_EQ(SetErrorInfo(0, nullptr), someStatus);
    EXPECT_EQ(faults.Failures(), faults.Calls());
}

TEST(FaultsSelf, ShellFailsWithTheCode)
{
    Faults faults;
    faults.FailNth(1, someError);
    SHFILEOPSTRUCTW operation = {};
    operation.fAnyOperationsAborted = 1;
    EXPECT_EQ(SHFileOperationW(&operation), static_cast<int>(someError));
    EXPECT_EQ(operation.fAnyOperationsAborted, 0);
}

} // namespace
} // namespace tarnwell::test
