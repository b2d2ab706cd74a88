#include "platform/posix/processes/spawnsetup.h"

#include "platform/posix/processes/programsearch.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace tarnwell::posix
{
namespace
{

constexpr int firstOther = STDERR_FILENO + 1;
constexpr short usualFlags = POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF;

} // namespace

SpawnSetup::SpawnSetup(const StandardDescriptors& standard) : standard_(standard)
{
    Keep(posix_spawn_file_actions_init(&actions_));
    Keep(posix_spawnattr_init(&attributes_));
    SetSignals();
    SetDescriptors();
}

SpawnSetup::~SpawnSetup()
{
    posix_spawnattr_destroy(&attributes_);
    posix_spawn_file_actions_destroy(&actions_);
}

void SpawnSetup::SetSignals()
{
    sigset_t none;
    sigemptyset(&none);
    sigset_t restored;
    sigemptyset(&restored);
    for (const int signal : {SIGPIPE, SIGCHLD, SIGINT})
        sigaddset(&restored, signal);
    Keep(posix_spawnattr_setsigmask(&attributes_, &none));
    Keep(posix_spawnattr_setsigdefault(&attributes_, &restored));
    Keep(posix_spawnattr_setflags(&attributes_, usualFlags));
}

// A host may have closed its own standard descriptors, and then a given one can have any of these
// numbers. The copies keep it from being overwritten before it is read.
void SpawnSetup::SetDescriptors()
{
    for (std::size_t i = 0; i < standard_.size(); ++i)
    {
        int& source = standard_[i];
        if (source >= 0 && source < firstOther)
        {
            copies_[i] = FileDescriptor(fcntl(source, F_DUPFD_CLOEXEC, firstOther));
            Keep(copies_[i] ? 0 : errno);
            source = copies_[i].Get();
        }
        Keep(posix_spawn_file_actions_adddup2(&actions_, source, static_cast<int>(i)));
    }
}

void SpawnSetup::LeadGroup()
{
    SetGroup(0);
}

void SpawnSetup::JoinGroup(pid_t group)
{
    SetGroup(group);
}

void SpawnSetup::SetGroup(pid_t group)
{
    Keep(posix_spawnattr_setpgroup(&attributes_, group));
    Keep(posix_spawnattr_setflags(&attributes_,
                                  static_cast<short>(usualFlags | POSIX_SPAWN_SETPGROUP)));
}

void SpawnSetup::EnterFolder(FileDescriptor folder)
{
    folder_ = std::move(folder);
    if (folder_.Get() < firstOther)
        folder_ = FileDescriptor(fcntl(folder_.Get(), F_DUPFD_CLOEXEC, firstOther));
    Keep(folder_ ? posix_spawn_file_actions_addfchdir_np(&actions_, folder_.Get()) : errno);
}

int SpawnSetup::Spawn(pid_t* child, std::vector<std::string>& arguments, char* const* environment)
{
    Keep(posix_spawn_file_actions_addclosefrom_np(&actions_, firstOther));
    if (errno_ != 0)
        return errno_;
    // Before the folder is changed, and by nobody but us.
    const std::optional<std::string> program = FindProgram(arguments[0]);
    if (!program)
        return ENOENT;
    const std::vector<char*> pointers = Pointers(arguments);
    return posix_spawn(child, program->c_str(), &actions_, &attributes_, pointers.data(),
                       environment);
}

void SpawnSetup::Keep(int number)
{
    if (errno_ == 0)
        errno_ = number;
}

std::vector<char*> Pointers(std::vector<std::string>& texts)
{
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (std::string& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

} // namespace tarnwell::posix
