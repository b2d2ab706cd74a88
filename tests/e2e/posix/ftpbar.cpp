#include "e2e/posix/ftpbar.h"

#include <fstream>
#include <regex>

namespace tarnwell::test
{

void MakeLarge(const std::filesystem::path& path)
{
    std::ofstream(path).flush();
    std::filesystem::resize_file(path, largeSize);
    std::filesystem::permissions(path, std::filesystem::perms::all);
}

std::string BarFor(const std::string& address)
{
    return R"(\[#* *\] +\d+ %, \d+(\.\d+)? [KMG]iB, \d+(\.\d+)? [KMG]iB/s, )" + address;
}

bool Shows(const std::string& shown, const std::string& pattern)
{
    return std::regex_search(shown, std::regex(pattern));
}

TerminalRun RunUntil(const std::string& pattern, const std::vector<std::string>& arguments)
{
    constexpr std::size_t seen = 65536;
    bool isTyped = false;
    return RunOnTerminal(arguments, [&](const std::string& shown) -> std::string {
        if (isTyped || !Shows(shown.substr(0, seen), pattern))
            return {};
        isTyped = true;
        return ctrlC;
    });
}

} // namespace tarnwell::test
