// Clients have no window that a user would see.
#include "support/clientcall.h"

namespace tarnwell::test
{

namespace
{

TEST(ClientRunWindows, IsHidden)
{
    const auto output = NewOutputFile();
    EXPECT_EQ(RunClient(childClient, CallOfChild(u"window", *output)).exitCode, 0);
    EXPECT_EQ(Printed(*output), std::u16string(u"0\0", 2));
}

} // namespace

} // namespace tarnwell::test
