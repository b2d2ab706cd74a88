#include "backends/backend.h"
#include "support/clients.h"
#include "support/svnrepository.h"

#include <tarnwell/classes.h>
#include <tarnwell/text.h>

namespace tarnwell::test
{
namespace
{

std::u16string RevisionName(int number)
{
    return DecodeName(std::to_string(number));
}

std::string InRepository(std::u16string_view name)
{
    return EncodeName(name).value();
}

const std::string authorOfSubversion = "J\xC3\xB6rg <j&k>";

class SubversionData final : public BackendData
{
public:
    std::u16string Address(std::u16string_view name, const std::u16string& revision) const override
    {
        const std::u16string path = repository_.Address(name);
        return revision.empty() ? path : path + u"@" + revision;
    }
    std::u16string Put(std::u16string_view name, std::string_view bytes,
                       const std::string& description) override
    {
        return RevisionName(
            repository_.Commit(InRepository(name), bytes, description, authorOfSubversion));
    }
    void MakeFolder(std::u16string_view name) override
    {
        repository_.MakeFolder(InRepository(name));
    }

private:
    const SvnRepository repository_;
};

} // namespace

const Backend subversionBackend{
    .name = "Subversion",
    .systemClass = CLSID_SVNFileSystem,
    .makeData = MakeData<SubversionData>,
    .whyNot = WhyNoClients,
    .names = {u"a b.txt", u"a#b.txt", u"50%.txt", u"p+q.txt", u"a&b.txt", u"a'b.txt",
              u"\u00e4\u65e5.txt", u"\U0001F600.txt", u"a;b?.txt", u"a\"b.txt"},
    .refused = {{u"http://host/r", u"Invalid Subversion URI \"http://host/r\". [svnobjects@"},
                {u"SVN://host/r", u"Invalid Subversion URI \"SVN://host/r\". [svnobjects@"},
                {u"no address", u"Can't parse the URI \"no address\". [uri@"}},
    .author = u"J\u00f6rg <j&k>",
    .strict = {.whyNot = "histories are only told as ever"},
    .openIntoNothing = OpenIntoNothing::Succeeds,
    .source = u"svnobjects",
    .client = "svn",
    .clientMissing = u"Can't find the Subversion command line utility (svn.exe). Please check "
                     u"that the Subversion client is correctly installed.",
    .guarded = u"svn://127.0.0.1:1/r",
};

} // namespace tarnwell::test
