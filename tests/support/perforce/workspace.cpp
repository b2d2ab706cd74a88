#include "support/perforce/workspace.h"

#include "support/perforce/options.h"

#include <fstream>
#include <sstream>
#include <utility>

namespace tarnwell::test::perforce
{

namespace
{

namespace fs = std::filesystem;

// "%" is the last to be decoded, and so the first to be encoded.
constexpr std::pair<char, const char*> encoded[] = {
    {'%', "%25"}, {'@', "%40"}, {'#', "%23"}, {'*', "%2A"}};

std::string Encoded(const std::string& name)
{
    std::string text;
    for (const char byte : name)
    {
        std::string code(1, byte);
        for (const auto& [plain, as] : encoded)
            code = byte == plain ? as : code;
        text += code;
    }
    return text;
}

std::string Decoded(const std::string& text)
{
    std::string name;
    for (std::size_t at = 0; at < text.size(); ++at)
    {
        char byte = text[at];
        for (const auto& [plain, as] : encoded)
        {
            if (text.compare(at, 3, as) == 0)
            {
                byte = plain;
                at += 2;
                break;
            }
        }
        name += byte;
    }
    return name;
}

fs::path FileOf(const fs::path& folder, const std::string& name)
{
    return folder / "workspaces" / PathOf(name);
}

void AddLine(Workspace& workspace, const std::string& line)
{
    std::istringstream words(line);
    std::string kind, rest;
    words >> kind;
    if (kind == "have")
    {
        int number = 0;
        words >> number;
        std::getline(words.ignore(), rest);
        workspace.have[rest] = number;
        return;
    }
    Opened opened;
    if (kind == "opened")
        words >> opened.action >> opened.type;
    std::getline(words.ignore(), rest);
    if (kind == "root")
        workspace.root = rest;
    else if (kind == "view")
        workspace.view = rest;
    else if (kind == "opened")
        workspace.opened[rest] = opened;
    else
        throw std::runtime_error("a workspace has a line \"" + line + "\"");
}

} // namespace

Workspace LoadWorkspace(const fs::path& folder, const std::string& name)
{
    std::ifstream lines(FileOf(folder, name), std::ios::binary);
    if (name.empty() || !lines)
        throw Failure("Client '" + name + "' unknown - use 'client' command to create it.\n", 1);
    Workspace workspace;
    workspace.name = name;
    for (std::string line; std::getline(lines, line);)
        AddLine(workspace, line);
    return workspace;
}

void SaveWorkspace(const fs::path& folder, const Workspace& workspace)
{
    fs::create_directories(folder / "workspaces");
    std::ofstream file(FileOf(folder, workspace.name), std::ios::binary);
    file << "root " << workspace.root << "\nview " << workspace.view << "\n";
    for (const auto& [path, number] : workspace.have)
        file << "have " << number << " " << path << "\n";
    for (const auto& [path, opened] : workspace.opened)
        file << "opened " << opened.action << " " << opened.type << " " << path << "\n";
}

void RemoveWorkspace(const fs::path& folder, const std::string& name)
{
    LoadWorkspace(folder, name);
    fs::remove(FileOf(folder, name));
}

fs::path LocalPath(const Workspace& workspace, const std::string& depotPath)
{
    if (!depotPath.starts_with(workspace.view + "/"))
        throw Failure(depotPath + " - file(s) not in client view.\n", 0);
    return PathOf(workspace.root) / PathOf(Decoded(depotPath.substr(workspace.view.size() + 1)));
}

std::string DepotPath(const Workspace& workspace, const fs::path& local)
{
    const std::u8string text = local.generic_u8string();
    const std::u8string root = PathOf(workspace.root).generic_u8string() + u8"/";
    if (!text.starts_with(root))
        throw Failure("Path '" + local.string() + "' is not under client's root.\n", 1);
    const std::u8string below = text.substr(root.size());
    return workspace.view + "/" + Encoded(std::string(below.begin(), below.end()));
}

fs::path PathOf(const std::string& text)
{
    return fs::path(std::u8string(text.begin(), text.end()));
}

} // namespace tarnwell::test::perforce
