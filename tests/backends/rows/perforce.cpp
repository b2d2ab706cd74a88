#include "backends/backend.h"
#include "support/perforceserver.h"

#include <tarnwell/classes.h>
#include <tarnwell/text.h>

#include <map>

namespace tarnwell::test
{
namespace
{

std::string InDepot(std::u16string_view name)
{
    return EncodeName(name).value();
}

// The latest made is the one that the client sees.
class PerforceData final : public BackendData
{
public:
    std::u16string Address(std::u16string_view name, const std::u16string& revision) const override
    {
        const std::u16string path = server_->Address(InDepot(name));
        return revision.empty() ? path : path + u"#" + revision;
    }
    std::u16string Put(std::u16string_view name, std::string_view bytes,
                       const std::string& description) override
    {
        server_->Submit(InDepot(name), bytes, description);
        onDisk_[std::u16string(name)] = server_->Sync(InDepot(name));
        return DecodeName(std::to_string(++revisions_[std::u16string(name)]));
    }
    // One is there as soon as a file is in it.
    void MakeFolder(std::u16string_view) override {}
    // Where the workspace has it; the stand-in only tells where it would be.
    std::filesystem::path OnDisk(std::u16string_view name) const override
    {
        return onDisk_.at(std::u16string(name));
    }
    std::u16string Author() const override
    {
        return DecodeName(server_->Author());
    }

private:
    const std::unique_ptr<PerforceServer> server_ = PerforceServer::Make();
    std::map<std::u16string, int> revisions_;
    std::map<std::u16string, std::filesystem::path> onDisk_;
};

} // namespace

const Backend perforceBackend{
    .name = "Perforce",
    .systemClass = CLSID_P4FileSystem,
    .makeData = MakeData<PerforceData>,
    // Marks of revisions, "%" and "*" are encoded by the client.
    .names = {u"a b.txt", u"a%40b%23c%25%2Ad.txt", u"a&b'c;d+e.txt", u"a\"b.txt", u"-h", u"=,!?"},
    .refused = {{u"P4:////x", u"Invalid Perforce URI \"P4:////x\". [p4objects@"},
                {u"ftp://host/r", u"Invalid Perforce URI \"ftp://host/r\". [p4objects@"},
                {u"no address", u"Can't parse the URI \"no address\". [uri@"}},
    .controlCharacters = true,
    .emptyFolders = false,
    .missingFoldersFail = false,
    .revisionsInListing = true,
    .changesInDescriptions = true,
    .revisionsInNames = true,
    .workingCopy = WorkingCopy::Id,
    .strict = {.whyNot = "histories are only told as ever"},
    .openIntoNothing = OpenIntoNothing::Succeeds,
    .source = u"p4objects",
    .client = "p4",
    .clientMissing = u"Can't find the Perforce command line utility (p4.exe). Please check that "
                     u"the Perforce client is correctly installed.",
    .guarded = u"p4://@127.0.0.1///depot/base",
    .credentialsKind = 1,
};

} // namespace tarnwell::test
