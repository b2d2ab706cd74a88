// Subversion's histories in full and its trees against the client that they run. Each question
// takes two runs of it side by side, where the bare one is one run: the limits allow for that.
#include "client/pairs.h"
#include "client/settings.h"
#include "client/strict.h"
#include "client/svnrepository.h"
#include "support/folder.h"

#include <tarnwell/classes.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace
{

using namespace tarnwell;
using namespace tarnwell::bench;

constexpr std::uint32_t revisionCount = 10'000;
constexpr std::uint32_t pageSize = 20;
constexpr std::uint32_t contentCount = 20;
constexpr std::size_t contentSize = 10 * 1024;
constexpr std::uint32_t itemCount = 10'000;

std::string NameOf(std::uint32_t number)
{
    return "file number " + std::to_string(number) + ".bin";
}

void MakeHistory(const std::string& folder)
{
    SvnImport import(folder);
    import.Commit("Contents");
    import.AddFile("log.txt", "0\n");
    for (std::uint32_t i = 1; i < revisionCount; ++i)
    {
        import.Commit("A message of usual length, and a number: " + std::to_string(i));
        import.ChangeFile("log.txt", std::to_string(i) + "\n");
    }
}

void MakeTree(const std::string& folder, std::uint32_t count, std::size_t size)
{
    SvnImport import(folder);
    import.Commit("Many files");
    for (std::uint32_t i = 0; i < count; ++i)
        import.AddFile(NameOf(i), std::string(size, 'x'));
}

BareRun Client(const std::vector<std::string>& arguments)
{
    BareRun run{{"svn", "--non-interactive"}, "/"};
    run.arguments.insert(run.arguments.end(), arguments.begin(), arguments.end());
    return run;
}

std::function<void()> PrintingAll(const std::string& url)
{
    return [=] {
        for (std::uint32_t i = 0; i < contentCount; ++i)
            RunBare(Client({"cat", url + "/" + NameOf(i)}));
    };
}

} // namespace

int tarnwell::bench::Run()
{
    const TempFolder ground;
    UseOwnSettings(ground / "home");
    setenv("LC_ALL", "C.UTF-8", 1);
    std::fputs("Making repositories ...\n", stderr);
    MakeHistory(ground / "history");
    MakeTree(ground / "contents", contentCount, contentSize);
    MakeTree(ground / "tree", itemCount, 16);

    const auto svn = MakeFileSystem(CLSID_SVNFileSystem);
    const auto address = [&](const char* name) {
        return "svnfile://" + (ground / name);
    };
    const auto url = [&](const char* name) {
        return "file://" + (ground / name);
    };
    return Measure({
        {"Subversion history: 20 of 10,000", 30, 2.5,
         Telling(svn, address("history/log.txt"), pageSize, pageSize),
         Bare(Client({"log", "--xml", "-l", "20", url("history/log.txt")}))},
        {"Subversion history: all 10,000", 10, 1.1,
         Telling(svn, address("history/log.txt"), 0, revisionCount),
         Bare(Client({"log", "--xml", url("history/log.txt")}))},
        {"Subversion tree: 20 contents", 10, 2,
         ReadingAll(svn, address("contents"), NameOf, contentCount, contentSize),
         PrintingAll(url("contents"))},
        {"Subversion tree: listing 10,000", 10, 2.5, ListingAll(svn, address("tree"), itemCount),
         Bare(Client({"list", "--xml", "-R", url("tree")}))},
    });
}
