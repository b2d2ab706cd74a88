// Any bytes as what the Git client prints of trees: an object, the line in front of one, a listing.
#include "git/gittreeparser.h"
#include "support/target.h"

#include <algorithm>

namespace tarnwell::fuzz
{

namespace
{

std::vector<GitEntry> ListedIn(std::string_view bytes, std::size_t piece, bool& isComplete)
{
    GitListingParser parser;
    std::vector<GitEntry> entries;
    while (!bytes.empty())
    {
        parser.Feed(bytes.substr(0, piece));
        bytes.remove_prefix(std::min(piece, bytes.size()));
        while (std::optional<GitEntry> entry = parser.Next())
            entries.push_back(std::move(*entry));
    }
    isComplete = parser.IsComplete();
    return entries;
}

bool Same(const GitEntry& left, const GitEntry& right)
{
    return left.mode == right.mode && left.name == right.name && left.id == right.id &&
           left.size == right.size;
}

void CheckPath(std::string_view path)
{
    const std::string text = "/" + std::string(path) + "/";
    Expect(text.find("/../") == std::string::npos && text.find("/./") == std::string::npos &&
               text.find("//") == std::string::npos,
           "a name leads down");
}

} // namespace

void Try(std::string_view bytes)
{
    bool isWhole = false;
    bool isInPieces = false;
    const auto whole = ListedIn(bytes, bytes.size(), isWhole);
    const auto pieces = ListedIn(bytes, 3, isInPieces);
    Expect(isWhole == isInPieces &&
               std::equal(whole.begin(), whole.end(), pieces.begin(), pieces.end(), Same),
           "pieces are read as the whole is");
    for (const GitEntry& entry : whole)
        CheckPath(entry.name);
    for (const std::size_t idBytes : {20U, 32U})
    {
        if (const auto entries = ReadGitTree(bytes, idBytes))
        {
            for (const GitEntry& entry : *entries)
            {
                Expect(IsGitName(entry.name), "an entry has a name");
                Expect(entry.id.size() == 2 * idBytes, "an id is whole");
            }
        }
    }
    if (const auto line = ReadGitObjectLine(bytes))
        Expect(line->id.size() == 40 || line->id.size() == 64, "an id has one of two sizes");
    if (const auto facts = ReadGitCommit(bytes))
        Expect(facts->tree.size() == 40 || facts->tree.size() == 64, "a commit has a tree");
}

} // namespace tarnwell::fuzz
