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
int Find(const Session& session);
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

// An option that this command takes and most others don't.
struct OwnOption
{
    const char16_t* name;
    Word help;
};

struct Example
{
    // Behind the program's name; with a "|" in it, a whole line.
    const char16_t* line;
    Word what;
};

struct Command
{
    const char16_t* name;
    // Own options included, for the user.
    const char16_t* operands;
    Word summary;
    // More of it, or Word::None.
    Word more;
    std::size_t fewest;
    std::size_t most;
    // Null for help, which needs no module.
    int (*run)(const Session& session);
    std::span<const Example> examples;
    std::span<const OwnOption> own = {};
};

std::span<const Command> Commands();

// Null if there is none of this name.
const Command* FindCommand(std::u16string_view name);

} // namespace tarnwell::host
