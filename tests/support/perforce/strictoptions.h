// The stand-in's command line for runs with "-G", taken as strictly as the module has to write it.
#pragma once

#include <set>
#include <string>
#include <vector>

namespace tarnwell::test::perforce
{

struct StrictCall
{
    std::string user; // empty: not given
    std::string port;
    std::string command;
    std::set<std::string> options;
    int most = 0; // of "-m"; 0 is all
    std::string spec;

    bool Has(const std::string& option) const
    {
        return options.find(option) != options.end();
    }
};

// Other options, others in front, and a variable that lets settings of a folder or aliases in are a
// Failure.
StrictCall ParseStrictCall(const std::vector<std::string>& arguments, const std::string& spec);

} // namespace tarnwell::test::perforce
