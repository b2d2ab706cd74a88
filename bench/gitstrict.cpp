// Git's histories in full and its trees against the client that they run.
#include "client/gitimport.h"
#include "client/pairs.h"
#include "client/settings.h"
#include "client/strict.h"
#include "support/folder.h"

#include <tarnwell/classes.h>

#include <cstdio>
#include <functional>
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
constexpr std::uint32_t itemCount = 50'000;
constexpr std::uint32_t folderSize = 100;

void Require(bool holds, const char* failure)
{
    if (!holds)
        throw std::runtime_error(failure);
}

std::string NameOf(std::uint32_t number)
{
    return "folder" + std::to_string(number / folderSize) + "/file" + std::to_string(number);
}

void MakeHistory(const std::string& folder)
{
    GitImport import(folder);
    for (std::uint32_t i = 0; i < commitCount; ++i)
    {
        const std::string number = std::to_string(i);
        import.Commit("A subject of usual length, and a number: " + number + "\n\nAnd a body.\n");
        import.File("log.txt", "line " + number + "\n");
    }
}

// The same of a file that got its last name in the middle of the first page.
void MakeRenamed(const std::string& folder)
{
    GitImport import(folder);
    for (std::uint32_t i = 0; i < commitCount; ++i)
    {
        const std::string number = std::to_string(i);
        const std::uint32_t renamed = commitCount - pageSize / 2;
        import.Commit("A subject of usual length, and a number: " + number + "\n\nAnd a body.\n");
        if (i == renamed)
            import.Rename("old.txt", "log.txt");
        else
            import.File(i < renamed ? "old.txt" : "log.txt", "line " + number + "\n");
    }
}

void MakeTree(const std::string& folder, std::uint32_t count, std::size_t size)
{
    std::mt19937_64 random; // the same each time
    GitImport import(folder);
    import.Commit("Contents");
    for (std::uint32_t i = 0; i < count; ++i)
    {
        std::string bytes(size, '\0');
        for (char& byte : bytes)
            byte = static_cast<char>(random());
        import.File(NameOf(i), bytes);
    }
}

std::function<void()> ShowingAll(const std::string& folder)
{
    return [=] {
        for (std::uint32_t i = 0; i < contentCount; ++i)
            Require(RunBare({{"git", "show", "main:" + NameOf(i)}, folder}) == contentSize,
                    "the client shows another size");
    };
}

} // namespace

int tarnwell::bench::Run()
{
    const TempFolder ground;
    UseOwnSettings(ground / "home");
    const std::string history = ground / "history";
    const std::string renamed = ground / "renamed";
    const std::string contents = ground / "contents";
    const std::string tree = ground / "tree";
    std::fputs("Making repositories ...\n", stderr);
    MakeHistory(history);
    MakeRenamed(renamed);
    MakeTree(contents, contentCount, contentSize);
    MakeTree(tree, itemCount, 16);

    const auto git = MakeFileSystem(CLSID_GITFileSystem);
    const std::string log = history + "/log.txt";
    const std::string followed = renamed + "/log.txt";
    return Measure({
        {"Git history: 20 of 20,000", 30, 1.2, Telling(git, log, pageSize, pageSize),
         Bare({{"git", "log", "-n", "20", "--", "log.txt"}, history})},
        {"Git history: all 20,000", 10, 1.1, Telling(git, log, 0, commitCount),
         Bare({{"git", "log", "--", "log.txt"}, history})},
        {"Git history, followed: 20 of 20,000", 30, 1.2,
         Telling(git, followed, pageSize, pageSize, HistoryFollow),
         Bare({{"git", "log", "--follow", "-n", "20", "--", "log.txt"}, renamed})},
        {"Git history, followed: all 20,000", 10, 1.1,
         Telling(git, followed, 0, commitCount, HistoryFollow),
         Bare({{"git", "log", "--follow", "--", "log.txt"}, renamed})},
        {"Git tree: 1,000 contents", 5, 0.25,
         ReadingAll(git, contents, NameOf, contentCount, contentSize), ShowingAll(contents)},
        {"Git tree: listing 50,000", 10, 1.3, ListingAll(git, tree, itemCount),
         Bare({{"git", "ls-tree", "-r", "-l", "main"}, tree})},
    });
}
