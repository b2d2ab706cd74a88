// Any bytes as what the Git client prints of trees: an object, the line in front of one, a listing;
// as the names of its settings; and as a path that it is told.
#include "git/gittreeparser.h"
#include "git/gitworkparser.h"
#include "support/pieces.h"

namespace tarnwell::fuzz
{

namespace
{

bool Same(const GitEntry& left, const GitEntry& right)
{
    return left.mode == right.mode && left.name == right.name && left.id == right.id &&
           left.size == right.size;
}

} // namespace

void Try(std::string_view bytes)
{
    const auto listed = ReadTwice(
        bytes, 3, [] { return GitListingParser(); }, Same);
    for (const GitEntry& entry : listed)
        ExpectLeadsDown(entry.name);
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
    for (const std::string& name : ReadGitFilterNames(bytes))
    {
        Expect(bytes.find("filter." + name + ".") != std::string_view::npos,
               "a filter's name is in a setting's");
    }
    Expect(QuotedGitPath(bytes).find('\n') == std::string::npos, "a path is one line");
}

} // namespace tarnwell::fuzz
