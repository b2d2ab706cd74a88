#include "support/perforce/commands.h"

#include "support/perforce/changing.h"
#include "support/perforce/depot.h"
#include "support/perforce/failures.h"
#include "support/perforce/options.h"
#include "support/perforce/strict.h"
#include "support/perforce/workspace.h"

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <iostream>
#include <iterator>
#include <set>
#include <utility>

namespace tarnwell::test::perforce
{

namespace
{

namespace fs = std::filesystem;

// The client complains of what it doesn't find, and calls that no failure.
int Complain(const std::string& spec, const std::string& what)
{
    std::cerr << spec << " - " << what << ".\n";
    return 0;
}

// How it names a revision that a file of that path doesn't have.
std::string MissingAt(const Spec& spec)
{
    if (spec.revision.empty())
        return "no such file(s)";
    return spec.revision[0] == '#' ? "no file(s) at that revision"
                                   : "no file(s) at that changelist number";
}

// What files the argument names, each with its revision there.
using Found = std::vector<std::pair<const File*, const Revision*>>;

Found Find(const Depot& depot, const Spec& spec)
{
    Found found;
    for (const File& file : depot.files)
    {
        const Revision* const revision = RevisionAt(file, spec.revision);
        if (Fits(spec.path, file.path) && revision != nullptr)
            found.emplace_back(&file, revision);
    }
    return found;
}

bool IsKnown(const Depot& depot, const Spec& spec)
{
    return !Find(depot, {spec.path, {}}).empty();
}

int ComplainOfNone(const Depot& depot, const Call& call)
{
    const Spec spec = ParseSpec(call.spec);
    return Complain(call.spec, IsKnown(depot, spec) ? MissingAt(spec) : "no such file(s)");
}

int Fstat(const Depot& depot, const Call& call)
{
    const Found found = Find(depot, ParseSpec(call.spec));
    for (const auto& [file, revision] : found)
    {
        std::cout << "... depotFile " << file->path << "\n... headAction " << revision->action
                  << "\n... headType " << revision->type << "\n... headTime " << revision->time
                  << "\n... headRev " << revision->number << "\n... headChange " << revision->change
                  << "\n... headModTime " << revision->time - 60 << "\n";
        if (!revision->IsDeleted())
            std::cout << "... fileSize " << fs::file_size(revision->content) << "\n";
        for (const std::string& tag : file->tags)
            std::cout << "... " << tag << "\n";
        std::cout << "\n";
    }
    return found.empty() ? ComplainOfNone(depot, call) : 0;
}

// Folders are there as far as files are in them.
int Dirs(const Depot& depot, const Call& call)
{
    const Spec spec = ParseSpec(call.spec);
    std::set<std::string> folders;
    for (const File& file : depot.files)
    {
        const Revision* const revision = RevisionAt(file, spec.revision);
        if (revision == nullptr || revision->IsDeleted())
            continue;
        for (std::size_t slash = file.path.find('/', 2); slash != std::string::npos;
             slash = file.path.find('/', slash + 1))
        {
            if (Fits(spec.path, file.path.substr(0, slash)))
                folders.insert(file.path.substr(0, slash));
        }
    }
    for (const std::string& folder : folders)
        std::cout << folder << "\n";
    return folders.empty() ? Complain(call.spec, "no such file(s)") : 0;
}

// A deleted revision has no content, and nothing is said of it.
int Print(const Depot& depot, const Call& call)
{
    const Found found = Find(depot, ParseSpec(call.spec));
    if (found.empty())
        return ComplainOfNone(depot, call);
    const Revision& revision = *found[0].second;
    if (revision.IsDeleted())
        return 0;
    const fs::path target = PathOf(call.values.at("-o"));
    std::ifstream content(revision.content, std::ios::binary);
    std::ofstream copy(target, std::ios::binary);
    copy << std::string(std::istreambuf_iterator<char>(content), {});
    copy.close();
    fs::permissions(target, fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read);
    return 0;
}

std::string DateOf(long long seconds)
{
    const std::time_t time = static_cast<std::time_t>(seconds);
    char text[32];
    std::strftime(text, sizeof text, "%Y/%m/%d %H:%M:%S", std::gmtime(&time));
    return text;
}

int FileLog(const Depot& depot, const Call& call)
{
    const Found found = Find(depot, ParseSpec(call.spec));
    for (const auto& [file, head] : found)
    {
        std::cout << file->path << "\n";
        for (auto revision = file->revisions.rbegin(); revision != file->revisions.rend();
             ++revision)
        {
            std::cout << "... #" << revision->number << " change " << revision->change << " "
                      << revision->action << " on " << DateOf(revision->time) << " by "
                      << revision->author << " (" << revision->type << ")\n\n";
            for (const std::string& line : revision->description)
                std::cout << "\t" << line << "\n";
            std::cout << "\n";
            for (const std::string& note : revision->notes)
                std::cout << note << "\n";
        }
    }
    return found.empty() ? ComplainOfNone(depot, call) : 0;
}

int HaveInWorkspace(const Depot& depot, const Call& call)
{
    const Workspace workspace = LoadWorkspace(depot.folder, call.workspace);
    const std::string path = ParseSpec(call.spec).path;
    const auto had = workspace.have.find(path);
    if (had == workspace.have.end())
        return Complain(call.spec, "file(s) not on client");
    std::cout << path << "#" << had->second << " - " << LocalPath(workspace, path).string() << "\n";
    return 0;
}

int Have(const Depot& depot, const Call& call)
{
    if (depot.isServer)
        return HaveInWorkspace(depot, call);
    const Found found = Find(depot, ParseSpec(call.spec));
    if (found.empty() || found[0].first->have == 0)
        return Complain(call.spec, "file(s) not on client");
    const File& file = *found[0].first;
    std::cout << file.path << "#" << file.have << " - " << depot.root << file.path.substr(1)
              << "\n";
    return 0;
}

struct CommandRow
{
    const char* name;
    int (*run)(const Depot& depot, const Call& call);
    bool isServers = false;
};

constexpr CommandRow commands[] = {
    {"fstat", Fstat},
    {"dirs", Dirs},
    {"print", Print},
    {"filelog", FileLog},
    {"have", Have},
    {"info", ShowInfo, true},
    {"client", ChangeWorkspace, true},
    {"sync", Sync, true},
    {"add", Add, true},
    {"edit", Edit, true},
    {"delete", Delete, true},
    {"submit", Submit, true},
};

// What the options don't tell.
void TakeSettings(Call& call)
{
    for (const auto& [setting, name] :
         {std::pair{&call.port, "P4PORT"}, std::pair{&call.user, "P4USER"},
          std::pair{&call.password, "P4PASSWD"}, std::pair{&call.workspace, "P4CLIENT"}})
    {
        const char* const value = std::getenv(name);
        if (setting->empty() && value != nullptr)
            *setting = value;
    }
}

void CheckConnection(const Depot& depot, const Call& call)
{
    const bool isAnywhere = call.port.empty() && !depot.isServer;
    if (!isAnywhere && !depot.port.empty() && call.port != depot.port)
        Fail(WayNamed("refused"));
    if (depot.users.empty())
        return;
    const auto user = depot.users.find(call.user);
    if (user == depot.users.end())
        Fail(WayNamed("newuser"));
    if (user->second != call.password)
        Fail(WayNamed("password"));
}

// Null if the command isn't to fail.
const Way* WayOf(const Depot& depot, const std::string& command)
{
    for (const std::string& name : {command, std::string("*")})
    {
        if (const auto order = depot.failures.find(name); order != depot.failures.end())
            return &WayNamed(order->second);
    }
    return nullptr;
}

void PrintFile(const fs::path& file)
{
    std::ifstream recorded(file, std::ios::binary);
    std::cout << recorded.rdbuf();
}

int Work(const Depot& depot, const Call& call)
{
    if (const auto output = depot.outputs.find(call.command); output != depot.outputs.end())
    {
        PrintFile(output->second);
        return 0;
    }
    if (const auto bytes = depot.bytes.find(call.command); bytes != depot.bytes.end())
    {
        PrintBytesFromNowOn();
        PrintFile(bytes->second);
        return 0;
    }
    for (const CommandRow& row : commands)
    {
        if (call.command == row.name && (depot.isServer || !row.isServers))
            return row.run(depot, call);
    }
    throw Failure("Unknown command.  Try 'p4 help' for info.\n", 1);
}

int Obey(const Depot& depot, Call call)
{
    if (depot.isServer)
        TakeSettings(call);
    CheckConnection(depot, call);
    const Way* const way = WayOf(depot, call.command);
    if (way != nullptr && !way->worksFirst)
        Fail(*way);
    const int code = Work(depot, call);
    if (way != nullptr)
        Fail(*way);
    return code;
}

} // namespace

void Record(const std::vector<std::string>& arguments, const fs::path& folder)
{
    std::string line;
    for (const std::string& argument : arguments)
        line += (line.empty() ? "" : "\t") + argument;
    std::ofstream(folder / "runs", std::ios::binary | std::ios::app) << line + "\n";
}

int Run(const std::vector<std::string>& arguments, const fs::path& folder)
{
    try
    {
        if (IsStrict(arguments))
            return RunStrict(arguments, folder);
        Record(arguments, folder);
        return Obey(LoadDepot(folder), ParseCall(arguments));
    }
    catch (const Failure& failure)
    {
        std::cout.flush();
        std::cerr << failure.what();
        return failure.exitCode;
    }
    catch (const std::exception& failure)
    {
        std::cerr << "The stand-in has failed: " << failure.what() << "\n";
        return 99;
    }
}

} // namespace tarnwell::test::perforce
