#include "backends/rows/workingcopy.h"
#include "support/mercurialrepository.h"

#include <tarnwell/classes.h>
#include <tarnwell/text.h>

namespace tarnwell::test
{
namespace
{

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
};

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
    .strict = {.whyNot = "histories are only told as ever"},
    .source = u"hgobjects",
    .client = "hg",
    .clientMissing = u"Can't find the Mercurial command line utility (hg.exe). Please check that "
                     u"the Mercurial client is correctly installed.",
});

} // namespace tarnwell::test
