// The ways in which the client is known to fail, by the names that a depot's description has for
// them.
#pragma once

#include <string>

namespace tarnwell::test::perforce
{

struct Way
{
    const char* name;
    const char* text;
    int exitCode;
    bool worksFirst; // does what it was asked for, and complains then
};

// Throws if there is none of that name.
const Way& WayNamed(const std::string& name);

[[noreturn]] void Fail(const Way& way);

} // namespace tarnwell::test::perforce
