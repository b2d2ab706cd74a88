#include "support/perforce/changing.h"

#include "support/perforce/workspace.h"

#include <algorithm>
#include <ctime>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>

namespace tarnwell::test::perforce
{

namespace
{

namespace fs = std::filesystem;

constexpr fs::perms writing =
    fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;

const File* FileAt(const Depot& depot, const std::string& path)
{
    const auto found = std::find_if(depot.files.begin(), depot.files.end(),
                                    [&](const File& file) { return file.path == path; });
    return found == depot.files.end() ? nullptr : &*found;
}

const File& ExistingFileAt(const Depot& depot, const std::string& path)
{
    const File* const file = FileAt(depot, path);
    if (file == nullptr)
        throw Failure(path + " - no such file(s).\n", 0);
    return *file;
}

int HadRevision(const Workspace& workspace, const std::string& path)
{
    const auto had = workspace.have.find(path);
    return had == workspace.have.end() ? 0 : had->second;
}

void RequireHad(const Workspace& workspace, const std::string& path)
{
    LocalPath(workspace, path);
    if (HadRevision(workspace, path) == 0)
        throw Failure(path + " - file(s) not on client.\n", 0);
    if (workspace.opened.contains(path))
        throw Failure(path + " - currently opened.\n", 0);
}

std::string BytesOf(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file)
        throw Failure("open for read: " + path.string() + ": No such file or directory\n", 1);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

void WriteReadOnly(const fs::path& path, const std::string& bytes)
{
    fs::create_directories(path.parent_path());
    fs::remove(path);
    std::ofstream(path, std::ios::binary) << bytes;
    fs::permissions(path, writing, fs::perm_options::remove);
}

// A form's fields by their names: what stands behind the colon, or in indented lines below it.
std::map<std::string, std::string> FieldsOf(std::istream& form)
{
    std::map<std::string, std::string> fields;
    std::string field;
    for (std::string line; std::getline(form, line);)
    {
        const std::size_t colon = line.find(':');
        std::string value = line;
        if (!line.empty() && line[0] != '\t' && line[0] != ' ' && line[0] != '#')
        {
            if (colon == std::string::npos)
                throw Failure("Error in client specification.\nSyntax error in '" + line + "'.\n",
                              1);
            field = line.substr(0, colon);
            value = line.substr(colon + 1);
        }
        value.erase(0, value.find_first_not_of("\t "));
        fields[field] += value;
    }
    return fields;
}

std::string Field(const std::map<std::string, std::string>& fields, const std::string& name)
{
    const auto field = fields.find(name);
    if (field == fields.end() || field->second.empty())
        throw Failure("Error in client specification.\nMissing required field '" + name + "'.\n",
                      1);
    return field->second;
}

// Of a view of one line, which is quoted and ends in "/...": the depot's folder.
std::string DepotsFolder(const std::string& view, const std::string& name)
{
    const std::string between = "/...\" \"//" + name + "/...\"";
    const std::size_t at = view.find(between);
    if (!view.starts_with("\"//") || at == std::string::npos || at + between.size() != view.size())
        throw Failure("Error in client specification.\nMapping '" + view + "' is not valid.\n", 1);
    return view.substr(1, at - 1);
}

void SaveRevision(const Depot& depot, const std::string& path, const Revision& revision)
{
    std::ofstream lines(depot.folder / "depot", std::ios::binary | std::ios::app);
    lines << "file\t" << path << "\nrev\t" << revision.number << "\t" << revision.change << "\t"
          << revision.action << "\t" << revision.time << "\t" << revision.author << "\t"
          << revision.type << "\t" << revision.content.string() << "\n";
    for (const std::string& line : revision.description)
        lines << "desc\t" << line << "\n";
}

int NextChange(const Depot& depot)
{
    int last = 0;
    for (const File& file : depot.files)
    {
        for (const Revision& revision : file.revisions)
            last = std::max(last, revision.change);
    }
    return last + 1;
}

} // namespace

int ShowInfo(const Depot&, const Call& call)
{
    std::cout << "User name: " << call.user << "\nClient name: " << call.workspace
              << "\nServer version: a stand-in\n";
    return 0;
}

int ChangeWorkspace(const Depot& depot, const Call& call)
{
    if (const auto removed = call.values.find("-d"); removed != call.values.end())
    {
        RemoveWorkspace(depot.folder, removed->second);
        std::cout << "Client " << removed->second << " deleted.\n";
        return 0;
    }
    const auto fields = FieldsOf(std::cin);
    Workspace workspace;
    workspace.name = Field(fields, "Client");
    workspace.root = Field(fields, "Root");
    workspace.view = DepotsFolder(Field(fields, "View"), workspace.name);
    SaveWorkspace(depot.folder, workspace);
    std::cout << "Client " << workspace.name << " saved.\n";
    return 0;
}

int Sync(const Depot& depot, const Call& call)
{
    Workspace workspace = LoadWorkspace(depot.folder, call.workspace);
    const Spec spec = ParseSpec(call.spec);
    const File& file = ExistingFileAt(depot, spec.path);
    const fs::path local = LocalPath(workspace, spec.path);
    const Revision* const revision = RevisionAt(file, spec.revision);
    const int number = revision == nullptr || revision->IsDeleted() ? 0 : revision->number;
    const int had = HadRevision(workspace, spec.path);
    if (workspace.opened.contains(spec.path) || number == had)
        throw Failure(call.spec + " - file(s) up-to-date.\n", 0);
    if (fs::exists(local) && (fs::status(local).permissions() & writing) != fs::perms::none)
        throw Failure("Can't clobber writable file " + local.string() + "\n", 1);
    if (number == 0)
    {
        fs::remove(local);
        workspace.have.erase(spec.path);
    }
    else
    {
        WriteReadOnly(local, BytesOf(revision->content));
        workspace.have[spec.path] = number;
    }
    SaveWorkspace(depot.folder, workspace);
    std::cout << spec.path << "#" << (number == 0 ? had : number) << " - "
              << (number == 0 ? "deleted"
                  : had == 0  ? "added"
                              : "updating")
              << " as " << local.string() << "\n";
    return 0;
}

int Add(const Depot& depot, const Call& call)
{
    Workspace workspace = LoadWorkspace(depot.folder, call.workspace);
    const std::string path = DepotPath(workspace, PathOf(call.spec));
    const File* const file = FileAt(depot, path);
    if (file != nullptr && !file->revisions.back().IsDeleted())
        throw Failure(path + " - can't add existing file\n", 0);
    workspace.opened[path] = {"add", call.values.at("-t")};
    SaveWorkspace(depot.folder, workspace);
    std::cout << path << "#" << (file == nullptr ? 1 : file->revisions.back().number + 1)
              << " - opened for add\n";
    return 0;
}

int Edit(const Depot& depot, const Call& call)
{
    Workspace workspace = LoadWorkspace(depot.folder, call.workspace);
    const File& file = ExistingFileAt(depot, call.spec);
    RequireHad(workspace, call.spec);
    workspace.opened[call.spec] = {"edit", file.revisions.back().type};
    fs::permissions(LocalPath(workspace, call.spec), fs::perms::owner_write, fs::perm_options::add);
    SaveWorkspace(depot.folder, workspace);
    std::cout << call.spec << "#" << HadRevision(workspace, call.spec) << " - opened for edit\n";
    return 0;
}

int Delete(const Depot& depot, const Call& call)
{
    Workspace workspace = LoadWorkspace(depot.folder, call.workspace);
    const File& file = ExistingFileAt(depot, call.spec);
    RequireHad(workspace, call.spec);
    workspace.opened[call.spec] = {"delete", file.revisions.back().type};
    fs::remove(LocalPath(workspace, call.spec));
    SaveWorkspace(depot.folder, workspace);
    std::cout << call.spec << "#" << HadRevision(workspace, call.spec) << " - opened for delete\n";
    return 0;
}

int Submit(const Depot& depot, const Call& call)
{
    Workspace workspace = LoadWorkspace(depot.folder, call.workspace);
    const auto opened = workspace.opened.find(call.spec);
    if (opened == workspace.opened.end())
        throw Failure("No files to submit from the default changelist.\n", 1);
    const File* const file = FileAt(depot, call.spec);
    const int head = file == nullptr ? 0 : file->revisions.back().number;
    if (opened->second.action != "add" && HadRevision(workspace, call.spec) != head)
        throw Failure("Out of date files must be resolved or reverted.\n", 1);

    Revision revision;
    revision.number = head + 1;
    revision.change = NextChange(depot);
    revision.action = opened->second.action;
    revision.time = std::time(nullptr);
    revision.author = call.user + "@" + workspace.name;
    revision.type = opened->second.type;
    revision.content = "content" + std::to_string(revision.change);
    std::istringstream description(call.values.at("-d"));
    for (std::string line; std::getline(description, line);)
        revision.description.push_back(line);
    const bool isThere = !revision.IsDeleted();
    const std::string bytes = isThere ? BytesOf(LocalPath(workspace, call.spec)) : std::string();
    std::ofstream(depot.folder / revision.content, std::ios::binary) << bytes;
    SaveRevision(depot, call.spec, revision);

    workspace.opened.erase(opened);
    workspace.have.erase(call.spec);
    if (isThere)
    {
        workspace.have[call.spec] = revision.number;
        WriteReadOnly(LocalPath(workspace, call.spec), bytes);
    }
    SaveWorkspace(depot.folder, workspace);
    std::cout << "Submitting change " << revision.change << ".\nLocking 1 files ...\n"
              << revision.action << " " << call.spec << "#" << revision.number << "\nChange "
              << revision.change << " submitted.\n";
    return 0;
}

} // namespace tarnwell::test::perforce
