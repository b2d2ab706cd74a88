// Runs the host program as its user does: arguments, standard input, working folder and
// environment in, output and exit code out.
#pragma once

#include "support/process.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace tarnwell::test
{

using HostCall = ProcessCall;
using HostRun = ProcessRun;

HostRun RunHost(const HostCall& call);
HostRun RunHost(const std::vector<std::u16string>& arguments);

// The same with the prescribed calls, which hosts of the first version know.
HostRun RunPrescribed(HostCall call);
HostRun RunPrescribed(const std::vector<std::u16string>& arguments);

// The host program, beside this test program.
std::filesystem::path HostProgram();
// The module beside it.
std::filesystem::path ModuleFile();

// The parts of the output between line feeds.
std::vector<std::string> LinesOf(std::string_view text);

std::string Utf8(std::u16string_view text);

} // namespace tarnwell::test
