// No memory for an object: nothing is made, and the host is told so.
#include "faults/local.h"

#include "module/lifecycle.h"

#include <tarnwell/classes.h>
#include <tarnwell/pointers.h>

#include <gtest/gtest.h>

#include <new>

namespace
{
thread_local bool refuse = false;
}

// Objects of the module's classes are the only ones made this way.
void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    if (refuse)
        return nullptr;
    try
    {
        return ::operator new(size);
    }
    catch (...)
    {
        return nullptr;
    }
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

} // namespace
} // namespace tarnwell::test
