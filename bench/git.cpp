// Git's file system against the client that it runs: content at a revision, and revisions.
#include "client/gitimport.h"
#include "client/pairs.h"
#include "client/settings.h"
#include "support/folder.h"

#include <tarnwell/classes.h>

#include <cstdio>
#include <random>
#include <string>

namespace
{

using namespace tarnwell::bench;

constexpr std::size_t smallSize = 10 * 1024;
constexpr std::size_t bigSize = 300 * 1000 * 1000;
constexpr std::uint32_t commitCount = 10'000;

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

} // namespace

int tarnwell::bench::Run()
{
    const TempFolder ground;
    UseOwnSettings(ground / "home");
    const std::string contents = ground / "contents";
    const std::string history = ground / "history";
    std::puts("Making repositories ...");
    MakeContents(contents);
    MakeHistory(history);
    // The client wants to see the file whose log it is asked for.
    RunBare({{"git", "reset", "-q", "--hard"}, history});

    const auto git = MakeFileSystem(tarnwell::CLSID_GITFileSystem);
    const std::string log = history + "/log.txt";
    return Measure({
        Reading("Content of 10 KB", 30, 1.25, git, "git://" + contents + "/small.bin#main",
                smallSize, Show(contents, "small.bin")),
        Reading("Content of 300 MB", 5, 1.1, git, "git://" + contents + "/big.bin#main", bigSize,
                Show(contents, "big.bin")),
        ListingRevisions("10,000 revisions", 30, 1.1, git, log, commitCount + 1, Log(history, log)),
    });
}
