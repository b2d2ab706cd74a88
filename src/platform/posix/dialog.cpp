#include "platform/posix/dialog.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <spawn.h>
#include <string_view>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace tarnwell::posix
{
namespace
{

bool IsSet(const char* variable)
{
    const char* const value = std::getenv(variable);
    return value != nullptr && *value != 0;
}

// The text with each of the characters `special` replaced by what stands beside it.
std::string Escaped(const std::string& text, std::string_view special,
                    std::initializer_list<const char*> replacements)
{
    std::string escaped;
    for (const char c : text)
    {
        const std::size_t which = special.find(c);
        if (which == std::string_view::npos)
            escaped += c;
        else
            escaped += replacements.begin()[which];
    }
    return escaped;
}

// Each program has its own idea of what its text may hold: escapes here, markup there.
std::vector<std::string> ZenityArguments(const std::string& question)
{
    return {"zenity", "--question", "--no-markup", "--text=" + Escaped(question, "\\", {"\\\\"})};
}

std::vector<std::string> KdialogArguments(const std::string& question)
{
    const std::string text = Escaped(question, "&<>", {"&amp;", "&lt;", "&gt;"});
    return {"kdialog", "--yesno", "<qt>" + text + "</qt>"};
}

// How the program is started: no input or output of the host's, no descriptors, and signals as
// a fresh program expects them.
class SpawnSetup
{
public:
    SpawnSetup()
    {
        posix_spawn_file_actions_init(&actions_);
        posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_addopen(&actions_, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
        posix_spawn_file_actions_adddup2(&actions_, STDOUT_FILENO, STDERR_FILENO);
        posix_spawn_file_actions_addclosefrom_np(&actions_, STDERR_FILENO + 1);

        sigset_t none;
        sigemptyset(&none);
        sigset_t restored;
        sigemptyset(&restored);
        for (const int signal : {SIGPIPE, SIGCHLD, SIGINT})
            sigaddset(&restored, signal);
        posix_spawnattr_init(&attributes_);
        posix_spawnattr_setsigmask(&attributes_, &none);
        posix_spawnattr_setsigdefault(&attributes_, &restored);
        posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    }
    SpawnSetup(const SpawnSetup&) = delete;
    SpawnSetup& operator=(const SpawnSetup&) = delete;
    ~SpawnSetup()
    {
        posix_spawnattr_destroy(&attributes_);
        posix_spawn_file_actions_destroy(&actions_);
    }

    // 0 or an errno.
    int Spawn(pid_t* child, std::vector<std::string>& arguments) const
    {
        std::vector<char*> pointers;
        for (std::string& argument : arguments)
            pointers.push_back(argument.data());
        pointers.push_back(nullptr);
        return posix_spawnp(child, pointers[0], &actions_, &attributes_, pointers.data(), environ);
    }

private:
    posix_spawn_file_actions_t actions_;
    posix_spawnattr_t attributes_;
};

// Where the host takes the exit code away from us, nobody is known to have said yes.
bool EndsWithYes(pid_t child)
{
    int status = -1;
    pid_t ended = -1;
    do
        ended = waitpid(child, &status, 0);
    while (ended < 0 && errno == EINTR);
    return ended == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

} // namespace

std::optional<bool> AskByDialog(const std::string& question)
{
    if (!IsSet("DISPLAY") && !IsSet("WAYLAND_DISPLAY"))
        return std::nullopt;
    const SpawnSetup setup;
    for (const auto& argumentsFor : {ZenityArguments, KdialogArguments})
    {
        std::vector<std::string> arguments = argumentsFor(question);
        pid_t child = -1;
        if (setup.Spawn(&child, arguments) == 0)
            return EndsWithYes(child);
    }
    return std::nullopt;
}

} // namespace tarnwell::posix
