// What the command-line clients of the version-control systems are called, and where one of them
// is run.
#pragma once

namespace tarnwell
{

struct ClientNames
{
    const char16_t* git;
    const char16_t* mercurial;
    const char16_t* subversion;
    const char16_t* perforce;
    const char16_t* rootFolder; // the root of the (current) drive
};

extern const ClientNames clientNames;

} // namespace tarnwell
