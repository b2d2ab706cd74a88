// Two threads want the same class object for the first time, and one is held up in front of the
// table's lock until the other has made it. The linker puts the wait there.
#include "module/classtable.h"
#include "platform/win32.h"

#include <tarnwell/classes.h>
#include <tarnwell/pointers.h>

#include <gmock/gmock.h>

#include <functional>
#include <thread>

namespace
{

// What the calling thread does, once, before it enters a section.
thread_local std::function<void()> beforeEntering;

} // namespace

extern "C" void __real_EnterCriticalSection(CRITICAL_SECTION* section);
extern "C" void __wrap_EnterCriticalSection(CRITICAL_SECTION* section)
{
    if (const auto todo = std::exchange(beforeEntering, nullptr))
        todo();
    __real_EnterCriticalSection(section);
}

namespace tarnwell::test
{
namespace
{

::IUnknown* Get()
{
    ComPtr<::IUnknown> object;
    EXPECT_EQ(GetClassObject(CLSID_GITFileSystem, IidOf<::IUnknown>(), object.OutVoid()), S_OK);
    return object.Get(); // the table keeps it alive
}

TEST(ClassTableRace, TheSlowerThreadTakesWhatTheFasterMade)
{
    ASSERT_EQ(InitializeClassTable(), S_OK);
    ::IUnknown* faster = nullptr;
    beforeEntering = [&] {
        std::thread([&] { faster = Get(); }).join();
    };
    ::IUnknown* const slower = Get();
    EXPECT_NE(faster, nullptr) << "nobody was held up";
    EXPECT_EQ(slower, faster);
    ReleaseClassTable();
}

} // namespace
} // namespace tarnwell::test
