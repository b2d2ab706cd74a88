// Who ends groups of processes when this process has ended, however it did.
#pragma once

#include "platform/posix/processes/childprocess.h"

namespace tarnwell::posix
{

// One that is in the group itself, so that the group's number goes to no other for as long as this
// lives, whatever the host does with its children's ends. Starting a process for each group is
// dear.
class OwnGuard
{
public:
    // 0 or an errno: EPERM or ESRCH if all of the group has ended.
    int Start(pid_t group);
    // Once the group was ended.
    int Wait()
    {
        return shell_.Wait();
    }

private:
    FileDescriptor life_;
    ChildProcess shell_;
};

// One for all groups of this process, in none of them: who starts a group keeps its number. It is
// no child of the host, which may wait for all that it has, and it isn't ended before the host. 0
// or an errno.
int WatchGroup(pid_t group);
// To be called for as long as the number is the group's.
void LeaveGroup(pid_t group) noexcept;

} // namespace tarnwell::posix
