#include "platform/child/commands.h"

#include <cstdio>
#include <filesystem>

namespace tarnwell::test
{
namespace
{

void WriteErrorText(std::size_t size)
{
    const std::string text(size, 'e');
    std::fwrite(text.data(), 1, text.size(), stderr);
}

std::size_t ReadInput()
{
    std::size_t size = 0;
    while (std::getchar() != EOF)
        ++size;
    return size;
}

} // namespace

void Print(const std::vector<std::string>& texts)
{
    for (const std::string& text : texts)
        std::fwrite(text.c_str(), 1, text.size() + 1, stdout);
}

int RunCommand(const std::vector<std::string>& arguments,
               const std::vector<std::string>& environment)
{
    const std::string command = arguments.empty() ? "" : arguments[0];
    if (command == "arguments")
        Print({arguments.begin() + 1, arguments.end()});
    else if (command == "environment")
        Print(environment);
    else if (command == "folder")
        Print({std::filesystem::current_path().string()});
    else if (command == "input")
        Print({std::to_string(ReadInput())});
    else if (command == "error" && arguments.size() == 2)
        WriteErrorText(std::stoul(arguments[1]));
    else if (command == "exit" && arguments.size() == 2)
        return std::stoi(arguments[1]);
    else
        return unknownCommand;
    return 0;
}

} // namespace tarnwell::test
