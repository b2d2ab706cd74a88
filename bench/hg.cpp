// Mercurial's file system against the client that it runs: content at a revision, and revisions.
#include "client/pairs.h"
#include "client/settings.h"
#include "support/folder.h"

#include <tarnwell/classes.h>

#include <cstdio>
#include <fstream>
#include <string>

namespace
{

using namespace tarnwell::bench;

constexpr std::size_t smallSize = 10 * 1024;
constexpr std::uint32_t commitCount = 10'000;

// As the module runs it.
BareRun Hg(std::vector<std::string> arguments)
{
    arguments.insert(arguments.begin(), "hg");
    return {std::move(arguments), "/"};
}

// A repository with one file of 10 KB; the file's path.
std::string MakeContents(const std::string& folder)
{
    RunBare(Hg({"init", folder}));
    const std::string path = folder + "/small.bin";
    std::ofstream(path, std::ios::binary) << std::string(smallSize, 'x');
    RunBare(Hg({"commit", "-q", "-A", "-u", "ann", "-m", "Contents", "-R", folder}));
    return path;
}

// A repository with 10,000 changesets of one file; the file's path, which the client chooses.
std::string MakeHistory(const std::string& folder)
{
    RunBare(Hg({"init", folder}));
    const std::string graph = "+" + std::to_string(commitCount);
    RunBare(Hg({"debugbuilddag", "-q", "-o", graph, "-R", folder}));
    RunBare(Hg({"update", "-q", "tip", "-R", folder}));
    return folder + "/of";
}

} // namespace

int tarnwell::bench::Run()
{
    const TempFolder ground;
    UseOwnSettings(ground / "home");
    std::fputs("Making repositories, which takes a while ...\n", stderr);
    const std::string small = MakeContents(ground / "contents");
    const std::string history = MakeHistory(ground / "history");
    const auto mercurial = MakeFileSystem(tarnwell::CLSID_HGFileSystem);
    const char* const format = "{rev}\n{author}\n{date}\n\t{desc|tabindent}\n!\n";
    return Measure({
        Reading("Mercurial: content of 10 KB", 30, 1.05, mercurial, "hg://" + small + "#0",
                smallSize, Hg({"cat", "-r", "0", small})),
        ListingRevisions("Mercurial: 10,000 revisions", 20, 1.05, mercurial, history,
                         commitCount + 1, Hg({"log", "--template", format, history})),
    });
}
