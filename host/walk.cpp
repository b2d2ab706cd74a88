#include "walk.h"

#include "items.h"
#include "pattern.h"
#include "words.h"

#include <tarnwell/constants.h>

#include <algorithm>

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

// Gives the folders to go on with, in order.
std::vector<Waiting> VisitFolder(const Waiting& present, const Walk& walk)
{
    if (present.depth > deepest)
        throw Failure{E_FAIL, Say(Word::TooDeep, {present.prefix})};
    std::vector<Waiting> inside;
    for (Listed& item : SortedItems(present.folder, walk.fail))
    {
        const std::u16string name = item.facts.name.value.value_or(u"?");
        if (IsWanted(walk.patterns, name))
            walk.visit(item.facts, present.prefix + name);
        if (walk.recursive && item.folder && !IsLink(item.facts))
            inside.push_back(
                {std::move(item.folder), present.prefix + name + u"/", present.depth + 1});
    }
    return inside;
}

} // namespace

std::vector<Listed> SortedItems(const ComPtr<IFolder>& folder,
                                const std::function<void(const Failure& failure)>& fail)
{
    std::vector<Listed> all;
    const auto add = [&](const ComPtr<IFileSystemItem>& item) {
        all.push_back({FactsOf(item), item.As<IFolder>()});
    };
    ForEachItem(folder, add, fail);
    std::stable_sort(all.begin(), all.end(), [](const Listed& left, const Listed& right) {
        return left.facts.name.value < right.facts.name.value;
    });
    return all;
}

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
