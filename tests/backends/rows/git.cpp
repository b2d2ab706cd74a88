#include "backends/rows/workingcopy.h"
#include "support/repository.h"

#include <tarnwell/classes.h>
#include <tarnwell/text.h>

namespace tarnwell::test
{
namespace
{

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
};

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
    .histories = true,
    .author = u"J\u00f6rg",
    .source = u"gitobjects",
    .client = "git",
    .clientMissing = u"Can't find the Git command line utility (git.exe). Please check that the "
                     u"Git client is correctly installed.",
});

} // namespace tarnwell::test
