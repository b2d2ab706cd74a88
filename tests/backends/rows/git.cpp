#include "backends/rows/workingcopy.h"
#include "support/repository.h"

#include <tarnwell/classes.h>
#include <tarnwell/text.h>

namespace tarnwell::test
{
namespace
{

namespace fs = std::filesystem;

const std::string authorOfGit = "J\xC3\xB6rg";

class GitData final : public WorkingCopyData<Repository>
{
public:
    GitData() : WorkingCopyData(u"git://") {}

    std::u16string Put(std::u16string_view name, std::string_view bytes,
                       const std::string& description) override
    {
        return DecodeName(repository_.Commit(name, bytes, description, authorOfGit));
    }

    std::u16string LatestId() override
    {
        return DecodeName(repository_.Git("rev-parse HEAD"));
    }
    std::vector<std::u16string> OtherNamesOf(const std::u16string& id) override
    {
        const std::string commit = EncodeName(id).value();
        repository_.Run({"tag", "v1.0", commit});
        repository_.Run({"tag", "-a", "-m", "annotated", "a/tag\xC3\xA9", commit});
        repository_.Run({"branch", "a-branch", commit});
        return {u"v1.0", u"a/tag\u00e9", u"a-branch", u"refs/tags/v1.0", id.substr(0, 10)};
    }
    void Remove(std::u16string_view name, const std::string& description) override
    {
        fs::remove(OnDisk(name));
        Record(description);
    }
    void Rename(std::u16string_view from, std::u16string_view to,
                const std::string& description) override
    {
        fs::create_directories(OnDisk(to).parent_path());
        fs::rename(OnDisk(from), OnDisk(to));
        Record(description);
    }
    void PutMerge(std::u16string_view name) override
    {
        repository_.Git("checkout -q -b aside");
        Put(name, "aside", "aside");
        repository_.Git("checkout -q -");
        Put(name, "here", "here");
        repository_.Git("merge -q -s ours --no-commit aside");
        WriteBytes(repository_ / name, "both");
        Record("merged");
    }
    void PutLink(std::u16string_view name, std::string_view target) override
    {
        PutAs("120000", name, target);
        LeaveTreeBy([this] { repository_.Git("rm -r -q -f ."); });
    }
    void PutProgram(std::u16string_view name, std::string_view bytes) override
    {
        PutAs("100755", name, bytes);
    }

    // Removes the object of what is checked out, so that nothing leads to its files.
    void LoseTree()
    {
        const std::string id = repository_.Git("rev-parse HEAD^{tree}");
        const fs::path object = OnDisk(u".git/objects") / id.substr(0, 2) / id.substr(2);
        fs::permissions(object, fs::perms::owner_all);
        fs::remove(object);
    }

private:
    void Record(const std::string& description) const
    {
        repository_.Git("add -A");
        repository_.Run({"commit", "-q", "-m", description});
    }
    // Also where the disk has no such files: the client then remembers what it is.
    void PutAs(const std::string& mode, std::u16string_view name, std::string_view bytes) const
    {
        const std::string path = EncodeName(name).value();
        WriteBytes(repository_ / name, bytes);
        const std::string blob = repository_.Run({"hash-object", "-w", "--", path});
        fs::remove(OnDisk(name));
        repository_.Run({"update-index", "--add", "--cacheinfo", mode + "," + blob + "," + path});
        repository_.Run({"checkout", "--", path});
        repository_.Run({"commit", "-q", "-m", "of another kind"});
    }
};

std::u16string WithBrokenSettings(BackendData& data)
{
    WriteBytes(data.OnDisk(u".git/config").u16string(), "[core\nbroken");
    return data.Address(u"text.txt");
}

std::u16string WithoutRepository(BackendData& data)
{
    fs::rename(data.OnDisk(u".git"), data.OnDisk(u"git"));
    return data.Address(u"text.txt");
}

std::u16string WithABrokenHead(BackendData& data)
{
    WriteBytes(data.OnDisk(u".git/HEAD").u16string(), "nonsense");
    return data.Address(u"text.txt");
}

std::u16string WithUnknownExtensions(BackendData& data)
{
    WriteBytes(data.OnDisk(u".git/config").u16string(),
               "[core]\n\trepositoryformatversion = 1\n[extensions]\n\tunheardOf = true\n");
    return data.Address(u"text.txt");
}

std::u16string WithoutItsTree(BackendData& data)
{
    static_cast<GitData&>(data).LoseTree();
    return data.Address(u"text.txt");
}

} // namespace

const Backend gitBackend = WorkingCopyRow({
    .name = "Git",
    .systemClass = CLSID_GITFileSystem,
    .makeData = MakeData<GitData>,
    .names = {u"a b.txt", u"\u00e4\u65e5\u672c.txt", u"\U0001F600.txt", u"sub dir/d\u00e9ep/x.txt",
              u"50%.txt", u"a&b'c;d+e.txt"},
    .refused = {{u"GIT://x", u"Invalid Git URI \"GIT://x\"."},
                {u"hg://x", u"Invalid Git URI \"hg://x\"."},
                {u"no address", u"Can't parse the URI \"no address\". [uri@"}},
    .author = u"J\u00f6rg",
    .strict = {.histories = true,
               .trees = true,
               .names = {u"-n", u"--all", u"a[1].txt", u"a1.txt", u"a@b", u"!x", u"$HOME", u"#1#2",
                         u"HEAD", u"v1.0"},
               .mergesWhereFollowed = false,
               .workingCopies = true,
               .links = true,
               .programs = true,
               .clientStays = true,
               .failures = {{"broken settings", HistoryBadSettings, u"The settings of ",
                             WithBrokenSettings},
                            {"no repository", HistoryNoRepository,
                             u"Can't find a repository that holds ", WithoutRepository},
                            {"a repository that is none", HistoryNoRepository,
                             u"Can't find a repository that holds ", WithABrokenHead},
                            {"a missing object", HistoryIncomplete, u"The repository doesn't ",
                             WithoutItsTree},
                            {"unknown extensions", HistoryBadSettings, u"The settings of ",
                             WithUnknownExtensions}}},
    .source = u"gitobjects",
    .client = "git",
    .clientMissing = u"Can't find the Git command line utility (git.exe). Please check that the "
                     u"Git client is correctly installed.",
});

} // namespace tarnwell::test
