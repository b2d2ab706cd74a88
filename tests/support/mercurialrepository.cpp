#include "support/mercurialrepository.h"

#include "support/clients.h"

namespace tarnwell::test
{

MercurialRepository::MercurialRepository()
{
    if (WhyNoClients().empty())
        Hg("init");
}

std::string MercurialRepository::Hg(std::string_view words) const
{
    return RunClient("hg", Words(words), folder_.Path());
}

std::string MercurialRepository::Commit(std::u16string_view name, std::string_view bytes,
                                        const std::string& description,
                                        const std::vector<std::string>& options) const
{
    const std::u16string path = folder_ / name;
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    WriteBytes(path, bytes);
    // An author among the options is the later one, and so holds.
    std::vector<std::string> arguments = {"commit", "-q",       "-A", "-u", "Ann <ann@example.org>",
                                          "-m",     description};
    arguments.insert(arguments.end(), options.begin(), options.end());
    RunClient("hg", arguments, folder_.Path());
    return Hg("log -r . -T {rev}");
}

} // namespace tarnwell::test
