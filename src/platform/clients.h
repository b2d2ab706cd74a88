// The command-line clients of the version-control systems: what they are called, where they run,
// how they take and print text, what is in their environment, and whether they are there.
#pragma once

#include "platform/win32.h"

#include <span>

namespace tarnwell
{

struct ClientNames
{
    const char16_t* git;
    const char16_t* mercurial;
    const char16_t* subversion;
    const char16_t* perforce;
    const char16_t* rootFolder; // the root of the (current) drive
    bool printReturns;          // whether they end their lines in a carriage return and a line feed
    bool takeBytes;             // whether an argument is bytes to them, and not text
};

extern const ClientNames clientNames;

// "NAME=VALUE": what every client has in its environment in the place of the host's variables of
// these names.
extern const std::span<const char16_t* const> clientVariables;

} // namespace tarnwell

// Whether a program of this name would be found.
extern "C" BOOL FindClient(LPCWSTR program);
