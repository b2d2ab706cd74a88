// Groups of processes, each with a guard (groupguard.h). Where the host leaves its children's ends
// to whoever has started them, as nearly all do, the first process keeps the group's number also
// when it has ended, and one guard does for all groups. Else each has one of its own, which does
// that.
#include "platform/clientgroup.h"

#include "platform/posix/errors/errnotable.h"
#include "platform/posix/errors/lasterror.h"
#include "platform/posix/files/filehandle.h"
#include "platform/posix/files/handleobject.h"
#include "platform/posix/processes/groupguard.h"
#include "platform/posix/processes/start.h"

#include <atomic>
#include <cerrno>
#include <csignal>
#include <memory>
#include <new>
#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

namespace tarnwell::posix
{
namespace
{

// It was seen to do so, whatever its disposition says.
std::atomic<bool> hostTakesEnds = false;

class ClientGroup : public HandleObject
{
public:
    // `ending` can be read once the group was ended.
    explicit ClientGroup(FileDescriptor ending) : ending_(std::move(ending)) {}
    ~ClientGroup() override
    {
        End();
    }

    // As CreateProcessW. The first process is the group's first, too: the guard is started while
    // that already works.
    BOOL StartProcess(StartRequest request, PROCESS_INFORMATION* information)
    {
        if (hasEnded_)
            return Fail(ERROR_INVALID_HANDLE);
        const bool isFirst = id_ == 0;
        request.group = isFirst ? StartRequest::ownGroup : id_;
        if (isFirst)
        {
            ChooseGuard();
            request.child = first_;
        }
        if (!posix::StartProcess(request, information))
            return 0;
        if (!isFirst)
            return 1;
        id_ = static_cast<pid_t>(information->dwProcessId);
        const int number = TryGuarding();
        if (number == 0)
            return 1;
        End();
        WaitForSingleObject(information->hProcess, INFINITE);
        CloseHandle(information->hThread);
        CloseHandle(information->hProcess);
        return Fail(ErrorFromErrno(number));
    }

    void End()
    {
        hasEnded_ = true;
        eventfd_write(ending_.Get(), 1);
        if (id_ == 0)
            return;
        if (!isShared_ || IsStillOurs())
            kill(-id_, SIGKILL);
        if (isShared_)
            LeaveGroup(id_);
        else
            guard_.Wait();
        first_->LetGo();
        id_ = 0;
    }

    // For any thread.
    int Ending() const
    {
        return ending_.Get();
    }

    int Wait() override
    {
        return first_->Wait();
    }

private:
    void ChooseGuard()
    {
        struct sigaction now = {};
        sigaction(SIGCHLD, nullptr, &now);
        isShared_ =
            now.sa_handler == SIG_DFL && (now.sa_flags & SA_NOCLDWAIT) == 0 && !hostTakesEnds;
        if (isShared_)
            first_->Keep();
    }

    // A host that waits for all children takes the first process, too. What that has left still has
    // the group's number, which then is no process's.
    bool IsStillOurs() const
    {
        if (first_->HasNumber())
            return true;
        hostTakesEnds = true;
        return kill(id_, 0) != 0 && errno == ESRCH;
    }

    // 0 or an errno.
    int TryGuarding()
    {
        try
        {
            return Guard();
        }
        catch (const std::bad_alloc&)
        {
            return ENOMEM;
        }
    }

    int Guard()
    {
        if (isShared_)
            return WatchGroup(id_);
        const int number = guard_.Start(id_);
        // A host that takes no notice of its children's ends: all of the group has ended.
        const bool isGone = number == EPERM || number == ESRCH;
        if (isGone)
            id_ = 0;
        return isGone ? 0 : number;
    }

    const FileDescriptor ending_;
    bool isShared_ = false;
    OwnGuard guard_; // unless it is the shared one
    const std::shared_ptr<ChildProcess> first_ = std::make_shared<ChildProcess>();
    pid_t id_ = 0; // the first process's; 0 if none was started, and once it has been ended
    bool hasEnded_ = false;
};

} // namespace
} // namespace tarnwell::posix

using namespace tarnwell::posix;

extern "C" HANDLE CreateClientGroup()
{
    FileDescriptor ending(eventfd(0, EFD_CLOEXEC));
    if (!ending)
    {
        FailWithErrno();
        return INVALID_HANDLE_VALUE;
    }
    try
    {
        HandleObject* const handle = std::make_unique<ClientGroup>(std::move(ending)).release();
        return handle;
    }
    catch (const std::bad_alloc&)
    {
        Fail(ERROR_NOT_ENOUGH_MEMORY);
        return INVALID_HANDLE_VALUE;
    }
}

extern "C" BOOL StartInGroup(HANDLE group, LPWSTR commandLine, LPVOID environment, LPCWSTR folder,
                             STARTUPINFOW* startup, PROCESS_INFORMATION* information)
{
    auto* const handle = dynamic_cast<ClientGroup*>(ObjectOf(group));
    if (handle == nullptr)
        return Fail(ERROR_INVALID_HANDLE);
    return handle->StartProcess(
        {commandLine, static_cast<LPCWSTR>(environment), folder, startup, 0, nullptr}, information);
}

extern "C" BOOL EndClientGroup(HANDLE group)
{
    auto* const handle = dynamic_cast<ClientGroup*>(ObjectOf(group));
    if (handle == nullptr)
        return Fail(ERROR_INVALID_HANDLE);
    handle->End();
    return 1;
}

extern "C" BOOL ReadPipe(HANDLE group, HANDLE pipe, void* buffer, DWORD size, DWORD* read)
{
    *read = 0;
    const auto* const handle = dynamic_cast<const ClientGroup*>(ObjectOf(group));
    if (handle == nullptr)
        return Fail(ERROR_INVALID_HANDLE);
    const int descriptor = DescriptorOf(pipe);
    pollfd waited[] = {{descriptor, POLLIN, 0}, {handle->Ending(), POLLIN, 0}};
    if (Restarted([&] { return poll(waited, std::size(waited), -1); }) < 0)
        return FailWithErrno();
    if (waited[0].revents == 0)
        return Fail(ERROR_BROKEN_PIPE);
    const ssize_t count = Restarted([&] { return ::read(descriptor, buffer, size); });
    if (count < 0)
        return FailOnDescriptor(descriptor);
    *read = static_cast<DWORD>(count);
    return 1;
}
