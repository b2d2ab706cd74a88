// What the stand-in for the Perforce client does.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace tarnwell::test::perforce
{

// Runs with these arguments (UTF-8) on the depot in the folder, and adds a line with them to the
// file "runs" there. Returns the exit code.
int Run(const std::vector<std::string>& arguments, const std::filesystem::path& folder);

// Adds a line with the arguments to the file "runs" in the folder.
void Record(const std::vector<std::string>& arguments, const std::filesystem::path& folder);

// Standard output changes no line ends any more.
void PrintBytesFromNowOn();

} // namespace tarnwell::test::perforce
