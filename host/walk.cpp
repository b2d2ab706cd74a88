#include "walk.h"

#include "items.h"
#include "pattern.h"
#include "words.h"

#include <tarnwell/constants.h>

#include <algorithm>
#include <tuple>
#include <vector>

namespace tarnwell::host
{

namespace
{

// A server may show a folder inside itself without calling it a link. No honest path has as many
// levels.
inline constexpr std::size_t deepest = 1000;

struct Waiting
{
    ComPtr<IFolder> folder;
    // With a slash behind it; empty for the first.
    std::u16string prefix;
    std::size_t depth;
};

// An item of a folder, which is made again when it is visited: all at once would take ten times the
// memory.
struct Named
{
    std::optional<std::u16string> name; // nothing if the item doesn't tell it
    std::uint32_t index;
};

// In the order of their names.
std::vector<Named> NamesIn(const ComPtr<IFolderContents>& contents, const Walk& walk)
{
    std::vector<Named> names;
    const auto add = [&](std::uint32_t index) {
        const ComPtr<IFileSystemItem> item = ItemAt(contents, index);
        names.push_back({NameOf(item).value, index});
    };
    ForEachIndex(contents, add, walk.fail);
    std::sort(names.begin(), names.end(), [](const Named& left, const Named& right) {
        return std::tie(left.name, left.index) < std::tie(right.name, right.index);
    });
    return names;
}

struct Listed
{
    ItemFacts facts;
    // Null for a file.
    ComPtr<IFolder> folder;
};

// Nothing for what is no item any more.
std::optional<Listed> ListedAt(const ComPtr<IFolderContents>& contents, std::uint32_t index,
                               const Walk& walk)
{
    try
    {
        const ComPtr<IFileSystemItem> item = ItemAt(contents, index);
        return Listed{FactsOf(item), item.As<IFolder>()};
    }
    catch (const Failure& failure)
    {
        walk.fail(failure);
        return std::nullopt;
    }
}

// Gives the folders to go on with, in order.
std::vector<Waiting> VisitFolder(const Waiting& present, const Walk& walk)
{
    if (present.depth > deepest)
        throw Failure{E_FAIL, Say(Word::TooDeep, {present.prefix})};
    std::vector<Waiting> inside;
    const ComPtr<IFolderContents> contents = ContentsOf(present.folder);
    for (const Named& named : NamesIn(contents, walk))
    {
        const std::optional<Listed> item = ListedAt(contents, named.index, walk);
        if (!item)
            continue;
        const std::u16string name = named.name.value_or(u"?");
        if (IsWanted(walk.patterns, name))
            walk.visit(item->facts, present.prefix + name);
        if (walk.recursive && item->folder && !IsLink(item->facts))
            inside.push_back({item->folder, present.prefix + name + u"/", present.depth + 1});
    }
    return inside;
}

} // namespace

bool IsWanted(std::span<const std::u16string> patterns, const std::u16string& name)
{
    return patterns.empty() ||
           std::any_of(patterns.begin(), patterns.end(),
                       [&](const std::u16string& pattern) { return MatchesName(pattern, name); });
}

bool IsLink(const ItemFacts& facts)
{
    return (facts.attributes.value.value_or(0) & AttributeLink) != 0;
}

void WalkFolder(const ComPtr<IFolder>& folder, const Walk& walk)
{
    std::vector<Waiting> waiting = VisitFolder({folder, {}, 0}, walk);
    std::reverse(waiting.begin(), waiting.end());
    while (!waiting.empty())
    {
        const Waiting next = std::move(waiting.back());
        waiting.pop_back();
        try
        {
            std::vector<Waiting> inside = VisitFolder(next, walk);
            std::move(inside.rbegin(), inside.rend(), std::back_inserter(waiting));
        }
        catch (const Failure& failure)
        {
            walk.fail(failure);
        }
    }
}

} // namespace tarnwell::host
