// What the command-line clients of the version-control systems are called, where one of them is
// run, and how they end their lines.
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
    bool printReturns;          // whether they end their lines in a carriage return and a line feed
};

extern const ClientNames clientNames;

} // namespace tarnwell
