// The module's start and the making of its objects, where the platform fails them.
#include "faults/local.h"

#include "local/filesystem.h"
#include "module/lifecycle.h"

#include <tarnwell/classes.h>

namespace tarnwell::test
{

namespace
{

TEST(FailingStart, AModuleThatDidNotStartGivesOutNothing)
{
    void* out = &out;
    {
        Faults faults;
        faults.Fail("InitializeCriticalSectionEx", 1, ERROR_NOT_ENOUGH_MEMORY);
        StartModule();
    }
    EXPECT_EQ(DllGetClassObject(CLSID_Win32FileSystem, IID_IUnknown, &out), E_UNEXPECTED);
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(DllCanUnloadNow(), S_FALSE);
    StopModule(Ending::OfProcess);
}

TEST(FailingStart, AnObjectWithoutItsLockIsNotMade)
{
    const Held before = Held::Now();
    struct Row
    {
        DWORD error;
        HRESULT status;
    };
    for (const Row& row :
         {Row{ERROR_NOT_ENOUGH_MEMORY, StatusFromError(ERROR_NOT_ENOUGH_MEMORY)},
          Row{ERROR_BUSY, StatusFromError(ERROR_BUSY)}, Row{ERROR_SUCCESS, DISP_E_EXCEPTION}})
    {
        Faults faults;
        faults.Fail("InitializeCriticalSectionEx", 1, row.error);
        void* out = nullptr;
        EXPECT_EQ(MakeInstance<CWin32FileSystemObject>(nullptr, IID_IFileSystem, &out), row.status);
        EXPECT_EQ(out, nullptr);
    }
    EXPECT_EQ(Held::Now(), before);
}

TEST(FailingStart, APartWithoutItsLockIsNotMade)
{
    const Local local; // any object can be the whole
    const auto whole = local.system.As<IUnknown>();
    const Held before = Held::Now();
    {
        Faults faults;
        faults.Fail("InitializeCriticalSectionEx", 1, ERROR_NOT_ENOUGH_MEMORY);
        void* out = nullptr;
        EXPECT_EQ(MakeInstance<CWin32FileSystemObject>(whole.Get(), IID_IUnknown, &out),
                  StatusFromError(ERROR_NOT_ENOUGH_MEMORY));
        EXPECT_EQ(out, nullptr);
    }
    EXPECT_EQ(Held::Now(), before);
}

} // namespace

} // namespace tarnwell::test
