#include "support/process.h"

#include <tarnwell/text.h>

#include <algorithm>
#include <fcntl.h>
#include <spawn.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace tarnwell::test
{

namespace
{

// Pointers into texts that live elsewhere, closed by a null, as the system takes them.
std::vector<char*> Pointers(std::vector<std::string>& texts)
{
    std::vector<char*> pointers;
    for (std::string& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

std::vector<std::string> ArgumentsOf(const std::filesystem::path& program, const ProcessCall& call)
{
    std::vector<std::string> arguments = {program.string()};
    for (const std::u16string& argument : call.arguments)
        arguments.push_back(EncodeName(argument).value());
    return arguments;
}

std::vector<std::string> EnvironmentOf(const ProcessCall& call)
{
    std::vector<std::string> variables;
    for (char** entry = environ; *entry != nullptr; ++entry)
        variables.emplace_back(*entry);
    for (const auto& [name, value] : call.environment)
    {
        const std::string start = name + "=";
        std::erase_if(variables,
                      [&](const std::string& variable) { return variable.starts_with(start); });
        if (!value.empty())
            variables.push_back(start + value);
    }
    return variables;
}

void Check(int error, const char* what)
{
    if (error != 0)
        throw std::system_error(error, std::generic_category(), what);
}

class Actions
{
public:
    Actions()
    {
        Check(posix_spawn_file_actions_init(&actions_), "file actions");
    }
    Actions(const Actions&) = delete;
    Actions& operator=(const Actions&) = delete;
    ~Actions()
    {
        posix_spawn_file_actions_destroy(&actions_);
    }

    void Open(int descriptor, const std::filesystem::path& file, int flags)
    {
        Check(posix_spawn_file_actions_addopen(&actions_, descriptor, file.c_str(), flags, 0600),
              "open");
    }
    void ChangeFolder(const std::filesystem::path& folder)
    {
        Check(posix_spawn_file_actions_addchdir_np(&actions_, folder.c_str()), "chdir");
    }
    const posix_spawn_file_actions_t* Get() const
    {
        return &actions_;
    }

private:
    posix_spawn_file_actions_t actions_;
};

int ExitCodeOf(pid_t child)
{
    int status = 0;
    while (waitpid(child, &status, 0) < 0)
    {
        if (errno != EINTR)
            Check(errno, "waitpid");
    }
    if (!WIFEXITED(status))
        throw std::runtime_error("the program was ended by signal " +
                                 std::to_string(WTERMSIG(status)));
    return WEXITSTATUS(status);
}

} // namespace

int RunProcess(const std::filesystem::path& program, const ProcessCall& call,
               const ProcessFiles& files)
{
    std::vector<std::string> arguments = ArgumentsOf(program, call);
    std::vector<std::string> variables = EnvironmentOf(call);
    Actions actions;
    actions.Open(STDIN_FILENO, files.input, O_RDONLY);
    actions.Open(STDOUT_FILENO, files.output, O_WRONLY | O_CREAT);
    actions.Open(STDERR_FILENO, files.errors, O_WRONLY | O_CREAT);
    if (!call.folder.empty())
        actions.ChangeFolder(call.folder);
    pid_t child = 0;
    Check(posix_spawnp(&child, program.c_str(), actions.Get(), nullptr, Pointers(arguments).data(),
                       Pointers(variables).data()),
          "posix_spawnp");
    return ExitCodeOf(child);
}

std::filesystem::path ThisProgram()
{
    return std::filesystem::read_symlink("/proc/self/exe");
}

std::string ProgramName(const std::string& name)
{
    return name;
}

std::string ModuleName()
{
    return "libtarnwell.so";
}

} // namespace tarnwell::test
