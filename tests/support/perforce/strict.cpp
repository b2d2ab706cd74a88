#include "support/perforce/strict.h"

#include "support/perforce/commands.h"
#include "support/perforce/depot.h"
#include "support/perforce/failures.h"
#include "support/perforce/options.h"
#include "support/perforce/records.h"
#include "support/perforce/revisions.h"
#include "support/perforce/strictoptions.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <set>
#include <thread>

namespace tarnwell::test::perforce
{

namespace
{

namespace fs = std::filesystem;

constexpr int isEmpty = 0x11; // the client's class of "nothing found"

void Print(const std::string& bytes)
{
    std::cout << bytes;
}

void Warn(const std::string& words)
{
    Print(Complaint(2, isEmpty, words + "\n"));
}

// The author's two halves.
std::string UserOf(const Revision& revision)
{
    return revision.author.substr(0, revision.author.find('@'));
}
std::string WorkspaceOf(const Revision& revision)
{
    const std::size_t at = revision.author.find('@');
    return at == std::string::npos ? std::string() : revision.author.substr(at + 1);
}

// Descriptions end in a line feed on the server.
std::string DescriptionOf(const Revision& revision)
{
    std::string text;
    for (const std::string& line : revision.description)
        text += line + "\n";
    return text;
}

const File* KnownFileAt(const Depot& depot, const std::string& path)
{
    const auto found = std::find_if(depot.files.begin(), depot.files.end(),
                                    [&](const File& file) { return file.path == path; });
    return found == depot.files.end() ? nullptr : &*found;
}

void PrintFileLog(const File& file, std::vector<const Revision*> revisions, int most)
{
    std::reverse(revisions.begin(), revisions.end());
    if (most > 0 && revisions.size() > static_cast<std::size_t>(most))
        revisions.resize(static_cast<std::size_t>(most));
    Fields fields{{"depotFile", file.path}};
    for (std::size_t i = 0; i < revisions.size(); ++i)
    {
        const Revision& revision = *revisions[i];
        const std::string n = std::to_string(i);
        fields.emplace_back("rev" + n, std::to_string(revision.number));
        fields.emplace_back("change" + n, std::to_string(revision.change));
        fields.emplace_back("action" + n, revision.action);
        fields.emplace_back("type" + n, revision.type);
        fields.emplace_back("time" + n, std::to_string(revision.time));
        fields.emplace_back("user" + n, UserOf(revision));
        fields.emplace_back("client" + n, WorkspaceOf(revision));
        fields.emplace_back("desc" + n, DescriptionOf(revision));
    }
    Print(Marshalled("stat", fields));
}

// Behind the file come those that it was moved from, and with "-i" also those that it was branched
// from.
int FileLog(const Depot& depot, const StrictCall& call)
{
    const Spec spec = ParseSpec(call.spec);
    const File* file = KnownFileAt(depot, spec.path);
    if (file == nullptr || file->revisions.empty())
    {
        Warn(call.spec + " - no such file(s).");
        return 0;
    }
    if (RevisionOf(depot, *file, spec.revision) == nullptr)
    {
        Warn(call.spec + (spec.revision[0] == '#' ? " - no file(s) at that revision."
                                                  : " - no file(s) at that changelist number."));
        return 0;
    }
    std::vector<const Revision*> revisions = RevisionsUpTo(depot, *file, spec.revision);
    while (file != nullptr && !revisions.empty())
    {
        PrintFileLog(*file, revisions, call.most);
        const Revision& first = *revisions.front();
        const bool isListed = first.action == "move/add" || call.Has("-i");
        file = first.number == 1 && isListed ? KnownFileAt(depot, first.fromFile) : nullptr;
        if (file != nullptr)
            revisions = RevisionsUpTo(depot, *file, "#" + std::to_string(first.fromRevision));
    }
    return 0;
}

int Changes(const Depot& depot, const StrictCall& call)
{
    const Spec spec = ParseSpec(call.spec);
    std::map<int, const Revision*, std::greater<>> found;
    for (const File& file : depot.files)
    {
        if (!Names(spec.path, file.path))
            continue;
        for (const Revision* const revision : RevisionsUpTo(depot, file, spec.revision))
            found.emplace(revision->change, revision);
    }
    int given = 0;
    for (const auto& [change, revision] : found)
    {
        if (call.most > 0 && given++ == call.most)
            break;
        Print(Marshalled("stat",
                         {{"change", std::to_string(change)},
                          {"time", std::to_string(revision->time)},
                          {"user", UserOf(*revision)},
                          {"client", WorkspaceOf(*revision)},
                          {"status", "submitted"},
                          {"changeType", "public"},
                          {"desc", call.Has("-l") ? DescriptionOf(*revision)
                                                  : DescriptionOf(*revision).substr(0, 31)}}));
    }
    return 0;
}

// All depots are mapped below the workspace's root.
int Where(const Depot& depot, const StrictCall& call)
{
    const Spec spec = ParseSpec(call.spec);
    if (depot.root.empty())
    {
        Warn(call.spec + " - file(s) not in client view.");
        return 0;
    }
    Print(Marshalled("stat", {{"depotFile", spec.path},
                              {"clientFile", "//ws" + spec.path.substr(1)},
                              {"path", depot.root + spec.path.substr(1)}}));
    return 0;
}

std::string ContentOf(const Revision& revision)
{
    std::ifstream content(revision.content, std::ios::binary);
    return {std::istreambuf_iterator<char>(content), {}};
}

// Something that is equal where contents are.
std::string DigestOf(const std::string& bytes)
{
    unsigned long long sum = 14695981039346656037U;
    for (const char byte : bytes)
        sum = (sum ^ static_cast<unsigned char>(byte)) * 1099511628211U;
    char text[40];
    std::snprintf(text, sizeof text, "%016llX%016llX", sum, sum);
    return text;
}

int Fstat(const Depot& depot, const StrictCall& call)
{
    const Spec spec = ParseSpec(call.spec);
    bool hasAny = false;
    for (const File& file : depot.files)
    {
        const Revision* const revision =
            Names(spec.path, file.path) ? RevisionOf(depot, file, spec.revision) : nullptr;
        if (revision == nullptr)
            continue;
        hasAny = true;
        Fields fields{{"depotFile", file.path},
                      {"headAction", revision->action},
                      {"headType", revision->type}};
        if (!revision->IsDeleted())
        {
            const std::string content = ContentOf(*revision);
            fields.emplace_back("fileSize", std::to_string(content.size()));
            fields.emplace_back("digest", DigestOf(content));
        }
        Print(Marshalled("stat", fields));
    }
    if (!hasAny)
        Warn(call.spec + " - no such file(s).");
    return 0;
}

// Folders are there as far as files are in them.
int Dirs(const Depot& depot, const StrictCall& call)
{
    const Spec spec = ParseSpec(call.spec);
    std::set<std::string> folders;
    for (const File& file : depot.files)
    {
        const Revision* const revision = RevisionOf(depot, file, spec.revision);
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
        Print(Marshalled("stat", {{"dir", folder}}));
    if (folders.empty())
        Warn(call.spec + " - no such file(s).");
    return 0;
}

// Keywords are replaced unless that is turned off.
int PrintContent(const Depot& depot, const StrictCall& call)
{
    const Spec spec = ParseSpec(call.spec);
    const File* const file = KnownFileAt(depot, spec.path);
    const Revision* const revision =
        file == nullptr ? nullptr : RevisionOf(depot, *file, spec.revision);
    if (revision == nullptr || revision->IsDeleted())
    {
        Warn(call.spec + " - no such file(s).");
        return 0;
    }
    std::string content = ContentOf(*revision);
    const std::string keyword = "$Id$";
    const std::size_t at = content.find(keyword);
    if (revision->type.find('k') != std::string::npos && !call.Has("-k") && at != std::string::npos)
        content.replace(at, keyword.size(), "$Id: " + file->path + " $");
    Print(Marshalled("stat", {{"depotFile", file->path},
                              {"rev", std::to_string(revision->number)},
                              {"change", std::to_string(revision->change)},
                              {"action", revision->action},
                              {"type", revision->type},
                              {"time", std::to_string(revision->time)}}));
    constexpr std::size_t piece = 4096;
    const std::string code = revision->type.find("binary") == std::string::npos ? "text" : "binary";
    for (std::size_t start = 0; start < content.size(); start += piece)
        Print(Marshalled(code, {{"data", content.substr(start, piece)}}));
    Print(Marshalled(code, {{"data", ""}}));
    return 0;
}

struct StrictCommand
{
    const char* name;
    int (*run)(const Depot& depot, const StrictCall& call);
};

constexpr StrictCommand strictCommands[] = {{"filelog", FileLog}, {"changes", Changes},
                                            {"where", Where},     {"fstat", Fstat},
                                            {"dirs", Dirs},       {"print", PrintContent}};

// What the server says of a way to fail is a record; the client itself uses its error stream.
struct Told
{
    const char* way;
    int severity;
    int generic;
};
constexpr Told toldByServer[] = {
    {"password", 3, 0x24}, {"newuser", 3, 0x23},       {"expired", 3, 0x24},
    {"invalid", 3, 0x24},  {"workspace", 3, 0x02},     {"nofiles", 2, isEmpty},
    {"warning", 2, 0},     {"nofilesfailed", 3, 0x11}, {"nofilesbeside", 3, 0x11},
};

[[noreturn]] void FailStrictly(const std::string& name)
{
    const Way& way = WayNamed(name);
    for (const Told& row : toldByServer)
    {
        if (name != row.way)
            continue;
        Print(Complaint(row.severity, row.generic, way.text));
        throw Failure("", way.exitCode);
    }
    Fail(way);
}

void CheckLogin(const Depot& depot, const StrictCall& call)
{
    if (!call.port.empty() && !depot.port.empty() && call.port != depot.port)
        FailStrictly("refused");
    if (depot.users.empty())
        return;
    const auto user = depot.users.find(call.user);
    if (user == depot.users.end())
        FailStrictly("newuser");
    const char* const password = std::getenv("P4PASSWD");
    if (user->second != (password == nullptr ? "" : password))
        FailStrictly("password");
}

std::string StrictWayOf(const Depot& depot, const std::string& command)
{
    for (const std::string& name : {command, std::string("*")})
    {
        if (const auto order = depot.failures.find(name); order != depot.failures.end())
            return order->second;
    }
    return {};
}

int Work(const Depot& depot, const StrictCall& call)
{
    if (const auto bytes = depot.bytes.find(call.command); bytes != depot.bytes.end())
    {
        std::ifstream recorded(bytes->second, std::ios::binary);
        Print(std::string(std::istreambuf_iterator<char>(recorded), {}));
        return 0;
    }
    for (const StrictCommand& row : strictCommands)
    {
        if (call.command == row.name)
            return row.run(depot, call);
    }
    return 1;
}

// Long enough for every test, and not for ever if one fails.
void Hang()
{
    std::cout.flush();
    std::this_thread::sleep_for(std::chrono::seconds(120));
}

int Obey(const Depot& depot, const StrictCall& call)
{
    CheckLogin(depot, call);
    const std::string way = StrictWayOf(depot, call.command);
    if (way == "hang")
        Hang();
    const bool isHalf = way == "hangbehind";
    const bool worksFirst = isHalf || (!way.empty() && WayNamed(way).worksFirst);
    if (!way.empty() && !worksFirst)
        FailStrictly(way);
    const int code = Work(depot, call);
    if (isHalf)
        Hang();
    if (!way.empty())
        FailStrictly(way);
    return code;
}

std::string OneLine()
{
    std::string line;
    std::string more;
    if (!std::getline(std::cin, line) || std::getline(std::cin, more))
        throw Failure("There isn't one path on the input.\n", 97);
    return line;
}

} // namespace

int RunStrict(const std::vector<std::string>& arguments, const fs::path& folder)
{
    PrintBytesFromNowOn();
    try
    {
        const std::string spec = OneLine();
        std::vector<std::string> words = arguments;
        words.push_back("<" + spec);
        Record(words, folder);
        return Obey(LoadDepot(folder), ParseStrictCall(arguments, spec));
    }
    catch (const Complained& complaint)
    {
        Print(Complaint(complaint.severity, complaint.generic, complaint.words));
        return 1;
    }
}

} // namespace tarnwell::test::perforce
