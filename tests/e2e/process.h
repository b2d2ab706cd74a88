// One program run to its end, with files as its standard streams.
#pragma once

#include "e2e/hostrun.h"

namespace tarnwell::test
{

struct ProcessFiles
{
    std::filesystem::path input;
    std::filesystem::path output;
    std::filesystem::path errors;
};

// Returns the exit code. Throws if the program can't be started or ends by itself otherwise.
int RunProcess(const std::filesystem::path& program, const HostCall& call,
               const ProcessFiles& files);

std::filesystem::path ThisProgram();
// As in "program.exe" and "libname.so".
std::string ProgramName(const std::string& name);
std::string ModuleName();

} // namespace tarnwell::test
