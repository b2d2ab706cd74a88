#include "client/bare.h"

#include "support/files.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <spawn.h>
#include <stdexcept>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

namespace tarnwell::bench
{

namespace
{

// Owns a descriptor.
class File
{
public:
    explicit File(int descriptor) : descriptor_(descriptor)
    {
        if (descriptor < 0)
            throw std::system_error(errno, std::generic_category(), "the output file");
    }
    File(const File&) = delete;
    File& operator=(const File&) = delete;
    ~File()
    {
        close(descriptor_);
    }
    int Get() const
    {
        return descriptor_;
    }

private:
    int descriptor_;
};

int OpenUnlinked()
{
    std::string name = std::filesystem::temp_directory_path() / "bareXXXXXX";
    const int file = mkostemp(name.data(), O_CLOEXEC);
    unlink(name.c_str());
    return file;
}

// What the start needs beside the arguments.
class Setup
{
public:
    Setup(const std::string& folder, const File& output)
    {
        posix_spawn_file_actions_init(&actions_);
        posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_adddup2(&actions_, output.Get(), STDOUT_FILENO);
        posix_spawn_file_actions_addchdir_np(&actions_, folder.c_str());
    }
    Setup(const Setup&) = delete;
    Setup& operator=(const Setup&) = delete;
    ~Setup()
    {
        posix_spawn_file_actions_destroy(&actions_);
    }
    const posix_spawn_file_actions_t* Actions() const
    {
        return &actions_;
    }

private:
    posix_spawn_file_actions_t actions_;
};

void RunInto(const BareRun& run, const File& output)
{
    const Setup setup(run.folder, output);
    std::vector<char*> arguments;
    for (const std::string& argument : run.arguments)
        arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);
    pid_t child = -1;
    int status = -1;
    const int error =
        posix_spawnp(&child, arguments[0], setup.Actions(), nullptr, arguments.data(), environ);
    if (error != 0 || waitpid(child, &status, 0) != child || status != 0)
        throw std::runtime_error(run.arguments[0] + " " + run.arguments.at(1) + " failed");
}

} // namespace

std::uint64_t RunBare(const BareRun& run)
{
    const File output(OpenUnlinked());
    RunInto(run, output);
    lseek(output.Get(), 0, SEEK_SET);
    static std::vector<char> buffer(pieceSize);
    std::uint64_t total = 0;
    for (ssize_t count = 1; count > 0; total += static_cast<std::uint64_t>(count))
    {
        count = read(output.Get(), buffer.data(), buffer.size());
        if (count < 0)
            throw std::system_error(errno, std::generic_category(), "the output file");
    }
    return total;
}

} // namespace tarnwell::bench
