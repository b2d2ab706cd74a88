#include "backends/backend.h"
#include "support/clients.h"
#include "support/repository.h"

#include <tarnwell/classes.h>
#include <tarnwell/text.h>

namespace tarnwell::test
{
namespace
{

const std::string authorOfGit = "J\xC3\xB6rg";

class GitData final : public BackendData
{
public:
    std::u16string Address(std::u16string_view name, const std::u16string& revision) const override
    {
        const std::u16string path = u"git://" + (repository_ / name);
        return revision.empty() ? path : path + u"#" + revision;
    }
    std::u16string Put(std::u16string_view name, std::string_view bytes,
                       const std::string& description) override
    {
        return DecodeName(repository_.Commit(name, bytes, description, authorOfGit));
    }
    std::filesystem::path OnDisk(std::u16string_view name) const override
    {
        return repository_ / name;
    }

private:
    const Repository repository_;
};

} // namespace

const Backend gitBackend{
    .name = "Git",
    .systemClass = CLSID_GITFileSystem,
    .makeData = []() -> std::unique_ptr<BackendData> { return std::make_unique<GitData>(); },
    .whyNot = WhyNoClients,
    .names = {u"a b.txt", u"\u00e4\u65e5\u672c.txt", u"\U0001F600.txt", u"sub dir/d\u00e9ep/x.txt",
              u"50%.txt", u"a&b'c;d+e.txt"},
    .refused = {{u"GIT://x", u"Invalid Git URI \"GIT://x\"."},
                {u"hg://x", u"Invalid Git URI \"hg://x\"."},
                {u"no address", u"Can't parse the URI \"no address\". [uri@"}},
    .folders = false,
    .workingCopy = WorkingCopy::Description,
    .author = u"J\u00f6rg",
    .source = u"gitobjects",
    .client = "git",
    .clientMissing = u"Can't find the Git command line utility (git.exe). Please check that the "
                     u"Git client is correctly installed.",
};

} // namespace tarnwell::test
