#include "platform/child/commands.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <thread>

namespace tarnwell::test
{
namespace
{

void WriteErrorText(std::size_t size)
{
    const std::string text(size, 'e');
    std::fwrite(text.data(), 1, text.size(), stderr);
}

// Both streams at once, in pieces.
void WriteBoth(std::size_t size)
{
    constexpr std::size_t piece = 1000; // bytes
    const std::string output(piece, 'o');
    const std::string errors(piece, 'e');
    for (std::size_t left = size; left > 0; left -= std::min(left, piece))
    {
        const std::size_t count = std::min(left, piece);
        std::fwrite(output.data(), 1, count, stdout);
        std::fwrite(errors.data(), 1, count, stderr);
    }
}

// Each line of the input at once, until its end.
void Answer()
{
    for (int byte = std::getchar(); byte != EOF; byte = std::getchar())
    {
        std::putchar(byte);
        if (byte == '\n')
            std::fflush(stdout);
    }
}

std::size_t ReadInput()
{
    std::size_t size = 0;
    while (std::getchar() != EOF)
        ++size;
    return size;
}

} // namespace

bool Await(const std::string& started, const std::string& told)
{
    std::ofstream(started).close();
    constexpr int patience = 60'000; // in milliseconds
    // Whose test has ended, and taken its files away, is told nothing any more.
    const auto mayBeTold = [&] {
        return std::filesystem::exists(started) && !std::filesystem::exists(told);
    };
    for (int i = 0; i < patience && mayBeTold(); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    return std::filesystem::exists(told);
}

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
    else if (command == "answer")
        Answer();
    else if (command == "error" && arguments.size() == 2)
        WriteErrorText(std::stoul(arguments[1]));
    else if (command == "both" && arguments.size() == 2)
        WriteBoth(std::stoul(arguments[1]));
    else if (command == "complain" && arguments.size() == 2)
        std::fputs(arguments[1].c_str(), stderr);
    else if (command == "await" && arguments.size() == 3)
        return Await(arguments[1], arguments[2]) ? 0 : untold;
    else if (command == "exit" && arguments.size() == 2)
        return std::stoi(arguments[1]);
    else
        return unknownCommand;
    return 0;
}

} // namespace tarnwell::test
