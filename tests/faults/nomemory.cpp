// No memory for an object: nothing is made, and the host is told so.
#include "faults/local.h"

#include "local/copystreams.h"
#include "module/lifecycle.h"
#include "support/fakeprogress.h"

#include <tarnwell/classes.h>
#include <tarnwell/pointers.h>

#include <gtest/gtest.h>

#include <new>

namespace
{
thread_local bool refuse = false;
thread_local bool refuseBuffers = false;

template <class Allocate> void* AllocateUnless(bool refused, Allocate allocate) noexcept
{
    if (refused)
        return nullptr;
    try
    {
        return allocate();
    }
    catch (...)
    {
        return nullptr;
    }
}
} // namespace

// Objects of the module's classes are the only ones made this way.
void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return AllocateUnless(refuse, [size] { return ::operator new(size); });
}

// And the buffers of its copies.
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept
{
    return AllocateUnless(refuseBuffers, [size] { return ::operator new[](size); });
}

namespace tarnwell::test
{
namespace
{

TEST(NoMemory, MakesNoObject)
{
    ComPtr<::IClassFactory> factory;
    StartModule();
    ASSERT_EQ(DllGetClassObject(CLSID_Win32FileSystem, IidOf<::IClassFactory>(), factory.OutVoid()),
              S_OK);
    void* out = &out;
    refuse = true;
    const HRESULT status = factory->CreateInstance(nullptr, IidOf<::IUnknown>(), &out);
    refuse = false;
    EXPECT_EQ(status, E_OUTOFMEMORY);
    EXPECT_EQ(out, nullptr);
    StopModule();
}

TEST(NoMemory, MakesNoClassObject)
{
    StartModule();
    void* out = &out;
    refuse = true;
    const HRESULT status = DllGetClassObject(CLSID_P4FileSystem, IidOf<::IUnknown>(), &out);
    refuse = false;
    EXPECT_EQ(status, E_OUTOFMEMORY);
    EXPECT_EQ(out, nullptr);
    StopModule();
}

TEST(NoMemory, CopiesNothingThroughStreams)
{
    const Local local;
    FakeProgress progress;
    refuseBuffers = true;
    const HRESULT status = CopyThroughStreams(*local.system.Get(), local.Path(u"a.txt"),
                                              local.Path(u"copy"), progress);
    refuseBuffers = false;
    EXPECT_EQ(status, E_OUTOFMEMORY);
    EXPECT_EQ(progress.Questions(), 0);
}

} // namespace
} // namespace tarnwell::test
