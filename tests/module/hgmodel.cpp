// Mercurial's histories and trees against what was generated, and what the repository's raw data
// say.
#include "module/hggenerated.h"
#include "module/hghistorytest.h"

#include <tarnwell/text.h>

#include <algorithm>
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

    // Whether the file isn't what any of the parents has.
    bool IsChangedIn(std::size_t revision, const std::string& name) const
    {
        const HgMade& made = all_.revisions[revision];
        const auto here = made.VersionOf(name);
        if (made.parents.empty())
            return here.has_value();
        return std::none_of(made.parents.begin(), made.parents.end(), [&](std::size_t parent) {
            return all_.revisions[parent].VersionOf(name) == here;
        });
    }

    // The revisions that a history has, the latest first, with the names that the file may have.
    using Expected = std::vector<std::pair<std::size_t, std::set<std::string>>>;
    Expected ExpectedOf(std::size_t begin, const std::string& name, bool follows) const
    {
        std::map<std::size_t, std::set<std::string>, std::greater<>> found;
        for (const std::size_t revision : AncestorsOf(begin))
        {
            if (IsChangedIn(revision, name))
                found[revision].insert(name);
        }
        const auto version = all_.revisions[begin].VersionOf(name);
        if (follows && version)
        {
            for (const std::size_t each : BehindOf(*version))
                found[all_.versions[each].revision].insert(all_.versions[each].name);
        }
        return {found.begin(), found.end()};
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
    std::size_t ChangesIn(std::size_t revision) const
    {
        return static_cast<std::size_t>(
            std::count_if(hgNames.begin(), hgNames.end(),
                          [&](const std::string& name) { return IsChangedIn(revision, name); }));
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

TEST_F(HgModel, HistoriesAreTheChangesOnTheirLines)
{
    all_ = GenerateHg(repository, 7, 60);
    const std::size_t last = all_.revisions.size() - 1;
    std::size_t all = 0;
    std::size_t exact = 0;
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
                // Of several files the client doesn't tell which one it followed.
                const bool isExact = names.contains(path);
                EXPECT_TRUE(isExact || (IsChangedIn(number, path) && ChangesIn(number) > 1))
                    << name << ' ' << begin << ' ' << number << ' ' << path;
                exact += isExact ? 1 : 0;
                all += 1;
                merged += made.parents.size() > 1 ? 1 : 0;
                renamed += path == name ? 0 : 1;
            }
        }
    }
    EXPECT_GT(exact * 20, all * 19);
    EXPECT_GT(renamed, 10U);
    EXPECT_GT(merged, 10U);
}

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
