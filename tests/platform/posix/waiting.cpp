// Pipes and terminals: whom opening one doesn't make wait, and whom reading does.
#include "support/opened.h"
#include "support/posix/child.h"
#include "support/tempfolder.h"

#include <tarnwell/text.h>

#include <gtest/gtest.h>

#include <atomic>
#include <cerrno>
#include <fcntl.h>
#include <pty.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <thread>

namespace tarnwell::test
{
namespace
{

// Or until the reader has given up.
void WaitUntilRead(int pipe, const std::atomic<bool>& givenUp)
{
    int left = 1;
    while (!givenUp && ioctl(pipe, FIONREAD, &left) == 0 && left > 0)
        std::this_thread::yield();
}

// A short count would mean the end of the file.
TEST(Waiting, AReadGoesOnUntilThePipeHasGivenAll)
{
    const TempFolder folder;
    const std::string path = folder.Path() / "pipe";
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    const OsHandle reader = OpenedForReading(folder / u"pipe");
    ASSERT_TRUE(reader);
    const int writer = open(path.c_str(), O_WRONLY | O_CLOEXEC);
    ASSERT_GE(writer, 0);
    std::atomic<bool> over = false;
    std::thread pieces([&] {
        EXPECT_EQ(write(writer, "12345", 5), 5);
        WaitUntilRead(writer, over);
        EXPECT_EQ(write(writer, "67890", 5), 5);
    });
    char buffer[11] = {};
    DWORD moved = 0;
    EXPECT_TRUE(ReadFile(reader.Get(), buffer, 10, &moved, nullptr)) << GetLastError();
    over = true;
    pieces.join();
    EXPECT_EQ(moved, 10U);
    EXPECT_STREQ(buffer, "1234567890");
    close(writer);
    EXPECT_TRUE(ReadFile(reader.Get(), buffer, 10, &moved, nullptr));
    EXPECT_EQ(moved, 0U) << "nobody writes any more";
}

TEST(Waiting, ATerminalThatIsOpenedIsNotTheProcesssOwn)
{
    int master = -1;
    int slave = -1;
    char name[64] = {};
    ASSERT_EQ(openpty(&master, &slave, name, nullptr, nullptr), 0);
    close(slave);
    constexpr int hasTerminal = 2;
    constexpr int notOpened = 1;
    const std::u16string path = DecodeName(name);
    const int code = ExitCodeOfChild([&] {
        const OsHandle terminal = Opened(path, GENERIC_READ | GENERIC_WRITE, OPEN_EXISTING);
        if (!terminal)
            return notOpened;
        return open("/dev/tty", O_RDWR | O_CLOEXEC) < 0 && errno == ENXIO ? 0 : hasTerminal;
    });
    EXPECT_EQ(code, 0);
    close(master);
}

} // namespace
} // namespace tarnwell::test
