// Git's histories told in full, against what the repository's objects say.
#include "module/githistorytest.h"
#include "support/clients.h"

#include <tarnwell/text.h>

#include <algorithm>
#include <map>
#include <random>
#include <set>
#include <sstream>

namespace tarnwell::test
{
namespace
{

namespace fs = std::filesystem;

// What a commit's object says, read by itself.
struct Raw
{
    std::vector<std::string> parents;
    std::string tree;
    std::string message;
};

class GitModel : public GitHistories
{
protected:
    Raw RawOf(const std::string& commit) const
    {
        std::istringstream object(repository.Git("cat-file commit " + commit));
        Raw raw;
        std::string line;
        while (std::getline(object, line) && !line.empty())
        {
            if (line.starts_with("tree "))
                raw.tree = line.substr(5);
            if (line.starts_with("parent "))
                raw.parents.push_back(line.substr(7));
        }
        std::ostringstream rest;
        rest << object.rdbuf();
        raw.message = rest.str();
        while (raw.message.ends_with('\n'))
            raw.message.pop_back();
        return raw;
    }
    // The id of the file's content in a commit; empty without it.
    std::string BlobOf(const std::string& commit, const std::string& path) const
    {
        const std::string line =
            repository.Run({"ls-tree", "--format=%(objectname)", commit, "--", path});
        return line;
    }
};

// A line of commits, by one that makes up its changes: each of the files' histories is those
// commits in which it differs from the one before.
TEST_F(GitModel, EveryFilesHistoryIsWhatItsObjectsSay)
{
    std::mt19937 random(15);
    const auto below = [&](unsigned bound) {
        return static_cast<unsigned>(random() % bound);
    };
    const std::vector<std::u16string> names = {u"a.txt", u"b/c.txt", u"b/\u00e9 e.txt"};
    const std::vector<std::string> messages = {"plain", "title\n\nbody\n\n\nmore", "", "!",
                                               "\xE6\x97\xA5\n\xF0\x9F\x98\x80"};
    for (unsigned i = 0; i < 40; ++i)
    {
        for (const std::u16string& name : names)
        {
            const fs::path path(repository / name);
            if (below(5) == 0)
                fs::remove(path);
            else if (below(2) == 0)
            {
                fs::create_directories(path.parent_path());
                WriteBytes(repository / name, std::to_string(below(4)));
            }
        }
        repository.Git("add -A");
        repository.Run({"commit", "-q", "--allow-empty", "--allow-empty-message",
                        "--cleanup=verbatim", "-m", messages[below(5)]});
    }
    std::istringstream commits(repository.Git("rev-list HEAD"));
    std::map<std::u16string, std::vector<std::pair<std::string, std::string>>> expected;
    for (std::string commit; commits >> commit;)
    {
        const Raw raw = RawOf(commit);
        for (const std::u16string& name : names)
        {
            const std::string path = EncodeName(name).value();
            const std::string before = raw.parents.empty() ? "" : BlobOf(raw.parents[0], path);
            if (BlobOf(commit, path) != before)
                expected[name].emplace_back(commit, raw.message);
        }
    }
    for (const std::u16string& name : names)
    {
        std::vector<std::pair<std::string, std::string>> found;
        for (const HistoryEntry& entry : History(Address(name)))
            found.emplace_back(EncodeName(entry.id).value(), EncodeName(entry.description).value());
        EXPECT_EQ(found, expected[name]) << EncodeName(name).value();
        EXPECT_GT(found.size(), 5U);
    }
}

// A commit as the generator knows it, without asking anybody.
struct Made
{
    std::vector<std::size_t> parents;
    std::map<std::string, std::string> files;
    std::uint64_t time = 0; // in Unix seconds
};

std::string TextOf(std::size_t number)
{
    return "commit " + std::to_string(number) + "\n\nwith a body\n\n\nin parts";
}

// Whether the path is the same in both.
bool AreAlike(const Made& a, const Made& b, const std::string& path)
{
    const auto in = [&](const Made& made) {
        const auto found = made.files.find(path);
        return found == made.files.end() ? std::string("none") : found->second;
    };
    return in(a) == in(b);
}

class GitMerges : public GitModel
{
protected:
    // Lines that part and meet again; what a merge holds is what one of its sides has, or neither.
    void Make(std::uint32_t seed, std::size_t count)
    {
        std::mt19937 random(seed);
        const auto below = [&](std::size_t bound) {
            return static_cast<std::size_t>(random() % bound);
        };
        std::vector<std::size_t> tips = {0};
        for (std::size_t i = 0; i < count; ++i)
        {
            Made made;
            made.time = 1'000'000'000 + 100 * i;
            if (i > 0)
            {
                const std::size_t line = below(tips.size());
                made.parents = {tips[line]};
                made.files = made_[tips[line]].files;
                const std::size_t other = below(tips.size());
                if (below(3) == 0 && tips[other] != tips[line])
                {
                    made.parents.push_back(tips[other]);
                    for (const std::string& name : names_)
                    {
                        if (below(2) == 0)
                            Assign(made, name, made_[tips[other]]);
                    }
                }
                if (tips.size() < 3 && below(4) == 0)
                    tips.push_back(i);
                else
                    tips[line] = i;
            }
            for (const std::string& name : names_)
            {
                const std::size_t chance = below(made.parents.size() > 1 ? 12 : 4);
                if (chance == 0)
                    made.files.erase(name);
                else if (chance == 1)
                    made.files[name] = std::to_string(below(3));
            }
            made_.push_back(std::move(made));
        }
        Import();
    }
    static void Assign(Made& made, const std::string& name, const Made& from)
    {
        const auto found = from.files.find(name);
        if (found == from.files.end())
            made.files.erase(name);
        else
            made.files[name] = found->second;
    }
    void Import() const
    {
        std::ostringstream input;
        for (std::size_t i = 0; i < made_.size(); ++i)
        {
            const std::string text = TextOf(i);
            input << "commit refs/heads/main\nmark :" << i + 1 << "\ncommitter A <a@b> "
                  << made_[i].time << " +0000\ndata " << text.size() << "\n"
                  << text << "\n";
            for (std::size_t j = 0; j < made_[i].parents.size(); ++j)
                input << (j == 0 ? "from" : "merge") << " :" << made_[i].parents[j] + 1 << "\n";
            input << "deleteall\n";
            for (const auto& [name, bytes] : made_[i].files)
                input << "M 644 inline " << name << "\ndata " << bytes.size() << "\n"
                      << bytes << "\n";
        }
        ASSERT_EQ(RunClient("git", {.arguments = {u"fast-import", u"--quiet", u"--force"},
                                    .input = input.str(),
                                    .folder = repository.Folder().Path()})
                      .exitCode,
                  0);
    }
    // A merge that is like one of its sides for the path is that side's, and the others aren't
    // looked at; otherwise each change counts, the latest first.
    std::vector<std::size_t> Expected(const std::string& path) const
    {
        std::set<std::size_t> waiting = {made_.size() - 1};
        std::vector<std::size_t> found;
        while (!waiting.empty())
        {
            const std::size_t i = *waiting.rbegin();
            waiting.erase(i);
            const Made& made = made_[i];
            const auto same =
                std::find_if(made.parents.begin(), made.parents.end(), [&](std::size_t parent) {
                    return AreAlike(made, made_[parent], path);
                });
            if (same != made.parents.end())
            {
                waiting.insert(*same);
                continue;
            }
            if (!made.parents.empty() || made.files.contains(path))
                found.push_back(i);
            waiting.insert(made.parents.begin(), made.parents.end());
        }
        return found;
    }
    std::vector<std::u16string> TextsOf(const std::vector<std::size_t>& numbers) const
    {
        std::vector<std::u16string> texts;
        for (const std::size_t number : numbers)
            texts.push_back(DecodeName(TextOf(number)));
        return texts;
    }
    static std::uint64_t FileTime(std::uint64_t seconds)
    {
        return 116444736000000000U + 10'000'000U * seconds;
    }

    const std::vector<std::string> names_ = {"a.txt", "b/c.txt", "d"};
    std::vector<Made> made_;
};

TEST_F(GitMerges, HistoriesAreTheChangesOnTheirLines)
{
    Make(7, 120);
    for (const std::string& name : names_)
    {
        const auto expected = Expected(name);
        EXPECT_GT(expected.size(), 5U);
        EXPECT_EQ(Descriptions(Address(DecodeName(name))), TextsOf(expected)) << name;
    }
}

TEST_F(GitMerges, PagesAndTimesAreCutFromThem)
{
    Make(8, 120);
    std::mt19937 random(9);
    for (int round = 0; round < 20; ++round)
    {
        const std::string& name = names_[random() % names_.size()];
        HistoryOptions options = Wanted();
        options.skip = static_cast<std::uint32_t>(random() % 4);
        options.count = static_cast<std::uint32_t>(random() % 5);
        const std::uint64_t begin = 1'000'000'000 + random() % 12'000;
        const std::uint64_t end = begin + random() % 6'000;
        options.since = round % 3 == 0 ? 0 : FileTime(begin);
        options.until = round % 3 == 1 ? 0 : FileTime(end);
        std::vector<std::size_t> expected = Expected(name);
        std::erase_if(expected, [&](std::size_t number) {
            const std::uint64_t time = made_[number].time;
            return (options.since != 0 && time < begin) || (options.until != 0 && time > end);
        });
        expected.erase(expected.begin(),
                       expected.begin() +
                           std::min<std::ptrdiff_t>(options.skip, std::ssize(expected)));
        if (options.count != 0 && expected.size() > options.count)
            expected.resize(options.count);
        EXPECT_EQ(Descriptions(Address(DecodeName(name)), options), TextsOf(expected))
            << name << " " << round;
    }
}

TEST_F(GitMerges, TreesAreWhatEachCommitHeld)
{
    Make(10, 40);
    std::istringstream commits(repository.Git("log --format=%H%x20%s"));
    std::size_t count = 0;
    for (std::string id, word, number; commits >> id >> word >> number; ++count)
    {
        const Made& made = made_[std::stoul(number)];
        const auto tree = TreeAt(id);
        std::map<std::string, std::string> files;
        for (const TreeEntry& entry : ListOf(tree, {}, true))
        {
            if (entry.kind == TreeFile)
                files[EncodeName(entry.name).value()] = ContentOf(tree, entry.name);
        }
        EXPECT_EQ(files, made.files);
        EXPECT_EQ(TimeOf(tree), FileTime(made.time));
    }
    EXPECT_GT(count, 20U);
}

// One file through many names, beside others that change.
TEST_F(GitModel, AFollowedFileIsTheSameUnderAllItsNames)
{
    std::mt19937 random(11);
    std::u16string name = u"name 0.txt";
    std::string bytes = "the same words at first\n";
    for (int i = 0; i < 40; ++i)
        bytes += "line " + std::to_string(i) + " of a file that is followed\n";
    std::vector<std::pair<std::u16string, std::u16string>> expected; // descriptions and names
    for (int i = 0; i < 30; ++i)
    {
        const std::string description = "change " + std::to_string(i);
        const auto choice = random() % 3;
        if (choice == 0 && i > 0)
        {
            repository.Commit(u"other " + DecodeName(std::to_string(i % 4)),
                              "other " + std::to_string(i), description);
            continue;
        }
        if (choice == 1 && i > 0)
        {
            const std::u16string before = name;
            name = u"folder " + DecodeName(std::to_string(i % 3)) + u"/name " +
                   DecodeName(std::to_string(i)) + u"\u00e9.txt";
            fs::create_directories(fs::path(repository / name).parent_path());
            fs::rename(fs::path(repository / before), fs::path(repository / name));
            repository.Git("add -A");
            repository.Run({"commit", "-q", "-m", description});
        }
        else
        {
            bytes += description + "\n";
            repository.Commit(name, bytes, description);
        }
        expected.insert(expected.begin(), {DecodeName(description), name});
    }
    const auto found = [&](std::size_t skip, std::size_t count) {
        std::vector<std::pair<std::u16string, std::u16string>> page;
        for (const HistoryEntry& entry :
             History(Address(name), Wanted(HistoryFollow, static_cast<std::uint32_t>(skip),
                                           static_cast<std::uint32_t>(count))))
            page.emplace_back(entry.description, entry.path);
        return page;
    };
    EXPECT_EQ(found(0, 0), expected);
    // Behind commits of others, too.
    const auto size = expected.size();
    for (const auto& [skip, count] : {std::pair(0 * size, size - 1), {5, size - 6}, {7, size}})
    {
        const auto end =
            expected.begin() + static_cast<std::ptrdiff_t>(std::min(skip + count, size));
        const decltype(expected) page(expected.begin() + static_cast<std::ptrdiff_t>(skip), end);
        EXPECT_EQ(found(skip, count), page) << skip;
    }
    EXPECT_GT(std::count_if(expected.begin(), expected.end(),
                            [&](const auto& each) { return each.second != name; }),
              3);
}

} // namespace
} // namespace tarnwell::test
