// The commands, each in its own file in commands/.
#pragma once

#include "session.h"

#include <span>

namespace tarnwell::host
{

inline constexpr int exitDone = 0;
inline constexpr int exitFailed = 1;
inline constexpr int exitUsage = 2;
// `compare` only: there are differences.
inline constexpr int exitDifferent = 3;

// All return the exit code, and throw Failure or UsageError.
int List(const Session& session);
int Stat(const Session& session);
int Cat(const Session& session);
int Log(const Session& session);
int Put(const Session& session);
int Copy(const Session& session);
int MakeFolder(const Session& session);
int Remove(const Session& session);
int MakeTempFile(const Session& session);
int Compare(const Session& session);
int SelfCheck(const Session& session);

struct Command
{
    const char16_t* name;
    const char16_t* operands;
    const char16_t* help;
    std::size_t fewest;
    std::size_t most;
    int (*run)(const Session& session);
    // Whether -p, and -r, mean something to it.
    bool takesParents = false;
    bool takesRecursive = false;
};

std::span<const Command> Commands();

} // namespace tarnwell::host
