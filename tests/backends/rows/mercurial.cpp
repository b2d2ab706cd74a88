#include "backends/rows/workingcopy.h"
#include "support/mercurialrepository.h"

#include <tarnwell/classes.h>
#include <tarnwell/text.h>

namespace tarnwell::test
{
namespace
{

namespace fs = std::filesystem;

const std::string authorOfMercurial = "J\xC3\xB6rg <j&k>";

class MercurialData final : public WorkingCopyData<MercurialRepository>
{
public:
    MercurialData() : WorkingCopyData(u"hg://") {}

    std::u16string Put(std::u16string_view name, std::string_view bytes,
                       const std::string& description) override
    {
        return DecodeName(repository_.Commit(name, bytes, description, {"-u", authorOfMercurial}));
    }
    // In one commit, since the client is slow to start.
    void PutAll(const std::vector<std::pair<std::u16string, std::string>>& files) override
    {
        for (const auto& [name, bytes] : files)
        {
            std::filesystem::create_directories(OnDisk(name).parent_path());
            WriteBytes(repository_ / name, bytes);
        }
        repository_.Hg("commit -q -A -u Ann -m many");
    }

    std::u16string LatestId() override
    {
        return DecodeName(repository_.Hg("log -r tip -T {node}"));
    }
    std::vector<std::u16string> OtherNamesOf(const std::u16string& id) override
    {
        const std::string node = EncodeName(id).value();
        repository_.Run({"tag", "--local", "-r", node, "v1.0", "a/tag\xC3\xA9", "p1(tip) or \"x"});
        repository_.Run({"bookmark", "-r", node, "a bookmark"});
        const std::string number = repository_.Run({"log", "-r", node, "-T", "{rev}"});
        return {u"v1.0",       u"a/tag\u00e9",   u"p1(tip) or \"x",
                u"a bookmark", id.substr(0, 10), DecodeName(number)};
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
        repository_.Run({"rename", "--after", EncodeName(from).value(), EncodeName(to).value()});
        Record(description);
    }
    void PutMerge(std::u16string_view name) override
    {
        Put(name, "aside", "aside");
        const std::string aside = repository_.Hg("log -r . -T {node}");
        repository_.Hg("update -q .^");
        Put(name, "here", "here");
        repository_.Run({"merge", "-q", "-t", "internal:local", aside});
        Put(name, "both", "merged");
    }
    void PutLink(std::u16string_view name, std::string_view target) override
    {
        PutAs("120000", name, std::string(target) + "\n\\ No newline at end of file");
        LeaveTreeBy([this] { repository_.Hg("update -q -C null"); });
    }
    void PutProgram(std::u16string_view name, std::string_view bytes) override
    {
        PutAs("100755", name, bytes.substr(0, bytes.size() - 1));
    }

private:
    void Record(const std::string& description) const
    {
        repository_.Run({"commit", "-q", "-A", "-u", "Ann", "-m", description});
    }
    // A file of one line. Also where the disk has no such files: a patch says what it is.
    void PutAs(const std::string& mode, std::u16string_view name, std::string_view line) const
    {
        const std::string path = EncodeName(name).value();
        std::string patch = "diff --git a/" + path + " b/" + path + "\nnew file mode " + mode;
        patch += "\n--- /dev/null\n+++ b/" + path + "\n@@ -0,0 +1,1 @@\n+";
        patch.append(line).append("\n");
        WriteBytes(repository_ / u".hg/patch", patch);
        repository_.Run(
            {"import", "-q", "--bypass", "-u", "Ann", "-m", "of another kind", ".hg/patch"});
        repository_.Hg("update -q tip");
    }
};

std::u16string WithoutRepository(BackendData& data)
{
    fs::rename(data.OnDisk(u".hg"), data.OnDisk(u"hg"));
    return data.Address(u"text.txt");
}

std::u16string Requiring(BackendData& data, const char* feature)
{
    WriteBytes(data.OnDisk(u".hg/requires").u16string(), std::string(feature) + "\n");
    return data.Address(u"text.txt");
}

} // namespace

const Backend mercurialBackend = WorkingCopyRow({
    .name = "Mercurial",
    .systemClass = CLSID_HGFileSystem,
    .makeData = MakeData<MercurialData>,
    .names = {u"a b.txt", u"\u00e4\u65e5\u672c.txt", u"sub dir/d\u00e9ep/x.txt", u"50%.txt",
              u"a&b'c;d+e.txt"},
    .refused = {{u"HG://x", u"Invalid Mercurial URI \"HG://x\"."},
                {u"git://x", u"Invalid Mercurial URI \"git://x\"."},
                {u"no address", u"Can't parse the URI \"no address\". [uri@"}},
    .author = u"J\u00f6rg <j&k>",
    .strict = {.histories = true,
               .trees = true,
               .names = {u"-n", u"--all", u"a[1].txt", u"a1.txt", u"a@b", u"!x", u"$HOME", u"#1#2",
                         u"tip", u"v1.0", u"path", u"set", u"{node}"},
               .noRevisions = {u"nosuch",     u"-x",
                               u"--all",      u"a..b",
                               u"^main",      u"\n",
                               u"a b",        u"HEAD --all",
                               u"all()",      u"tip^",
                               u"0:tip",      u"tip or 0",
                               u"null",       u"0000000000000000000000000000000000000000",
                               u"2147483647", u"ffffffffffffffffffffffffffffffffffffffff",
                               u"wdir()",     u"\"",
                               u"x\\",        u"file(\"set:size(0)\")",
                               u"{node}"},
               .mergesWhereFollowed = true,
               .workingCopies = true,
               .links = true,
               .programs = true,
               .clientStays = true,
               .failures = {{"no repository", HistoryNoRepository,
                             u"Can't find a repository that holds ", WithoutRepository},
                            {"unknown features", HistoryBadSettings, u"The settings of ",
                             [](BackendData& data) {
                                 return Requiring(data, "unheard-of");
                             }},
                            {"an extension that would run", HistoryBadSettings, u"The settings of ",
                             [](BackendData& data) {
                                 return Requiring(data, "largefiles");
                             }},
                            {"contents on a server", HistoryIncomplete, u"The repository doesn't ",
                             [](BackendData& data) {
                                 return Requiring(data, "lfs");
                             }}}},
    .source = u"hgobjects",
    .client = "hg",
    .clientMissing = u"Can't find the Mercurial command line utility (hg.exe). Please check that "
                     u"the Mercurial client is correctly installed.",
});

} // namespace tarnwell::test
