// Git's histories told in full, against what the repository's objects say.
#include "module/githistorytest.h"

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

} // namespace
} // namespace tarnwell::test
