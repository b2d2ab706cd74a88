// No memory for an object: nothing is made, and the host is told so. None for what was only to be
// found out: nothing is found.
#include "faults/local.h"

#include "local/snapshots.h"
#include "module/lifecycle.h"
#include "support/snapshotserver.h"
#include "support/snapshotshare.h"

#include <tarnwell/classes.h>
#include <tarnwell/pointers.h>

#include <gtest/gtest.h>

#include <new>

namespace
{
thread_local bool refuse = false;
}

// What must not throw is made this way: objects, and a buffer of a size that somebody else tells.
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept
{
    if (refuse)
        return nullptr;
    try
    {
        return ::operator new[](size);
    }
    catch (...)
    {
        return nullptr;
    }
}

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

TEST(NoMemory, ForTheAnswerOfAFileServerMakesNoSnapshots)
{
    const SnapshotShare share;
    SnapshotServer server;
    server.Hold({u"@GMT-2024.05.01-10.30.00"});
    server.start = {SnapshotServer::Header(1, 0, 0xFFFFFFEF)};
    server.onCall = [](const SnapshotServer::Call&)
    {
        refuse = true;
    };
    const std::size_t count = ListSnapshots(u"C:\\a").size();
    refuse = false;
    EXPECT_EQ(count, 0U);
    EXPECT_EQ(server.calls.size(), 1U) << "there is no second question";
}

} // namespace
} // namespace tarnwell::test
