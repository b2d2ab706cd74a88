// Subversion's file system against the client that it runs: content, revisions and listings; and
// how time and memory grow with what the client prints.
#include "client/pairs.h"
#include "client/printer.h"
#include "client/settings.h"
#include "client/svnrepository.h"
#include "client/svnserver.h"
#include "client/table.h"
#include "support/files.h"
#include "support/folder.h"

#include <tarnwell/classes.h>

#include <cstdio>
#include <fstream>
#include <functional>
#include <stdexcept>
#include <string>

namespace
{

using namespace tarnwell;
using namespace tarnwell::bench;

constexpr std::size_t fileSize = 10 * 1024;
constexpr std::uint32_t revisionCount = 5'000;
constexpr std::uint32_t fewItems = 10'000;
constexpr std::uint32_t manyItems = 100'000;
constexpr std::size_t logSize = 200 * 1000 * 1000;

void MakeRepository(const std::string& folder)
{
    SvnImport import(folder);
    import.Commit("Contents");
    import.AddFile("small.bin", std::string(fileSize, 'x'));
    import.AddFile("log.txt", "0\n");
    for (std::uint32_t i = 1; i < revisionCount; ++i)
    {
        import.Commit("A message of usual length, and a number: " + std::to_string(i));
        import.ChangeFile("log.txt", std::to_string(i) + "\n");
    }
}

void MakeLongFolder(const std::string& folder)
{
    SvnImport import(folder);
    import.Commit("Many files");
    for (std::uint32_t i = 0; i < fewItems; ++i)
        import.AddFile("file number " + std::to_string(i) + ".txt", "");
}

// A listing of so many items as the client prints it.
void WriteListing(const std::string& path, std::uint32_t count)
{
    std::ofstream listing(path);
    listing
        << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<lists>\n<list\n   path=\"file:///r\">\n";
    for (std::uint32_t i = 0; i < count; ++i)
        listing << "<entry\n   kind=\"file\">\n<name>file number " << i << ".txt</name>\n<size>"
                << i << "</size>\n<commit\n   revision=\"" << i
                << "\">\n<author>somebody</author>\n<date>2024-03-05T10:20:30.123456Z</date>\n"
                   "</commit>\n</entry>\n";
    listing << "</list>\n</lists>\n";
}

// A log of about `size` bytes as the client prints it, with ten paths to each revision; the number
// of its revisions.
std::uint32_t WriteLog(const std::string& path, std::size_t size)
{
    std::ofstream log(path);
    log << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<log>\n";
    std::uint32_t count = 0;
    while (static_cast<std::size_t>(log.tellp()) < size)
    {
        log << "<logentry\n   revision=\"" << ++count
            << "\">\n<author>somebody</author>\n<date>2024-03-05T10:20:30.123456Z</"
               "date>\n<paths>\n";
        for (int i = 0; i < 10; ++i)
            log << "<path\n   text-mods=\"true\"\n   kind=\"file\"\n   action=\"M\"\n"
                   "   prop-mods=\"false\">/trunk/folder/file"
                << i << ".cpp</path>\n";
        log << "</paths>\n<msg>A message of usual length, and a number: " << count
            << "</msg>\n</logentry>\n";
    }
    log << "</log>\n";
    return count;
}

BareRun Client(const std::vector<std::string>& arguments)
{
    BareRun run{{"svn", "--non-interactive"}, "/"};
    run.arguments.insert(run.arguments.end(), arguments.begin(), arguments.end());
    return run;
}

std::uint32_t CountItemsOf(const ComPtr<IFileSystem>& system, const std::u16string& address)
{
    ComPtr<IFolder> folder;
    ComPtr<IFolderContents> contents;
    std::uint32_t count = 0;
    if (FAILED(system->GetFolder(address.c_str(), VARIANT_FALSE, folder.Out())) ||
        FAILED(folder->GetContents(contents.Out())) || FAILED(contents->GetCount(&count)))
        throw std::runtime_error("the module can't list the folder");
    return count;
}

std::uint32_t CountItems(const ComPtr<IFileSystem>& system)
{
    return CountItemsOf(system, u"svnfile:///r");
}

// GetContents of a served folder that has `count` entries. There is no host to ask for a user.
Pair Listing(std::string name, int rounds, double factor, const ComPtr<IFileSystem>& system,
             const std::string& place, std::uint32_t count)
{
    const std::string address = "svn://anybody@" + place;
    return {std::move(name), rounds, factor,
            [=] {
                if (CountItemsOf(system, {address.begin(), address.end()}) != count)
                    throw std::runtime_error("the module lists another number of entries");
            },
            [bare = Client({"--xml", "list", address})] {
                RunBare(bare);
            }};
}

std::uint32_t CountRevisions(const ComPtr<IFileSystem>& system)
{
    ComPtr<IRevisions> revisions;
    std::uint32_t count = 0;
    system.As<IFileSystemRevisions>()->GetRevisions(u"svnfile:///r/a.txt", 0, revisions.Out());
    revisions->GetCount(&count);
    return count;
}

bool MeasureMemory(const ComPtr<IFileSystem>& system)
{
    const double busy = PeakOf([&] { CountRevisions(system); });
    return PrintMemory("Memory for a Subversion log of 200 MB", busy - PeakOf([] {}), logSize, 1.5);
}

// Of output that no real client prints, as making a repository for it would take hours.
bool MeasureLongOutput(const ComPtr<IFileSystem>& system, const TempFolder& ground)
{
    const std::string shown = ground / "shown";
    UseClientThatPrints("svn", shown, ground / "bin");
    const auto show = [&](const char* name) {
        unlink(shown.c_str());
        if (symlink((ground / name).c_str(), shown.c_str()) != 0)
            throw std::runtime_error("there is no output to show");
    };
    const auto ask = [&](const char* name, auto count, std::uint32_t expected) {
        show(name);
        if (count(system) != expected)
            throw std::runtime_error("the module reads another number of entries");
    };
    WriteListing(ground / "few", fewItems);
    WriteListing(ground / "many", manyItems);
    const std::uint32_t smallCount = WriteLog(ground / "small", logSize / 10);
    const std::uint32_t bigCount = WriteLog(ground / "big", logSize);
    show("big");
    const bool isWithin = MeasureMemory(system);
    // Ten times as much may take fifteen times as long.
    const int growth = Measure({
        {"Subversion: 100,000 items to 10,000", 3, 15, [&] { ask("many", CountItems, manyItems); },
         [&] {
             ask("few", CountItems, fewItems);
         }},
        {"Subversion: logs of 200 MB to 20 MB", 3, 15,
         [&] { ask("big", CountRevisions, bigCount); },
         [&] {
             ask("small", CountRevisions, smallCount);
         }},
    });
    return isWithin && growth == 0;
}

} // namespace

int tarnwell::bench::Run()
{
    const TempFolder ground;
    UseOwnSettings(ground / "home");
    const std::string folder = ground / "r";
    std::fputs("Making a repository ...\n", stderr);
    MakeRepository(folder);
    MakeLongFolder(ground / "long");
    const SvnServer server(ground / "");

    const auto svn = MakeFileSystem(CLSID_SVNFileSystem);
    const std::string address = "svnfile://" + folder;
    const std::string url = "file://" + folder;
    int result = Measure({
        Reading("Subversion: content of 10 KB", 30, 1.25, svn, address + "/small.bin", fileSize,
                Client({"cat", url + "/small.bin"})),
        ListingRevisions("Subversion: 5,000 log entries", 20, 1.1, svn, address + "/log.txt",
                         revisionCount, Client({"log", "-v", "--xml", url + "/log.txt"})),
        Listing("Subversion: 10,000 items by svnserve", 20, 1.1, svn, server.Place() + "/long",
                fewItems),
    });
    if (!MeasureLongOutput(svn, ground))
        result = 1;
    return result;
}
