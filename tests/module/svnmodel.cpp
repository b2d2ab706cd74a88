// Subversion's histories and trees against what `svnlook` says of the repository's files.
#include "module/svnstricttest.h"

#include <algorithm>
#include <map>
#include <random>
#include <set>
#include <sstream>

namespace tarnwell::test
{
namespace
{

class SvnModel : public SvnStrict
{
protected:
    SvnModel()
    {
        Generate();
    }

    // What a revision did: "A  ", "U  ", "D  " and a path, "A +" with a line "(from PATH:rREV)"
    // behind it for a copy.
    struct Line
    {
        char action;
        bool isCopy;
        std::string path;
        std::string from;
    };
    std::vector<Line> Changed(int revision) const
    {
        std::istringstream lines(
            repository.Look({"changed", "--copy-info", "-r", std::to_string(revision)}));
        std::vector<Line> changed;
        for (std::string text; std::getline(lines, text);)
        {
            if (!text.empty() && text.back() == '\r')
                text.pop_back();
            const std::size_t from = text.find("(from ");
            if (text.starts_with("    ") && from != std::string::npos)
                changed.back().from = text.substr(from + 6, text.rfind(":r") - from - 6);
            else
                changed.push_back(
                    {text[0] == '_' ? 'U' : text[0], text[2] == '+', text.substr(4), {}});
        }
        return changed;
    }
    // All paths of a revision, folders with "/" behind them.
    std::set<std::string> PathsIn(int revision) const
    {
        std::istringstream lines(
            repository.Look({"tree", "--full-paths", "-r", std::to_string(revision)}));
        std::set<std::string> paths;
        for (std::string text; std::getline(lines, text);)
        {
            if (!text.empty() && text.back() == '\r')
                text.pop_back();
            if (!text.empty() && text != "/")
                paths.insert(text);
        }
        return paths;
    }
    std::string ContentIn(const std::string& path, int revision) const
    {
        return repository.Look({"cat", "-r", std::to_string(revision)}, path);
    }

    // The item's revisions by what each of them changed, from one on backwards: numbers, and the
    // path in each.
    std::vector<std::pair<int, std::string>> Expected(std::string path, int revision,
                                                      bool follows) const
    {
        std::vector<std::pair<int, std::string>> expected;
        for (; revision > 0; --revision)
        {
            const Line* nearest = nullptr;
            bool isChanged = false;
            for (const Line& line : changes_[static_cast<std::size_t>(revision)])
            {
                const std::string folder = line.path.ends_with('/') ? line.path : line.path + "/";
                const bool isAround = (path + "/").starts_with(folder);
                isChanged = isChanged || line.path == path || (isAround && line.action == 'A');
                if (isAround && line.action == 'A' &&
                    (nearest == nullptr || line.path.size() > nearest->path.size()))
                    nearest = &line;
            }
            if (isChanged)
                expected.emplace_back(revision, path);
            if (nearest == nullptr)
                continue;
            if (!nearest->isCopy || !follows)
                break;
            const std::string folder = nearest->path;
            path =
                folder.ends_with('/') ? nearest->from + path.substr(folder.size()) : nearest->from;
        }
        return expected;
    }

    int latest_ = 0;
    std::vector<std::vector<Line>> changes_;
    std::map<int, std::string> messages_;

private:
    void Generate();
};

// Files that are written, renamed with and without their folders, copied, removed and made again.
void SvnModel::Generate()
{
    if (!WhyNoClients().empty())
        return;
    std::mt19937 random(23);
    const auto below = [&](std::size_t bound) {
        return static_cast<std::size_t>(random() % bound);
    };
    const std::vector<std::string> leaves = {"a.txt", "b c", "\xC3\xA4@1", "d#e%"};
    const std::vector<std::string> messages = {"plain", "title\n\nbody\n\n\nmore", "", "<&>]]>",
                                               "\xE6\x97\xA5\n\xF0\x9F\x98\x80"};
    std::set<std::string> folders, files;
    const auto pick = [&](const std::set<std::string>& all) {
        return *std::next(all.begin(), static_cast<std::ptrdiff_t>(below(all.size())));
    };
    for (int i = 0; i < 45; ++i)
    {
        const std::string message = messages[below(messages.size())];
        const std::string folder = "f" + std::to_string(below(3));
        const std::size_t action = below(10);
        if (!folders.contains(folder))
        {
            const bool isCopy = !folders.empty() && below(2) == 0;
            const std::string from = isCopy ? pick(folders) : "";
            isCopy ? repository.Change({"cp", "HEAD", from, folder}, "Ann", message)
                   : repository.Change({"mkdir", folder}, "Ann", message);
            folders.insert(folder);
            std::set<std::string> copied;
            for (const std::string& file : files)
            {
                if (isCopy && file.starts_with(from + "/"))
                    copied.insert(folder + file.substr(from.size()));
            }
            files.merge(copied);
        }
        else if (action == 0)
        {
            repository.Change({"rm", folder}, "Ann", message);
            folders.erase(folder);
            std::erase_if(files,
                          [&](const std::string& file) { return file.starts_with(folder + "/"); });
        }
        else if (action < 3 && !files.empty())
        {
            const std::string file = pick(files);
            repository.Change({"rm", file}, "Ann", message);
            files.erase(file);
        }
        else if (action < 5 && !files.empty())
        {
            const std::string from = pick(files);
            const std::string to = folder + "/" + leaves[below(leaves.size())];
            if (files.contains(to))
                continue;
            repository.Change({"mv", from, to}, "Ann", message);
            files.erase(from);
            files.insert(to);
        }
        else
        {
            const std::string file = folder + "/" + leaves[below(leaves.size())];
            repository.Commit(file, "content " + std::to_string(i), message);
            files.insert(file);
        }
        latest_ = repository.Latest();
        messages_[latest_] = message;
    }
    changes_.emplace_back();
    for (int revision = 1; revision <= latest_; ++revision)
        changes_.push_back(Changed(revision));
}

TEST_F(SvnModel, HistoriesAreWhatTheRepositorySays)
{
    std::size_t count = 0;
    for (int revision = latest_; revision > 0; revision -= 6)
    {
        for (const std::string& path : PathsIn(revision))
        {
            const bool isFolder = path.ends_with('/');
            // A folder also changes with what is in it.
            if (isFolder)
                continue;
            const std::u16string address =
                repository.Address(DecodeName(path)) + u"@" + Number(revision);
            for (const bool follows : {false, true})
            {
                std::vector<std::pair<int, std::string>> found;
                for (const HistoryEntry& entry :
                     History(address, Wanted(follows ? std::uint32_t{HistoryFollow} : 0U)))
                {
                    const int number = std::stoi(EncodeName(entry.id).value());
                    found.emplace_back(number, EncodeName(entry.path).value());
                    EXPECT_EQ(EncodeName(entry.description), messages_.at(number));
                }
                EXPECT_EQ(found, Expected(path, revision, follows)) << path << '@' << revision;
                count += found.size();
            }
        }
    }
    EXPECT_GT(count, 50U);
}

TEST_F(SvnModel, TreesAreWhatTheRepositorySays)
{
    std::size_t count = 0;
    for (int revision = latest_; revision > 0; revision -= 9)
    {
        const auto tree = Tree(repository.Address() + u"@" + Number(revision));
        std::set<std::string> found;
        for (const TreeEntry& entry : ListOf(tree, {}, true))
        {
            const std::string name = EncodeName(entry.name).value();
            found.insert(entry.kind == TreeFolder ? name + "/" : name);
            if (entry.kind != TreeFile)
                continue;
            const std::string content = ContentOf(tree, entry.name);
            EXPECT_EQ(content, ContentIn(name, revision)) << name << '@' << revision;
            EXPECT_EQ(content.size(), entry.size);
            ++count;
        }
        EXPECT_EQ(found, PathsIn(revision)) << revision;
    }
    EXPECT_GT(count, 10U);
}

// The address of each revision opens what the item was then, whatever has its path now.
TEST_F(SvnModel, AddressesOpenWhatTheItemWas)
{
    for (const std::string& path : PathsIn(latest_))
    {
        if (path.ends_with('/'))
            continue;
        const std::u16string address =
            repository.Address(DecodeName(path)) + u"@" + Number(latest_);
        for (const HistoryEntry& entry : History(address, Wanted(HistoryFollow)))
        {
            const int number = std::stoi(EncodeName(entry.id).value());
            EXPECT_EQ(ContentOf(Tree(entry.address)),
                      ContentIn(EncodeName(entry.path).value(), number));
        }
    }
}

} // namespace
} // namespace tarnwell::test
