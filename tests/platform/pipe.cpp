// Pipes within the process.
#include "platform/childrun.h"
#include "support/opened.h"

#include <gtest/gtest.h>

#include <thread>

namespace tarnwell::test
{
namespace
{

DWORD Write(const OsHandle& pipe, const std::string& bytes)
{
    DWORD written = 0;
    WriteFile(pipe.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    return written;
}

TEST(Pipes, CarryBytesToTheEnd)
{
    Pipe pipe = PipeToChild();
    EXPECT_EQ(Write(pipe.write, "hello"), 5U);
    EXPECT_TRUE(pipe.write.Close());
    EXPECT_EQ(ReadPipe(pipe.read), "hello");
}

TEST(Pipes, AtTheEndNothingIsRead)
{
    Pipe pipe = PipeToChild();
    EXPECT_TRUE(pipe.write.Close());
    DWORD count = 99;
    char byte = 0;
    ReadFile(pipe.read.Get(), &byte, 1, &count, nullptr);
    EXPECT_EQ(count, 0U);
}

TEST(Pipes, CarryMoreThanTheyHold)
{
    Pipe pipe = PipeToChild();
    const std::string bytes(300'000, 'p');
    std::thread writer([&] {
        EXPECT_EQ(Write(pipe.write, bytes), bytes.size());
        pipe.write.Close();
    });
    EXPECT_EQ(ReadPipe(pipe.read), bytes);
    writer.join();
}

TEST(Pipes, EndsCanBeMadeInheritableAndNotAgain)
{
    const Pipe pipe = PipeToChild();
    constexpr DWORD inheritable = HANDLE_FLAG_INHERIT;
    for (const DWORD flags : {inheritable, inheritable, DWORD{0}, DWORD{0}})
        EXPECT_TRUE(SetHandleInformation(pipe.write.Get(), HANDLE_FLAG_INHERIT, flags));
}

TEST(Pipes, SetHandleInformationRefusesWhatIsNoHandle)
{
    EXPECT_EQ(ErrorOf(SetHandleInformation(nullptr, HANDLE_FLAG_INHERIT, 0)), ERROR_INVALID_HANDLE);
}

} // namespace
} // namespace tarnwell::test
