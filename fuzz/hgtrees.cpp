// Any bytes as what the Mercurial client prints of a revision's files: names, sizes, repositories
// inside.
#include "mercurial/hgtreeparser.h"
#include "support/target.h"

#include <algorithm>

namespace tarnwell::fuzz
{

namespace
{

template <class Parser> auto ReadIn(std::string_view bytes, std::size_t piece, bool& isComplete)
{
    Parser parser;
    std::vector<typename decltype(parser.Next())::value_type> found;
    while (!bytes.empty())
    {
        parser.Feed(bytes.substr(0, piece));
        bytes.remove_prefix(std::min(piece, bytes.size()));
        while (auto next = parser.Next())
            found.push_back(std::move(*next));
    }
    isComplete = parser.IsComplete();
    return found;
}

template <class Parser, class F> auto ReadTwice(std::string_view bytes, const F& same)
{
    bool isWhole = false;
    bool isInPieces = false;
    auto whole = ReadIn<Parser>(bytes, bytes.size(), isWhole);
    const auto pieces = ReadIn<Parser>(bytes, 3, isInPieces);
    Expect(isWhole == isInPieces &&
               std::equal(whole.begin(), whole.end(), pieces.begin(), pieces.end(), same),
           "pieces are read as the whole is");
    return whole;
}

void CheckPath(std::string_view path)
{
    const std::string text = "/" + std::string(path) + "/";
    Expect(text.find("/../") == std::string::npos && text.find("/./") == std::string::npos &&
               text.find("//") == std::string::npos,
           "a name leads down");
}

void CheckManifest(const HgManifest& manifest)
{
    std::size_t count = 0;
    std::vector<std::string> folders = {""};
    while (!folders.empty())
    {
        const std::string folder = std::move(folders.back());
        folders.pop_back();
        for (const HgEntry& child : manifest.ChildrenOf(folder))
        {
            Expect(manifest.Find(child.path).has_value(), "what is listed is found");
            if (child.kind == HgKind::Folder)
                folders.push_back(child.path);
            else
                ++count;
        }
    }
    const auto [begin, end] = manifest.Below("");
    Expect(count == static_cast<std::size_t>(end - begin), "each is in one folder");
}

} // namespace

void Try(std::string_view bytes)
{
    auto entries =
        ReadTwice<HgManifestParser>(bytes, [](const HgEntry& left, const HgEntry& right) {
            return left.path == right.path && left.id == right.id && left.kind == right.kind;
        });
    ReadTwice<HgSizeParser>(bytes, [](const HgSize& left, const HgSize& right) {
        return left.path == right.path && left.size == right.size;
    });
    if (const auto inside = ReadHgRepositories(bytes))
        entries.insert(entries.end(), inside->begin(), inside->end());
    for (const HgEntry& entry : entries)
        CheckPath(entry.path);
    CheckManifest(HgManifest(std::move(entries)));
}

} // namespace tarnwell::fuzz
