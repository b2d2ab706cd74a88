#include "platform/ntfscontrol.h"

#include <gtest/gtest.h>

namespace tarnwell::test
{
namespace
{

TEST(NtFsControl, IsNotThere)
{
    EXPECT_EQ(ntFsControlFile, nullptr);
}

} // namespace
} // namespace tarnwell::test
