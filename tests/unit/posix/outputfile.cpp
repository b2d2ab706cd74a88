// The temporary file of a client's output: whose it is, where, and until when.
#include "platform/posix/files/filehandle.h"
#include "runner/readstream.h"
#include "support/clientcall.h"
#include "support/environmentvalue.h"
#include "support/posix/child.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <functional>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tarnwell::test
{
namespace
{

namespace fs = std::filesystem;

// Where the file was when it had a name.
fs::path FormerPath(const OsHandle& file)
{
    constexpr std::string_view mark = " (deleted)";
    const std::string descriptor = std::to_string(posix::DescriptorOf(file.Get()));
    std::string path = fs::read_symlink("/proc/self/fd/" + descriptor).string();
    EXPECT_TRUE(path.ends_with(mark)) << path;
    return path.substr(0, path.size() - std::min(path.size(), mark.size()));
}

// Does `act` in a process of its own and kills that when there is the file `reached`, so that it
// has no chance to clean up.
void KillAt(const std::u16string& reached, const std::function<void()>& act)
{
    const pid_t host = fork();
    if (host == 0)
    {
        act();
        WriteBytes(reached, "");
        pause();
        _exit(1);
    }
    WaitForFile(reached);
    kill(host, SIGKILL);
    int status = 0;
    EXPECT_EQ(waitpid(host, &status, 0), host);
    EXPECT_TRUE(WIFSIGNALED(status));
}

class OutputFile : public testing::Test
{
protected:
    const TempFolder files_;
    const TempFolder folder_; // for temporary files
    const EnvironmentValue temporary_{"TMPDIR", folder_.Path().c_str()};
};

TEST_F(OutputFile, IsTheUsersOwnAndHasNoName)
{
    const mode_t before = umask(0);
    const auto file = NewOutputFile();
    umask(before);
    EXPECT_TRUE(fs::is_empty(folder_.Path()));
    EXPECT_EQ(FormerPath(*file).parent_path(), folder_.Path());
    struct stat facts = {};
    ASSERT_EQ(fstat(posix::DescriptorOf(file->Get()), &facts), 0);
    EXPECT_EQ(facts.st_mode, S_IFREG | 0600U);
    EXPECT_EQ(facts.st_nlink, 0U);
    EXPECT_EQ(facts.st_uid, geteuid());
}

TEST_F(OutputFile, GoesWithTheLastOfItsStream)
{
    auto file = NewOutputFile();
    const int descriptor = posix::DescriptorOf(file->Get());
    ComPtr<IFileStream> stream = MakeReadStream(std::move(file), u"source");
    ComPtr<::ISequentialStream> bytes = stream.As<::ISequentialStream>();
    stream.Reset();
    struct stat facts = {};
    EXPECT_EQ(fstat(descriptor, &facts), 0);
    bytes.Reset();
    EXPECT_EQ(fstat(descriptor, &facts), -1);
}

TEST_F(OutputFile, LiesInTheSystemsFolderWhereTheVariableIsNoUse)
{
    for (const char* const value : {static_cast<const char*>(nullptr), "", "relative"})
    {
        temporary_.Set(value);
        EXPECT_EQ(FormerPath(*NewOutputFile()).parent_path(), fs::canonical("/tmp"));
    }
}

TEST_F(OutputFile, LiesInTheCurrentFolderWhereTheNamedOneIsTooLong)
{
    temporary_.Set(("/" + std::string(300, 'x')).c_str());
    const fs::path before = fs::current_path();
    fs::current_path(folder_.Path());
    const fs::path path = FormerPath(*NewOutputFile());
    fs::current_path(before);
    EXPECT_EQ(path.parent_path(), folder_.Path());
}

TEST_F(OutputFile, IsGoneWhenTheHostIsKilledWithItsStream)
{
    ComPtr<IFileStream> stream;
    const auto open = [&] {
        auto file = NewOutputFile();
        RunClient(childClient, CallOfChild(u"both 1000", *file));
        stream = MakeReadStream(std::move(file), u"source");
    };
    KillAt(files_ / u"reached", open);
    EXPECT_TRUE(fs::is_empty(folder_.Path()));
}

TEST_F(OutputFile, IsGoneWhenTheHostIsKilledDuringTheRun)
{
    const std::u16string started = files_ / u"started";
    const std::u16string told = files_ / u"told";
    KillAt(started, [&] { RunChildClient(u"await \"" + started + u"\" \"" + told + u"\""); });
    EXPECT_TRUE(fs::is_empty(folder_.Path()));
    WriteBytes(told, "");
}

} // namespace
} // namespace tarnwell::test
