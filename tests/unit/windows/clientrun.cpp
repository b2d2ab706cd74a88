// Clients have no window that a user would see.
#include "frame/messages.h"
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

TEST(ClientRunWindows, AKilledClientLeavesItsCodeAndItsWords)
{
    const ClientOutcome outcome = RunChildClient(u"kill");
    EXPECT_EQ(outcome.exitCode, 137);
    EXPECT_EQ(outcome.errors, u"last words");
}

// An exception that nobody handled is the exit code.
TEST(ClientRunWindows, AClientThatCrashedHasFailedWhateverItWrote)
{
    for (const char16_t* const code : {u"exit -1073741819", u"exit -1073741824", u"exit -1"})
    {
        const Thrown thrown = ThrownBy([&] { RunChildClient(code); });
        EXPECT_EQ(thrown.status, static_cast<HRESULT>(0x8007042B));
        EXPECT_EQ(thrown.text, FormatMessageWithStatus(childClient.communication, thrown.status));
    }
    EXPECT_EQ(RunChildClient(u"exit -1073741825").exitCode, -1073741825);
}

} // namespace

} // namespace tarnwell::test
