#include "support/posix/shellrun.h"

#include <array>
#include <cstdio>
#include <stdexcept>

namespace tarnwell::test
{

std::string ShellQuoted(const std::string& text)
{
    std::string quoted = "'";
    for (const char c : text)
        quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return quoted + "'";
}

std::string ShellRun(const std::string& command)
{
    FILE* const pipe = popen(("{ " + command + "; } 2>&1").c_str(), "r");
    std::string output;
    std::array<char, 4096> block;
    for (std::size_t count = 1; count > 0;)
    {
        count = fread(block.data(), 1, block.size(), pipe);
        output.append(block.data(), count);
    }
    if (pclose(pipe) != 0)
        throw std::runtime_error(command + ": " + output);
    if (output.ends_with('\n'))
        output.pop_back();
    return output;
}

} // namespace tarnwell::test
