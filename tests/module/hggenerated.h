// Generated revisions of a Mercurial repository, known without asking it: lines that part and meet,
// with renamings, copies, deletions and files made again.
#pragma once

#include "support/mercurialrepository.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace tarnwell::test
{

struct HgTexts
{
    const char* description;
    const char* author;
    const char* encoding; // of the one who wrote them
};

// A file as one revision made it.
struct HgVersion
{
    std::string name;
    std::size_t revision = 0;
    std::vector<std::size_t> earlier;  // versions of the same name
    std::optional<std::size_t> source; // the version that it is a copy of
    std::string content;
};

struct HgMade
{
    std::string id;
    std::uint64_t seconds = 0; // of Unix
    std::vector<std::size_t> parents;
    std::map<std::string, std::size_t> files; // their versions
    const HgTexts* texts = nullptr;

    std::optional<std::size_t> VersionOf(const std::string& name) const;
};

struct HgGenerated
{
    std::vector<HgMade> revisions;
    std::vector<HgVersion> versions;
};

extern const std::vector<std::string> hgNames; // of all files

// Throws if the client fails.
HgGenerated GenerateHg(const MercurialRepository& repository, std::uint32_t seed,
                       std::size_t count);

} // namespace tarnwell::test
