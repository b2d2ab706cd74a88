// The stand-in when it is asked with "-G": one path on its input, and records for an answer, in the
// marshalled form of Python that the client's documentation promises.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace tarnwell::test::perforce
{

inline bool IsStrict(const std::vector<std::string>& arguments)
{
    return !arguments.empty() && arguments[0] == "-G";
}

// As `Run`. The run is recorded with the path, behind a "<".
int RunStrict(const std::vector<std::string>& arguments, const std::filesystem::path& folder);

} // namespace tarnwell::test::perforce
