// Pipes where the host program looks for files.
#include "e2e/hostrun.h"
#include "support/clients.h"
#include "support/repository.h"

#include <gmock/gmock.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tarnwell::test
{

namespace
{

using testing::HasSubstr;

// One that somebody holds open, who writes nothing.
class SilentPipe
{
public:
    explicit SilentPipe(const std::filesystem::path& path)
    {
        if (mkfifo(path.c_str(), 0600) == 0)
            writer_ = open(path.c_str(), O_RDWR | O_CLOEXEC);
        EXPECT_GE(writer_, 0);
    }
    SilentPipe(const SilentPipe&) = delete;
    SilentPipe& operator=(const SilentPipe&) = delete;
    ~SilentPipe()
    {
        close(writer_);
    }

private:
    int writer_ = -1;
};

TEST(Pipes, CompareDoesNotWaitForThoseInFolders)
{
    const TempFolder folder;
    for (const char* const side : {"left", "right"})
        std::filesystem::create_directory(folder.Path() / side);
    const SilentPipe pipe(folder.Path() / "left/a");
    WriteBytes(folder / u"right/a", "");
    const HostRun run = RunHost({u"compare", folder / u"left", folder / u"right"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.output, "a: failed\n0 equal, 1 failed\n");
    EXPECT_THAT(run.errors, HasSubstr("/left/a\" is a pipe or a device, and isn't read."));
}

TEST(Pipes, CompareReadsThoseThatAreNamed)
{
    const TempFolder folder;
    ASSERT_EQ(mkfifo((folder.Path() / "a").c_str(), 0600), 0);
    WriteBytes(folder / u"b", "");
    const HostRun run = RunHost({u"compare", folder / u"a", folder / u"b"});
    EXPECT_EQ(run.output, "a: equal, 0 and 0 bytes\n") << run.errors;
    EXPECT_EQ(run.exitCode, 0);
}

class PipesInWorkTrees : public ClientTest
{
protected:
    const Repository repository;
};

TEST_F(PipesInWorkTrees, AreNotWaitedForEither)
{
    WriteBytes(repository / u"empty", "");
    repository.Commit(u"pipe", "1", "first");
    const std::filesystem::path folder = repository.Folder().Path();
    for (const char* const name : {"empty", "pipe"})
        std::filesystem::remove(folder / name);
    const SilentPipe empty(folder / "empty");
    const SilentPipe pipe(folder / "pipe");
    const std::u16string path = repository.Folder().Text();
    const HostRun run = RunHost({u"compare", u"git:" + path, path});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.output, "empty: failed\npipe: failed\n0 equal, 2 failed\n");
    EXPECT_THAT(run.errors, HasSubstr("/pipe\" isn't a file."));
}

} // namespace

} // namespace tarnwell::test
