// Any bytes as what the Mercurial client prints of a revision's files: names, sizes, repositories
// inside.
#include "mercurial/hgtreeparser.h"
#include "support/pieces.h"

namespace tarnwell::fuzz
{

namespace
{

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
    auto entries = ReadTwice(
        bytes, 3, [] { return HgManifestParser(); },
        [](const HgEntry& left, const HgEntry& right) {
            return left.path == right.path && left.id == right.id && left.kind == right.kind;
        });
    ReadTwice(
        bytes, 3, [] { return HgSizeParser(); },
        [](const HgSize& left, const HgSize& right) {
            return left.path == right.path && left.size == right.size;
        });
    if (const auto inside = ReadHgRepositories(bytes))
        entries.insert(entries.end(), inside->begin(), inside->end());
    for (const HgEntry& entry : entries)
        ExpectLeadsDown(entry.path);
    CheckManifest(HgManifest(std::move(entries)));
}

} // namespace tarnwell::fuzz
