// Subversion's file system against the client that it runs: content, revisions and listings; and
// how time and memory grow with what the client prints.
#include "client/pairs.h"
#include "client/repository.h"
#include "client/svnrepository.h"
#include "support/files.h"
#include "support/folder.h"
#include "support/timing.h"

#include <tarnwell/classes.h>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <stdexcept>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

using namespace tarnwell;
using namespace tarnwell::bench;

constexpr std::size_t fileSize = 10 * 1024;
constexpr std::uint32_t revisionCount = 10'000;
constexpr std::uint32_t fewItems = 10'000;
constexpr std::uint32_t manyItems = 100'000;
constexpr std::size_t logSize = 200 * 1000 * 1000;

void MakeRepository(const std::string& folder)
{
    SvnImport import(folder);
    import.Commit("Contents");
    import.AddFile("small.bin", std::string(fileSize, 'x'));
    import.AddFile("log.txt", "0\n");
    for (const auto& [name, count] : {std::pair{"few", fewItems}, std::pair{"many", manyItems}})
    {
        import.Folder(name);
        for (std::uint32_t i = 0; i < count; ++i)
            import.AddFile(std::string(name) + "/file number " + std::to_string(i) + ".txt", "x");
    }
    for (std::uint32_t i = 1; i < revisionCount; ++i)
    {
        import.Commit("A message of usual length, and a number: " + std::to_string(i));
        import.ChangeFile("log.txt", std::to_string(i) + "\n");
    }
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

void List(const ComPtr<IFileSystem>& system, const std::string& address, std::uint32_t count)
{
    ComPtr<IFolder> folder;
    ComPtr<IFolderContents> contents;
    std::uint32_t found = 0;
    const std::u16string wide = Widened(address);
    if (FAILED(system->GetFolder(wide.c_str(), VARIANT_FALSE, folder.Out())) ||
        FAILED(folder->GetContents(contents.Out())) || FAILED(contents->GetCount(&found)) ||
        found != count)
        throw std::runtime_error("the module lists another number of items");
}

std::uint32_t CountRevisions(const ComPtr<IFileSystem>& system)
{
    ComPtr<IRevisions> revisions;
    std::uint32_t count = 0;
    system.As<IFileSystemRevisions>()->GetRevisions(u"svnfile:///r/a.txt", 0, revisions.Out());
    revisions->GetCount(&count);
    return count;
}

// Ten times as much may take fifteen times as long. Whether it does.
template <class Few, class Many> bool MeasureGrowth(const char* name, Few&& few, Many&& many)
{
    constexpr int rounds = 5;
    constexpr double limit = 15;
    std::vector<double> fewTimes;
    std::vector<double> manyTimes;
    for (int i = 0; i < rounds; ++i)
    {
        fewTimes.push_back(SecondsOf(few));
        manyTimes.push_back(SecondsOf(many));
    }
    const double growth = MedianOf(manyTimes) / MedianOf(fewTimes);
    const bool isWithin = growth <= limit;
    std::printf("%-34s %9.0f ms to %9.0f ms %7.2f   %.0f: %s\n", name, MedianOf(fewTimes) * 1e3,
                MedianOf(manyTimes) * 1e3, growth, limit, isWithin ? "within" : "BEYOND");
    return isWithin;
}

// The largest memory of a process that does nothing else, in bytes.
template <class Action> double PeakOf(Action&& action)
{
    const pid_t child = fork();
    if (child == 0)
    {
        action();
        _exit(0);
    }
    rusage usage{};
    wait4(child, nullptr, 0, &usage);
    return static_cast<double>(usage.ru_maxrss) * 1024;
}

bool MeasureMemory(const ComPtr<IFileSystem>& system)
{
    constexpr double limit = 6;
    const double idle = PeakOf([] {});
    const double busy = PeakOf([&] { CountRevisions(system); });
    const double times = (busy - idle) / static_cast<double>(logSize);
    const bool isWithin = times <= limit;
    std::printf("%-34s %9.0f MB, %.2f times the log   %.0f: %s\n", "Memory for a log of 200 MB",
                busy / 1e6, times, limit, isWithin ? "within" : "BEYOND");
    return isWithin;
}

// What is printed by no real client, as making a repository for it would take hours.
bool MeasureLongLogs(const ComPtr<IFileSystem>& system, const TempFolder& ground)
{
    const std::string shown = ground / "shown";
    const std::string small = ground / "small";
    const std::string big = ground / "big";
    const std::uint32_t smallCount = WriteLog(small, logSize / 10);
    const std::uint32_t bigCount = WriteLog(big, logSize);
    UseClientThatPrints(shown, ground / "bin");
    const auto read = [&](const std::string& log, std::uint32_t count)
    {
        unlink(shown.c_str());
        if (symlink(log.c_str(), shown.c_str()) != 0 || CountRevisions(system) != count)
            throw std::runtime_error("the module reads another number of revisions");
    };
    const bool isWithin = MeasureGrowth(
        "Logs of 20 MB and 200 MB", [&] { read(small, smallCount); }, [&] { read(big, bigCount); });
    return MeasureMemory(system) && isWithin;
}

int Run()
{
    const TempFolder ground;
    UseOwnSettings(ground / "home");
    setenv("LC_ALL", "C.UTF-8", 1);
    const std::string folder = ground / "r";
    std::puts("Making a repository ...");
    MakeRepository(folder);

    const auto svn = MakeFileSystem(CLSID_SVNFileSystem);
    const std::string address = "svnfile://" + folder;
    const std::string url = "file://" + folder;
    int result = Measure({
        Reading("Content of 10 KB", 30, 1.25, svn, address + "/small.bin", fileSize,
                Client({"cat", url + "/small.bin"})),
        ListingRevisions("10,000 revisions", 10, 1.25, svn, address + "/log.txt", revisionCount,
                         Client({"log", "-v", "--xml", url + "/log.txt"})),
        {"100,000 items", 5, 2, [&] { List(svn, address + "/many", manyItems); },
         [&]
         {
             RunBare(Client({"--xml", "list", url + "/many"}));
         }},
    });
    const bool isLinear = MeasureGrowth(
        "10,000 and 100,000 items", [&] { List(svn, address + "/few", fewItems); },
        [&] { List(svn, address + "/many", manyItems); });
    if (!isLinear || !MeasureLongLogs(svn, ground))
        result = 1;
    return result;
}

} // namespace

int main()
{
    try
    {
        return Run();
    }
    catch (const std::exception& failure)
    {
        std::fprintf(stderr, "svn-bench: %s\n", failure.what());
        return 2;
    }
}
