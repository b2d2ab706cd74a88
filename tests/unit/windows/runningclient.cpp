// What clients that stay inherit, and what becomes of the processes that they have started.
#include "runner/runningclient.h"

#include "support/clientcall.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

namespace tarnwell::test
{
namespace
{

// As another thread of the host has one, for a moment, when it is about to start a client.
TEST(RunningClientWindows, InheritsNoOtherClientsStreams)
{
    Patience patience(nullptr, u"test");
    Pipe others = MakePipe(childClient, &Pipe::write);
    RunningClient client(childClient, CallOfChild(u"answer", OsHandle()));
    client.Write("question\n");
    EXPECT_EQ(client.Read(patience), "question\n");
    others.write.Close();
    DWORD available = 0;
    EXPECT_FALSE(PeekNamedPipe(others.read.Get(), nullptr, 0, nullptr, &available, nullptr));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_BROKEN_PIPE));
    EXPECT_EQ(client.Finish(patience).exitCode, 0);
}

// Nobody waits for those that keep the pipes.
TEST(RunningClientWindows, AnHeirOfThePipesDoesntKeepItFromBeingFinished)
{
    const TempFolder folder;
    Patience patience(nullptr, u"test");
    RunningClient client(childClient, CallOfChild(u"heir \"" + (folder / u"started") + u"\" \"" +
                                                      (folder / u"never") + u"\"",
                                                  OsHandle()));
    EXPECT_EQ(client.Finish(patience).exitCode, 3);
    EXPECT_TRUE(std::filesystem::exists(std::filesystem::path(folder / u"started")));
}

} // namespace
} // namespace tarnwell::test
