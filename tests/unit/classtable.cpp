// The table of creatable classes: one class object each, whoever comes first.
#include "module/classtable.h"
#include "frame/modulelock.h"
#include "module/lifecycle.h"

#include <tarnwell/classes.h>
#include <tarnwell/pointers.h>

#include <gmock/gmock.h>

#include <atomic>
#include <set>
#include <thread>
#include <vector>

namespace tarnwell::test
{

namespace
{

constexpr GUID classes[] = {CLSID_Win32FileSystem, CLSID_P4FileSystem, CLSID_SVNFileSystem,
                            CLSID_FTPFileSystem,   CLSID_HGFileSystem, CLSID_GITFileSystem};

class ClassTable : public testing::Test
{
protected:
    ClassTable()
    {
        EXPECT_EQ(InitializeClassTable(), S_OK);
    }
    ~ClassTable() override
    {
        ReleaseClassTable();
    }

    static ::IUnknown* Get(const GUID& classId)
    {
        ComPtr<::IUnknown> object;
        EXPECT_EQ(GetClassObject(classId, IidOf<::IUnknown>(), object.OutVoid()), S_OK);
        return object.Get(); // the table keeps it alive
    }
};

TEST_F(ClassTable, HasOneObjectForEachClass)
{
    std::set<::IUnknown*> objects;
    for (const GUID& classId : classes)
    {
        objects.insert(Get(classId));
        objects.insert(Get(classId));
    }
    EXPECT_EQ(objects.size(), std::size(classes));
}

TEST_F(ClassTable, MakesOneObjectForManyFirstCalls)
{
    constexpr int threadCount = 4;
    constexpr int rounds = 200;
    for (int round = 0; round < rounds; ++round)
    {
        ReleaseClassTable();
        ASSERT_EQ(InitializeClassTable(), S_OK);
        const GUID& classId = classes[static_cast<std::size_t>(round) % std::size(classes)];
        std::vector<::IUnknown*> seen(threadCount, nullptr);
        std::vector<std::thread> threads;
        std::atomic<int> missing = threadCount;
        for (::IUnknown*& each : seen)
        {
            threads.emplace_back([&] {
                // All at once, which a lock of the standard library's would not give.
                for (--missing; missing > 0;)
                    std::this_thread::yield();
                each = Get(classId);
            });
        }
        for (std::thread& thread : threads)
            thread.join();
        EXPECT_NE(seen.front(), nullptr);
        EXPECT_THAT(seen, testing::Each(seen.front()));
    }
}

TEST_F(ClassTable, KnowsNoOtherClass)
{
    void* out = nullptr;
    EXPECT_EQ(GetClassObject(CLSID_VSSFileSystem, IidOf<::IUnknown>(), &out),
              CLASS_E_CLASSNOTAVAILABLE);
    EXPECT_EQ(GetClassObject(CLSID_Win32File, IidOf<::IUnknown>(), &out),
              CLASS_E_CLASSNOTAVAILABLE);
}

TEST_F(ClassTable, ObjectsOfItDoNotHoldTheModuleByExisting)
{
    const std::int32_t before = ModuleLockCount();
    ComPtr<::IUnknown> first;
    ASSERT_EQ(GetClassObject(classes[0], IidOf<::IUnknown>(), first.OutVoid()), S_OK);
    EXPECT_EQ(ModuleLockCount(), before + 1) << "the reference beside the table's own";
    auto second = first;
    EXPECT_EQ(ModuleLockCount(), before + 1);
    second.Reset();
    first.Reset();
    EXPECT_EQ(ModuleLockCount(), before);
}

TEST_F(ClassTable, LocksMayGoBelowZero)
{
    const std::int32_t before = ModuleLockCount();
    ComPtr<::IClassFactory> factory;
    ASSERT_EQ(GetClassObject(classes[0], IidOf<::IClassFactory>(), factory.OutVoid()), S_OK);
    EXPECT_EQ(factory->LockServer(1), S_OK);
    EXPECT_EQ(ModuleLockCount(), before + 2);
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(factory->LockServer(0), S_OK);
    EXPECT_EQ(ModuleLockCount(), before - 2);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(factory->LockServer(2), S_OK);
    factory.Reset();
    EXPECT_EQ(ModuleLockCount(), before);
}

TEST(Lifecycle, NothingIsGivenOutBeforeTheStartAndAfterTheEnd)
{
    const auto ask = [] {
        void* out = &out;
        const HRESULT status = DllGetClassObject(CLSID_Win32FileSystem, IidOf<::IUnknown>(), &out);
        EXPECT_EQ(status == S_OK, out != nullptr);
        if (out != nullptr)
            static_cast<::IUnknown*>(out)->Release();
        return status;
    };
    EXPECT_EQ(ask(), E_UNEXPECTED);
    StartModule();
    EXPECT_EQ(ask(), S_OK);
    StopModule(Ending::OfProcess);
    EXPECT_EQ(ask(), E_UNEXPECTED);
}

} // namespace

} // namespace tarnwell::test
