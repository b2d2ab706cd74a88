// Calls of the system that are looked up by name, the one for control codes among them.
#include "platform/ntfscontrol.h"
#include "platform/windows/systemcall.h"

#include <gtest/gtest.h>

namespace tarnwell::test
{
namespace
{

TEST(NtFsControl, IsTheSystemsOwn)
{
    const HMODULE library = GetModuleHandleW(L"ntdll.dll");
    ASSERT_NE(library, nullptr);
    ASSERT_NE(ntFsControlFile, nullptr);
    EXPECT_EQ(reinterpret_cast<void*>(ntFsControlFile),
              reinterpret_cast<void*>(GetProcAddress(library, "NtFsControlFile")));
}

TEST(SystemCall, WhatIsMissingIsNull)
{
    EXPECT_EQ(FindSystemCall(L"no-such-library.dll", "NtFsControlFile"), nullptr);
    EXPECT_EQ(FindSystemCall(L"ntdll.dll", "NoSuchCall"), nullptr);
}

} // namespace
} // namespace tarnwell::test
