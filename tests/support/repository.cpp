#include "support/repository.h"

#include "support/clients.h"

#include <filesystem>

namespace tarnwell::test
{

Repository::Repository()
{
    if (WhyNoClients().empty())
        Git("init -q -b main");
}

std::string Repository::Git(std::string_view words) const
{
    return Run(Words(words));
}

std::string Repository::Commit(std::u16string_view name, std::string_view bytes,
                               const std::string& subject, const std::string& author) const
{
    const std::u16string path = folder_ / name;
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    WriteBytes(path, bytes);
    Git("add -A");
    Run({"commit", "-q", "--allow-empty-message", "--allow-empty",
         "--author=" + author + " <a@example.org>", "-m", subject});
    return Git("rev-parse HEAD");
}

void Repository::RemoveObject(const std::string& name) const
{
    namespace fs = std::filesystem;
    const std::string id = Run({"rev-parse", name});
    const fs::path file = fs::path(folder_ / u".git/objects") / id.substr(0, 2) / id.substr(2);
    fs::permissions(file, fs::perms::owner_all);
    fs::remove(file);
}

std::string Repository::Run(std::vector<std::string> arguments) const
{
    const std::vector<std::string> user = Words("-c user.name=Ann -c user.email=ann@example.org");
    arguments.insert(arguments.begin(), user.begin(), user.end());
    return RunClient("git", arguments, folder_.Path());
}

} // namespace tarnwell::test
