// Guards wait for the end of a connection of which only this process holds the other end, so that
// they know when this process has ended.
#include "platform/posix/processes/groupguard.h"

#include "platform/posix/processes/spawnsetup.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdio>
#include <fcntl.h>
#include <mutex>
#include <new>
#include <optional>
#include <pthread.h>
#include <string>
#include <string_view>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace tarnwell::posix
{
namespace
{

// A shell with one end as its input. Its group is that one, or its own. 0 or an errno.
int StartShell(const char* script, std::optional<pid_t> group, FileDescriptor& life,
               ChildProcess& shell)
{
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0)
        return errno;
    const FileDescriptor input(ends[0]);
    const FileDescriptor other(ends[1]);
    // A host that has closed its standard descriptors goes on writing to them.
    life = FileDescriptor(fcntl(other.Get(), F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
    const FileDescriptor nothing(open("/dev/null", O_RDWR | O_CLOEXEC));
    if (!life || !nothing)
        return errno;
    SpawnSetup setup({input.Get(), nothing.Get(), nothing.Get()});
    if (group)
        setup.JoinGroup(*group);
    else
        setup.LeadGroup();
    std::vector<std::string> arguments{"/bin/sh", "-c", script};
    // Without variables, of which some mean something to shells.
    char* const environment[] = {nullptr};
    pid_t id = -1;
    const int number = setup.Spawn(&id, arguments, environment);
    if (number == 0)
        shell.Started(id);
    return number;
}

class SharedGuard
{
public:
    int Watch(pid_t group)
    {
        const std::lock_guard lock(guard_);
        groups_.push_back(group);
        int number = HasLife() ? Tell('+', group) : EPIPE;
        if (number == EAGAIN)
            GiveUp();
        // Somebody has ended it, or had to.
        if (number == EPIPE || number == EAGAIN)
            number = Start();
        if (number != 0)
            groups_.pop_back();
        return number;
    }

    void Leave(pid_t group) noexcept
    {
        const std::lock_guard lock(guard_);
        std::erase(groups_, group);
        if (!HasLife() || Tell('-', group) != EAGAIN)
            return;
        GiveUp();
        if (!groups_.empty())
            TryStart();
    }

    // Around a fork: the copy has no guard, and mustn't keep this one's from seeing the end.
    void Lock()
    {
        guard_.lock();
    }
    void Unlock()
    {
        guard_.unlock();
    }
    void Forget()
    {
        if (HasLife())
            life_ = FileDescriptor();
        groups_.clear();
        Unlock();
    }

private:
    // False, too, if the host has closed whatever was open: the number may be its own by then.
    bool HasLife() noexcept
    {
        struct stat now = {};
        const bool isOurs = fstat(life_.Get(), &now) == 0 && now.st_dev == identity_.st_dev &&
                            now.st_ino == identity_.st_ino;
        if (!isOurs)
            life_.Detach();
        return isOurs;
    }

    // 0 or an errno. Never waits: a guard that was stopped mustn't stop the host.
    int Send(std::string_view lines) noexcept
    {
        const auto sent = Restarted([&] {
            return send(life_.Get(), lines.data(), lines.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
        });
        if (sent >= 0)
            return static_cast<std::size_t>(sent) == lines.size() ? 0 : EAGAIN;
        // Who ends with lines unread resets the connection.
        return errno == ECONNRESET ? EPIPE : errno;
    }

    int Tell(char what, pid_t group) noexcept
    {
        return Send(Line(what, group).data());
    }

    static std::array<char, 32> Line(char what, pid_t group) noexcept
    {
        std::array<char, 32> line;
        std::snprintf(line.data(), line.size(), "%c %ld\n", what, static_cast<long>(group));
        return line;
    }

    // It was stopped, and has more to read than there is room for. It mustn't be left to go on some
    // day: to it the end of its input is the end of the host, and numbers that it wasn't told the
    // end of may be others' by then.
    void GiveUp() noexcept
    {
        kill(-leader_, SIGKILL);
        life_ = FileDescriptor();
    }

    // Without memory the next group's start tries again.
    void TryStart() noexcept
    {
        try
        {
            Start();
        }
        catch (const std::bad_alloc&)
        {
        }
    }

    int Start()
    {
        // The shell itself ends at once. What it leaves has the input by another number, as that of
        // a shell's background is nothing.
        constexpr const char* script =
            "cd /; exec 3<&0; (while read -r what group; do case $what in"
            " +) groups=\"$groups -$group\";;"
            " -) left=; for other in $groups;"
            " do [ $other = -$group ] || left=\"$left $other\"; done; groups=$left;;"
            " esac; done; [ -z \"$groups\" ] || kill -s KILL -- $groups) <&3 3<&- &";
        FileDescriptor life;
        ChildProcess shell;
        const int number = StartShell(script, std::nullopt, life, shell);
        if (number != 0)
            return number;
        leader_ = static_cast<pid_t>(shell.Id());
        shell.Wait();
        life_ = std::move(life);
        if (fstat(life_.Get(), &identity_) != 0)
            return errno;
        // At once, as each piece takes far more room than it has bytes.
        std::string lines;
        for (const pid_t group : groups_)
            lines += Line('+', group).data();
        return Send(lines);
    }

    std::mutex guard_;
    FileDescriptor life_;
    struct stat identity_ = {}; // of that
    pid_t leader_ = 0;          // the number of its own group, which lasts as long as it does
    std::vector<pid_t> groups_;
};

SharedGuard& TheGuard()
{
    // Never deleted: threads may have clients until the process ends.
    alignas(SharedGuard) static std::array<std::byte, sizeof(SharedGuard)> place;
    static SharedGuard* const guard = [] {
        auto* const made = new (place.data()) SharedGuard;
        pthread_atfork([] { TheGuard().Lock(); }, [] { TheGuard().Unlock(); },
                       [] { TheGuard().Forget(); });
        return made;
    }();
    return *guard;
}

} // namespace

int OwnGuard::Start(pid_t group)
{
    return StartShell("read -r word; kill -s KILL 0", group, life_, shell_);
}

int WatchGroup(pid_t group)
{
    return TheGuard().Watch(group);
}

void LeaveGroup(pid_t group) noexcept
{
    TheGuard().Leave(group);
}

} // namespace tarnwell::posix
