// One program run to its end.
#pragma once

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace tarnwell::test
{

struct ProcessCall
{
    std::vector<std::u16string> arguments = {};
    std::string input = {};
    // Variables in addition to those of the test; an empty value removes one.
    std::vector<std::pair<std::string, std::string>> environment = {};
    // Empty: that of the test.
    std::filesystem::path folder = {};
};

struct ProcessRun
{
    int exitCode;
    std::string output;
    std::string errors;
};

// A program without a folder is searched for. Throws if it can't be started or ends by itself
// otherwise.
ProcessRun RunProcess(const std::filesystem::path& program, const ProcessCall& call);

// What its standard streams are.
struct ProcessFiles
{
    std::filesystem::path input;
    std::filesystem::path output;
    std::filesystem::path errors;
};

// The same, with files of the caller's; returns the exit code.
int RunProcess(const std::filesystem::path& program, const ProcessCall& call,
               const ProcessFiles& files);

std::filesystem::path ThisProgram();
// As in "program.exe" and "libname.so".
std::string ProgramName(const std::string& name);
std::string ModuleName();

} // namespace tarnwell::test
