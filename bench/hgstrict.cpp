// Mercurial's histories in full and its trees against the client that they run.
#include "client/pairs.h"
#include "client/settings.h"
#include "client/strict.h"
#include "support/folder.h"

#include <tarnwell/classes.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <random>
#include <stdexcept>
#include <string>

namespace
{

using namespace tarnwell;
using namespace tarnwell::bench;

constexpr std::uint32_t commitCount = 20'000;
constexpr std::uint32_t pageSize = 20;
constexpr std::uint32_t contentCount = 1'000;
constexpr std::size_t contentSize = 10 * 1024;
constexpr std::uint32_t itemCount = 20'000;
constexpr std::uint32_t folderSize = 100;
// A thousand runs of the client would take minutes: these stand for ten times as many.
constexpr std::uint32_t sampleCount = contentCount / 10;
constexpr double contentLimit = 0.05 * contentCount / sampleCount;

BareRun Hg(std::vector<std::string> arguments, const std::string& folder)
{
    arguments.insert(arguments.begin(), "hg");
    return {std::move(arguments), folder};
}

std::string NameOf(std::uint32_t number)
{
    return "folder" + std::to_string(number / folderSize) + "/file" + std::to_string(number);
}

// Changesets of one file, whose name the client chooses.
void MakeHistory(const std::string& folder)
{
    RunBare(Hg({"init", folder}, "/"));
    RunBare(Hg({"debugbuilddag", "-q", "-o", "+" + std::to_string(commitCount)}, folder));
    RunBare(Hg({"update", "-q", "tip"}, folder));
}

void MakeTree(const std::string& folder, std::uint32_t count, std::size_t size)
{
    RunBare(Hg({"init", folder}, "/"));
    std::mt19937_64 random; // the same each time
    for (std::uint32_t i = 0; i < count; ++i)
    {
        const std::filesystem::path path = folder + "/" + NameOf(i);
        std::filesystem::create_directories(path.parent_path());
        std::string bytes(size, '\0');
        for (char& byte : bytes)
            byte = static_cast<char>(random());
        std::ofstream(path, std::ios::binary) << bytes;
    }
    RunBare(Hg({"commit", "-q", "-A", "-u", "ann", "-m", "Contents"}, folder));
}

std::function<void()> PrintingSome(const std::string& folder)
{
    return [=] {
        for (std::uint32_t i = 0; i < sampleCount; ++i)
        {
            if (RunBare(Hg({"cat", "-r", "0", NameOf(i)}, folder)) != contentSize)
                throw std::runtime_error("the client prints another size");
        }
    };
}

} // namespace

int tarnwell::bench::Run()
{
    const TempFolder ground;
    UseOwnSettings(ground / "home");
    const std::string history = ground / "history";
    const std::string contents = ground / "contents";
    const std::string tree = ground / "tree";
    std::fputs("Making repositories ...\n", stderr);
    MakeHistory(history);
    MakeTree(contents, contentCount, contentSize);
    MakeTree(tree, itemCount, 16);

    const auto mercurial = MakeFileSystem(CLSID_HGFileSystem);
    const std::string file = history + "/of";
    return Measure({
        {"Mercurial history: 20 of 20,000", 15, 1.2, Telling(mercurial, file, pageSize, pageSize),
         Bare(Hg({"log", "-l", "20", "of"}, history))},
        {"Mercurial history: all 20,000", 5, 1.1, Telling(mercurial, file, 0, commitCount),
         Bare(Hg({"log", "of"}, history))},
        {"Mercurial tree: 1,000 contents, 100 runs", 3, contentLimit,
         ReadingAll(mercurial, contents, NameOf, contentCount, contentSize),
         PrintingSome(contents)},
        {"Mercurial tree: listing 20,000", 5, 1.3, ListingAll(mercurial, tree, itemCount),
         Bare(Hg({"files", "-r", "0", "-T", "{path}\\n{size}\\n"}, tree))},
    });
}
