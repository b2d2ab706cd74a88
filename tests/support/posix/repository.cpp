#include "support/posix/repository.h"

#include <array>
#include <cstdio>
#include <memory>
#include <stdexcept>

namespace tarnwell::test
{
namespace
{

std::string Quoted(const std::string& text)
{
    std::string quoted = "'";
    for (const char c : text)
        quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return quoted + "'";
}

} // namespace

Repository::Repository()
{
    Git("init -q -b main");
}

std::string Repository::Git(const std::string& arguments) const
{
    const std::string command = "cd " + Quoted(folder_.Path().string()) +
                                " && HOME=" + Quoted(folder_.Path().string()) +
                                " GIT_CONFIG_NOSYSTEM=1 LC_ALL=C.UTF-8 git -c user.name=Ann"
                                " -c user.email=ann@example.org " +
                                arguments + " 2>&1";
    int status = -1;
    std::string output;
    {
        FILE* const pipe = popen(command.c_str(), "r");
        std::array<char, 4096> block;
        for (std::size_t count = 1; count > 0;)
        {
            count = fread(block.data(), 1, block.size(), pipe);
            output.append(block.data(), count);
        }
        status = pclose(pipe);
    }
    if (status != 0)
        throw std::runtime_error("git " + arguments + ": " + output);
    if (output.ends_with('\n'))
        output.pop_back();
    return output;
}

std::string Repository::Commit(std::u16string_view name, std::string_view bytes,
                               const std::string& subject, const std::string& author) const
{
    const std::u16string path = folder_ / name;
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    WriteBytes(path, bytes);
    Git("add -A");
    Git("commit -q --allow-empty-message --allow-empty --author=" +
        Quoted(author + " <a@example.org>") + " -m " + Quoted(subject));
    return Git("rev-parse HEAD");
}

} // namespace tarnwell::test
