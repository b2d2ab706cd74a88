// How other programs are started.
#pragma once

#include "platform/posix/files/filehandle.h"

#include <array>
#include <spawn.h>
#include <string>
#include <sys/types.h>
#include <vector>

namespace tarnwell::posix
{

// The descriptors that become a child's 0, 1 and 2.
using StandardDescriptors = std::array<int, 3>;

// A child gets three descriptors and no others, and signals as a fresh program expects them.
// Never by fork, which takes long for a large host.
class SpawnSetup
{
public:
    explicit SpawnSetup(const StandardDescriptors& standard);
    SpawnSetup(const SpawnSetup&) = delete;
    SpawnSetup& operator=(const SpawnSetup&) = delete;
    ~SpawnSetup();

    // The child is the first of a group of processes, or one more of it.
    void LeadGroup();
    void JoinGroup(pid_t group);

    // The child starts in this open folder.
    void EnterFolder(FileDescriptor folder);

    // `arguments` begin with the program, searched for as FindProgram does; `environment` ends in
    // null.
    // 0 or an errno.
    int Spawn(pid_t* child, std::vector<std::string>& arguments, char* const* environment);

private:
    void SetSignals();
    void SetDescriptors();
    void SetGroup(pid_t group);
    // Keeps the first errno there is.
    void Keep(int number);

    StandardDescriptors standard_;
    std::array<FileDescriptor, 3> copies_;
    FileDescriptor folder_;
    // Empty, so that they can be destroyed also if they could not be made.
    posix_spawn_file_actions_t actions_ = {};
    posix_spawnattr_t attributes_ = {};
    int errno_ = 0;
};

// The texts as the system takes them: pointers, the last one null.
std::vector<char*> Pointers(std::vector<std::string>& texts);

} // namespace tarnwell::posix
