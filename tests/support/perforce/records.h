// What the stand-in prints for a run with "-G".
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace tarnwell::test::perforce
{

using Fields = std::vector<std::pair<std::string, std::string>>;

// One dictionary, whose first field is its code.
std::string Marshalled(const std::string& code, const Fields& fields);

// A complaint: 2 is a warning, 3 a failure. `generic` is the client's class of it.
std::string Complaint(int severity, int generic, const std::string& words);

} // namespace tarnwell::test::perforce
