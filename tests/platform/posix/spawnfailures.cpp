// A start of which any step fails. The linker puts a function of this file before each
// (CMakeLists.txt).
#include "platform/childrun.h"

#include <gmock/gmock.h>

#include <cerrno>
#include <spawn.h>
#include <string_view>

namespace
{

// The step that fails, and with what.
std::string_view failing;
int failure = 0;
int failures = 0;

bool Fails(std::string_view step)
{
    if (step != failing)
        return false;
    ++failures;
    return true;
}

} // namespace

#define STEP(name, parameters, arguments)                                                          \
    extern "C" int __real_##name parameters;                                                       \
    extern "C" int __wrap_##name parameters;                                                       \
    extern "C" int __wrap_##name parameters                                                        \
    {                                                                                              \
        return Fails(#name) ? failure : __real_##name arguments;                                   \
    }

STEP(posix_spawn_file_actions_init, (posix_spawn_file_actions_t * actions), (actions))
STEP(posix_spawnattr_init, (posix_spawnattr_t * attributes), (attributes))
STEP(posix_spawnattr_setsigmask, (posix_spawnattr_t * attributes, const sigset_t* set),
     (attributes, set))
STEP(posix_spawnattr_setsigdefault, (posix_spawnattr_t * attributes, const sigset_t* set),
     (attributes, set))
STEP(posix_spawnattr_setflags, (posix_spawnattr_t * attributes, short flags), (attributes, flags))
STEP(posix_spawn_file_actions_adddup2, (posix_spawn_file_actions_t * actions, int from, int to),
     (actions, from, to))
STEP(posix_spawn_file_actions_addfchdir_np, (posix_spawn_file_actions_t * actions, int folder),
     (actions, folder))
STEP(posix_spawn_file_actions_addclosefrom_np, (posix_spawn_file_actions_t * actions, int from),
     (actions, from))
STEP(posix_spawn,
     (pid_t * id, const char* path, const posix_spawn_file_actions_t* actions,
      const posix_spawnattr_t* attributes, char* const* arguments, char* const* environment),
     (id, path, actions, attributes, arguments, environment))

namespace tarnwell::test
{
namespace
{

class SpawnFailures : public testing::Test
{
protected:
    static DWORD ErrorWhere(std::string_view step, int number)
    {
        failing = step;
        failure = number;
        failures = 0;
        const Ended ended = RunChild({u"exit", u"0"}, {.folder = u"/"});
        failing = {};
        EXPECT_GE(failures, 1) << step;
        EXPECT_FALSE(ended.exitCode) << step << ": nothing was started";
        return ended.startError;
    }
};

TEST_F(SpawnFailures, OfAnyStepIsTheStarts)
{
    for (const std::string_view step :
         {"posix_spawn_file_actions_init", "posix_spawnattr_init", "posix_spawnattr_setsigmask",
          "posix_spawnattr_setsigdefault", "posix_spawnattr_setflags",
          "posix_spawn_file_actions_adddup2", "posix_spawn_file_actions_addfchdir_np",
          "posix_spawn_file_actions_addclosefrom_np", "posix_spawn"})
        EXPECT_EQ(ErrorWhere(step, ENOMEM), ERROR_NOT_ENOUGH_MEMORY) << step;
}

// Not the one of a device that isn't ready.
TEST_F(SpawnFailures, OfTheProcessLimitHasACodeOfItsOwn)
{
    EXPECT_EQ(ErrorWhere("posix_spawn", EAGAIN), ERROR_NO_SYSTEM_RESOURCES);
}

} // namespace
} // namespace tarnwell::test
