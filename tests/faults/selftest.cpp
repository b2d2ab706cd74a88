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

TEST(FaultsSelf, EachOperationFailsInItsOwnWay)
{
    Faults faults;
    const auto order = [&](const char* operation) {
        faults.Fail(operation, 1, someError);
        SetLastError(ERROR_SUCCESS);
    };
    const auto expectNo = [](BOOL result) {
        EXPECT_FALSE(result);
        EXPECT_EQ(GetLastError(), someError);
    };
    const HANDLE none = INVALID_HANDLE_VALUE;
    WIN32_FIND_DATAW record;
    FILETIME time = {};

    order("CreateFileW");
    EXPECT_EQ(Open(u"/"), INVALID_HANDLE_VALUE);
    EXPECT_EQ(GetLastError(), someError);
    order("ReadFile");
    expectNo(ReadFile(none, nullptr, 0, nullptr, nullptr));
    order("WriteFile");
    expectNo(WriteFile(none, nullptr, 0, nullptr, nullptr));
    order("SetFilePointer");
    EXPECT_EQ(SetFilePointer(none, 0, nullptr, FILE_BEGIN), INVALID_SET_FILE_POINTER);
    EXPECT_EQ(GetLastError(), someError);
    order("SetFilePointerEx");
    expectNo(SetFilePointerEx(none, {}, nullptr, FILE_BEGIN));
    order("SetEndOfFile");
    expectNo(SetEndOfFile(none));
    order("GetFileTime");
    expectNo(GetFileTime(none, nullptr, nullptr, &time));
    order("SetFileTime");
    expectNo(SetFileTime(none, nullptr, nullptr, &time));
    order("SetFileAttributesW");
    expectNo(SetFileAttributesW(u"/none", 0));
    order("CreateDirectoryW");
    expectNo(CreateDirectoryW(u"/", nullptr));
    order("FindFirstFileW");
    EXPECT_EQ(FindFirstFileW(u"/*", &record), INVALID_HANDLE_VALUE);
    EXPECT_EQ(GetLastError(), someError);
    order("FindNextFileW");
    expectNo(FindNextFileW(none, &record));

    EXPECT_EQ(faults.Failures(), faults.Calls());
}

TEST(FaultsSelf, ProcessesFailInTheirOwnWay)
{
    Faults faults;
    const auto order = [&](const char* operation) {
        faults.Fail(operation, 1, someError);
        SetLastError(ERROR_SUCCESS);
    };
    const auto expectNone = [](bool isNone) {
        EXPECT_TRUE(isNone);
        EXPECT_EQ(GetLastError(), someError);
    };
    WCHAR path[MAX_PATH] = {};
    HANDLE handle = nullptr;
    DWORD code = 77;

    std::u16string unopened;
    order("MakeFileBeside");
    expectNone(!MakeFileBeside(u"/", u"/"));
    order("CreateOutputFile");
    expectNone(CreateOutputFile(unopened) == INVALID_HANDLE_VALUE);
    EXPECT_EQ(unopened, u"");
    order("MultiByteToWideChar");
    expectNone(MultiByteToWideChar(CP_UTF8, 0, "a", 1, path, MAX_PATH) == 0);
    order("CreatePipe");
    expectNone(!CreatePipe(&handle, &handle, nullptr, 0));
    order("SetHandleInformation");
    expectNone(!SetHandleInformation(handle, HANDLE_FLAG_INHERIT, 0));
    order("GetEnvironmentStringsW");
    expectNone(GetEnvironmentStringsW() == nullptr);
    order("CreateProcessW");
    expectNone(
        !CreateProcessW(nullptr, path, nullptr, nullptr, 1, 0, nullptr, nullptr, nullptr, nullptr));
    order("WaitForSingleObject");
    expectNone(WaitForSingleObject(handle, INFINITE) == WAIT_FAILED);
    order("GetExitCodeProcess");
    expectNone(!GetExitCodeProcess(handle, &code));
    EXPECT_EQ(code, 77U);
    order("_beginthreadex");
    expectNone(_beginthreadex(nullptr, 0, nullptr, nullptr, 0, nullptr) == 0);

    EXPECT_EQ(handle, nullptr);
    EXPECT_EQ(*path, 0);
    EXPECT_EQ(faults.Failures(), faults.Calls());
}

TEST(FaultsSelf, ResourcesAndTextsFailInTheirOwnWay)
{
    Faults faults;
    const auto order = [&](const char* operation) {
        faults.Fail(operation, 1, someError);
        SetLastError(ERROR_SUCCESS);
    };
    const auto expectNone = [](bool isNone) {
        EXPECT_TRUE(isNone);
        EXPECT_EQ(GetLastError(), someError);
    };

    std::u16string text;
    std::int32_t index = 0;
    void* images = nullptr;
    order("LoadModuleText");
    expectNone(!LoadModuleText(106, 0, text));
    order("FillInserts");
    expectNone(!FillInserts(u"x", {}, text));
    order("FindSystemText");
    expectNone(!FindSystemText(ERROR_ACCESS_DENIED, text));
    order("FindUserName");
    expectNone(!FindUserName(text));
    EXPECT_EQ(text, u"");
    order("FindIcon");
    expectNone(!FindIcon(u"/", index, images));
    CRITICAL_SECTION section;
    order("InitializeCriticalSectionEx");
    expectNone(!InitializeCriticalSectionEx(&section, 0, 0));

    order("SysAllocString");
    EXPECT_EQ(SysAllocString(u"x"), nullptr);
    order("SysAllocStringLen");
    EXPECT_EQ(SysAllocStringLen(u"x", 1), nullptr);

    EXPECT_EQ(faults.Failures(), faults.Calls());
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
