#include "support/mercurialrepository.h"

#include "support/clients.h"

#include <tarnwell/text.h>

#include <stdexcept>

namespace tarnwell::test
{

namespace
{

namespace fs = std::filesystem;

// An empty repository, made once.
const fs::path& EmptyRepository()
{
    static const TempFolder folder;
    static const std::string made = RunClient("hg", {"init"}, folder.Path());
    return folder.Path();
}

// By the client's own quicker form: a server of it is started once, and each run is a child of
// that. The server ends soon after the folder of its socket has gone. Under Wine the relay names
// the folder.
std::string RunMercurial(const std::vector<std::string>& arguments, const fs::path& folder)
{
    static const TempFolder sockets;
    return RunClient("chg", arguments, folder,
                     {{"CHGSOCKNAME", EncodeName(sockets / u"server").value()}});
}

// Out of "committed changeset 12:0123456789ab".
std::string NumberIn(const std::string& output)
{
    constexpr std::string_view before = "committed changeset ";
    const std::size_t at = output.rfind(before);
    if (at == std::string::npos)
        throw std::runtime_error("nothing was committed: " + output);
    const std::size_t begin = at + before.size();
    return output.substr(begin, output.find(':', begin) - begin);
}

} // namespace

MercurialRepository::MercurialRepository()
{
    if (!WhyNoClients().empty())
        return;
    const fs::path& empty = EmptyRepository();
    for (const auto& entry : fs::recursive_directory_iterator(empty))
    {
        const fs::path target = folder_.Path() / entry.path().lexically_relative(empty);
        if (entry.is_directory())
            fs::create_directory(target);
        else
            fs::copy_file(entry.path(), target);
    }
}

std::string MercurialRepository::Hg(std::string_view words) const
{
    return Run(Words(words));
}

std::string MercurialRepository::Run(const std::vector<std::string>& arguments) const
{
    return RunMercurial(arguments, folder_.Path());
}

std::string MercurialRepository::Commit(std::u16string_view name, std::string_view bytes,
                                        const std::string& description,
                                        const std::vector<std::string>& options) const
{
    const std::u16string path = folder_ / name;
    fs::create_directories(fs::path(path).parent_path());
    WriteBytes(path, bytes);
    // An author among the options is the later one, and so holds.
    std::vector<std::string> arguments = {"commit", "-v",       "-A", "-u", "Ann <ann@example.org>",
                                          "-m",     description};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return NumberIn(Run(arguments));
}

} // namespace tarnwell::test
