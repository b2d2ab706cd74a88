// Git's file system against the client that it runs: content at a revision, and revisions; and its
// memory for a long record.
#include "client/gitimport.h"
#include "client/pairs.h"
#include "client/printer.h"
#include "client/settings.h"
#include "client/table.h"
#include "support/files.h"
#include "support/folder.h"

#include <tarnwell/classes.h>
#include <tarnwell/revisions.h>

#include <cstdio>
#include <fstream>
#include <random>
#include <stdexcept>
#include <string>

namespace
{

using namespace tarnwell;
using namespace tarnwell::bench;

constexpr std::size_t smallSize = 10 * 1024;
constexpr std::size_t bigSize = 300 * 1000 * 1000;
constexpr std::uint32_t commitCount = 10'000;
constexpr std::size_t recordSize = std::size_t{1} << 30;

// Bytes that can't be packed any smaller: so the client is at its fastest.
std::string RandomBytes(std::size_t size)
{
    std::mt19937_64 random; // the same each time
    std::string bytes(size, '\0');
    for (char& byte : bytes)
        byte = static_cast<char>(random());
    return bytes;
}

void MakeContents(const std::string& folder)
{
    GitImport import(folder);
    import.Commit("Contents");
    import.File("small.bin", RandomBytes(smallSize));
    import.File("big.bin", RandomBytes(bigSize));
}

void MakeHistory(const std::string& folder)
{
    GitImport import(folder);
    for (std::uint32_t i = 0; i < commitCount; ++i)
    {
        const std::string number = std::to_string(i);
        import.Commit("A subject of usual length, and a number: " + number);
        import.File("log.txt", "line " + number + "\n");
    }
}

BareRun Show(const std::string& folder, const std::string& name)
{
    return {{"git", "show", "main:" + name}, folder};
}

BareRun Log(const std::string& folder, const std::string& path)
{
    return {{"git", "log", "--pretty=format:%H%n%an%n%at%n%x09%s%n!", path}, folder};
}

// A log of one record, whose description is one line.
void WriteRecord(const std::string& path)
{
    std::ofstream log(path);
    log << std::string(40, '0') << "\nsomebody\n1700000000\n\t";
    const std::string block(1 << 20, 'x');
    for (std::size_t written = 0; written < recordSize; written += block.size())
        log << block;
    log << "\n!\n";
}

void ListRevisions(const ComPtr<IFileSystem>& git, const std::string& path, std::uint32_t expected)
{
    ComPtr<IRevisions> revisions;
    std::uint32_t count = 0;
    git.As<IFileSystemRevisions>()->GetRevisions(Widened(path).c_str(), 0, revisions.Out());
    if (FAILED(revisions->GetCount(&count)) || count != expected)
        throw std::runtime_error("the module lists another number of revisions");
}

bool MeasureMemory(const ComPtr<IFileSystem>& git, const TempFolder& ground)
{
    const std::string record = ground / "record";
    WriteRecord(record);
    UseClientThatPrints("git", record, ground / "bin");
    const double busy = PeakOf([&] { ListRevisions(git, ground / "file", 2); });
    return PrintMemory("Memory for a Git record of 1 GiB", busy - PeakOf([] {}), recordSize, 1.1);
}

} // namespace

int tarnwell::bench::Run()
{
    const TempFolder ground;
    UseOwnSettings(ground / "home");
    const std::string contents = ground / "contents";
    const std::string history = ground / "history";
    std::fputs("Making repositories ...\n", stderr);
    MakeContents(contents);
    MakeHistory(history);
    // The client wants to see the file whose log it is asked for.
    RunBare({{"git", "reset", "-q", "--hard"}, history});

    const auto git = MakeFileSystem(tarnwell::CLSID_GITFileSystem);
    const std::string log = history + "/log.txt";
    int result = Measure({
        Reading("Git: content of 10 KB", 30, 1.25, git, "git://" + contents + "/small.bin#main",
                smallSize, Show(contents, "small.bin")),
        Reading("Git: content of 300 MB", 5, 1.1, git, "git://" + contents + "/big.bin#main",
                bigSize, Show(contents, "big.bin")),
        ListingRevisions("Git: 10,000 revisions", 30, 1.05, git, log, commitCount + 1,
                         Log(history, log)),
    });
    if (!MeasureMemory(git, ground))
        result = 1;
    return result;
}
