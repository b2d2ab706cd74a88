// Mercurial's histories and trees against what was generated, and what the repository's raw data
// say.
#include "module/hggenerated.h"
#include "module/hghistorytest.h"

#include <tarnwell/text.h>

#include <algorithm>
#include <iterator>
#include <map>
#include <set>
#include <sstream>

namespace tarnwell::test
{
namespace
{

class HgModel : public HgHistories
{
protected:
    // All that led to a version, under whatever name.
    std::set<std::size_t> BehindOf(std::size_t version) const
    {
        std::set<std::size_t> behind;
        std::vector<std::size_t> waiting = {version};
        while (!waiting.empty())
        {
            const std::size_t next = waiting.back();
            waiting.pop_back();
            if (!behind.insert(next).second)
                continue;
            const HgVersion& found = all_.versions[next];
            waiting.insert(waiting.end(), found.earlier.begin(), found.earlier.end());
            if (found.source)
                waiting.push_back(*found.source);
        }
        return behind;
    }

    std::set<std::size_t> AncestorsOf(std::size_t revision) const
    {
        std::set<std::size_t> ancestors = {revision};
        for (auto at = ancestors.rbegin(); at != ancestors.rend(); ++at)
            ancestors.insert(all_.revisions[*at].parents.begin(),
                             all_.revisions[*at].parents.end());
        return ancestors;
    }

    // Of two revisions those that lead to both, without what leads to one of these.
    std::set<std::size_t> LastCommon(const std::vector<std::size_t>& two) const
    {
        const std::set<std::size_t> one = AncestorsOf(two[0]);
        const std::set<std::size_t> other = AncestorsOf(two[1]);
        std::set<std::size_t> common;
        std::set_intersection(one.begin(), one.end(), other.begin(), other.end(),
                              std::inserter(common, common.end()));
        std::set<std::size_t> last = common;
        for (const std::size_t each : common)
        {
            for (const std::size_t parent : all_.revisions[each].parents)
            {
                for (const std::size_t behind : AncestorsOf(parent))
                    last.erase(behind);
            }
        }
        return last;
    }
    // Whether the file's removal is told in a merge of it: only a side that the other one has
    // removed and that hadn't changed since is none.
    bool IsRemovalTold(const HgMade& merge, std::size_t version, const std::string& name) const
    {
        if (all_.revisions[merge.parents[1]].VersionOf(name))
            return true;
        const std::set<std::size_t> last = LastCommon(merge.parents);
        return last.empty() || std::any_of(last.begin(), last.end(), [&](std::size_t each) {
                   return all_.revisions[each].VersionOf(name) != version;
               });
    }

    // Whether the file isn't what any of the parents has.
    bool IsChangedIn(std::size_t revision, const std::string& name) const
    {
        const HgMade& made = all_.revisions[revision];
        const auto here = made.VersionOf(name);
        if (made.parents.empty())
            return here.has_value();
        const auto isSame = [&](std::size_t parent) {
            return all_.revisions[parent].VersionOf(name) == here;
        };
        const std::vector<std::size_t>& parents = made.parents;
        const auto first = all_.revisions[parents[0]].VersionOf(name);
        if (!here && first && parents.size() > 1)
            return IsRemovalTold(made, *first, name);
        return std::none_of(parents.begin(), parents.end(), isSame);
    }

    // The revisions that a history has, the latest first, with the names that the file has: its own
    // where that is changed, else one of those that it was made of.
    using Expected = std::vector<std::pair<std::size_t, std::set<std::string>>>;
    Expected ExpectedOf(std::size_t begin, const std::string& name, bool follows) const
    {
        std::map<std::size_t, std::set<std::string>, std::greater<>> found;
        for (const std::size_t revision : AncestorsOf(begin))
        {
            if (IsChangedIn(revision, name))
                found[revision] = {name};
        }
        std::optional<std::size_t> version = all_.revisions[begin].VersionOf(name);
        if (!version && !found.empty())
            version = VersionBefore(found.begin()->first, name);
        if (follows && version)
        {
            for (const std::size_t each : BehindOf(*version))
            {
                const HgVersion& behind = all_.versions[each];
                if (!IsChangedIn(behind.revision, name))
                    found[behind.revision].insert(behind.name);
            }
        }
        return {found.begin(), found.end()};
    }

    // Where a file that is gone since a revision last was.
    std::optional<std::size_t> VersionBefore(std::size_t revision, const std::string& name) const
    {
        std::vector<std::size_t> parents = all_.revisions[revision].parents;
        std::sort(parents.begin(), parents.end());
        for (const std::size_t parent : parents)
        {
            if (const auto version = all_.revisions[parent].VersionOf(name))
                return version;
        }
        return std::nullopt;
    }

    static std::vector<std::size_t> RevisionsOf(const Expected& expected)
    {
        std::vector<std::size_t> numbers;
        for (const auto& [number, names] : expected)
            numbers.push_back(number);
        return numbers;
    }
    std::vector<std::size_t> NumbersOf(const std::vector<HistoryEntry>& entries) const
    {
        std::vector<std::size_t> numbers;
        for (const HistoryEntry& entry : entries)
        {
            const auto found =
                std::find_if(all_.revisions.begin(), all_.revisions.end(),
                             [&](const HgMade& made) { return made.id == EncodeName(entry.id); });
            numbers.push_back(static_cast<std::size_t>(found - all_.revisions.begin()));
        }
        return numbers;
    }

    // The files' ids, by names: a changeset's data begin with the manifest's id, and each line of a
    // manifest's is a name, a NUL, an id, and a flag.
    std::map<std::string, std::string> ManifestOf(std::size_t revision) const
    {
        const std::string data = repository.Run({"debugdata", "-c", std::to_string(revision)});
        const std::string id = data.substr(0, 40);
        std::map<std::string, std::string> files;
        if (id == std::string(40, '0'))
            return files;
        std::istringstream lines(repository.Run({"debugdata", "-m", id}));
        for (std::string line; std::getline(lines, line);)
            files[line.substr(0, line.find('\0'))] = line.substr(line.find('\0') + 1, 40);
        return files;
    }

    HgGenerated all_;
};

class HgModelOf : public HgModel, public testing::WithParamInterface<std::uint32_t>
{
};

TEST_P(HgModelOf, HistoriesAreTheChangesOnTheirLines)
{
    all_ = GenerateHg(repository, GetParam(), 60);
    const std::size_t last = all_.revisions.size() - 1;
    std::size_t renamed = 0;
    std::size_t merged = 0;
    for (const auto& [begin, follows] : {std::pair(last, false), {last, true}, {last / 2, true}})
    {
        for (const std::string& name : hgNames)
        {
            const Expected expected = ExpectedOf(begin, name, follows);
            if (expected.empty())
                continue;
            const auto entries = History(Address(DecodeName(name), all_.revisions[begin].id),
                                         Wanted(follows ? std::uint32_t{HistoryFollow} : 0U));
            ASSERT_EQ(NumbersOf(entries), RevisionsOf(expected)) << name << ' ' << begin;
            for (std::size_t i = 0; i < entries.size(); ++i)
            {
                const auto& [number, names] = expected[i];
                const HgMade& made = all_.revisions[number];
                const auto path = EncodeName(entries[i].path).value();
                EXPECT_EQ(EncodeName(entries[i].description), made.texts->description);
                EXPECT_EQ(EncodeName(entries[i].author), made.texts->author);
                EXPECT_EQ(entries[i].time, 116444736000000000U + 10'000'000U * made.seconds);
                EXPECT_THAT(names, testing::Contains(path))
                    << name << ' ' << begin << ' ' << number;
                merged += made.parents.size() > 1 ? 1 : 0;
                renamed += path == name ? 0 : 1;
            }
        }
    }
    EXPECT_GT(renamed, 5U);
    EXPECT_GT(merged, 10U);
}

// In the first one, files are followed that had other names before they were gone.
INSTANTIATE_TEST_SUITE_P(Generated, HgModelOf, testing::Values(6U, 118U));

TEST_F(HgModel, TreesAreWhatTheRawDataSay)
{
    all_ = GenerateHg(repository, 8, 40);
    const std::size_t last = all_.revisions.size() - 1;
    for (const std::size_t number : {std::size_t{0}, last / 2, last})
    {
        const auto tree = TreeAt(all_.revisions[number].id);
        std::map<std::string, std::string> found;
        std::map<std::string, std::string> contents;
        for (const TreeEntry& entry : ListOf(tree, {}, true))
        {
            if (entry.kind == TreeFolder)
                continue;
            const auto name = EncodeName(entry.name).value();
            found[name] = EncodeName(entry.contentId).value();
            contents[name] = ContentOf(tree, entry.name);
            EXPECT_EQ(contents[name].size(), entry.size);
        }
        EXPECT_EQ(found, ManifestOf(number));
        std::map<std::string, std::string> expected;
        for (const auto& [name, version] : all_.revisions[number].files)
            expected[name] = all_.versions[version].content;
        EXPECT_EQ(contents, expected);
    }
}

} // namespace
} // namespace tarnwell::test
