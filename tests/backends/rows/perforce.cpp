#include "backends/backend.h"
#include "support/perforcedepot.h"
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

// The latest made is the one that the client sees, unless another is shown.
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

    void Show() const override
    {
        if (!PerforceServer::IsReal())
            StandIn().Show();
    }
    std::u16string LatestId() override
    {
        return DecodeName(std::to_string(StandIn().LatestChange()));
    }
    std::u16string AddressAt(std::u16string_view name, const std::u16string& id) const override
    {
        return Address(name, {}) + u"@" + id;
    }
    std::vector<std::u16string> OtherNamesOf(const std::u16string& id) override
    {
        StandIn().Tell("label\tv1.0\t" + InDepot(id));
        return {u"@" + id, u"v1.0", u"@v1.0"};
    }
    // Encoded characters are what they stand for.
    std::u16string NameInTree(std::u16string_view name) const override
    {
        std::u16string decoded(name);
        for (const auto& [encoded, character] :
             {std::pair{u"%40", u"@"}, {u"%23", u"#"}, {u"%2A", u"*"}, {u"%25", u"%"}})
        {
            if (const std::size_t at = decoded.find(encoded); at != std::u16string::npos)
                decoded.replace(at, 3, character);
        }
        return decoded;
    }
    std::u16string NameInHistory(std::u16string_view name) const override
    {
        return u"depot/base/" + NameInTree(name);
    }
    void Remove(std::u16string_view name, const std::string& description) override
    {
        StandIn().Remove(InDepot(name), description);
    }
    void Rename(std::u16string_view from, std::u16string_view to,
                const std::string& description) override
    {
        StandIn().Move(InDepot(from), InDepot(to), description);
    }
    void PutLink(std::u16string_view name, std::string_view target) override
    {
        StandIn().SubmitAs("symlink", InDepot(name), target);
    }
    void PutProgram(std::u16string_view name, std::string_view bytes) override
    {
        StandIn().SubmitAs("text+x", InDepot(name), bytes);
    }
    void FailEachTime(const std::string& way)
    {
        StandIn().Tell("fail\t*\t" + way);
    }

private:
    PerforceDepot& StandIn() const
    {
        return dynamic_cast<PerforceDepot&>(*server_);
    }

    const std::unique_ptr<PerforceServer> server_ = PerforceServer::Make();
    std::map<std::u16string, int> revisions_;
    std::map<std::u16string, std::filesystem::path> onDisk_;
};

template <const char* way> std::u16string FailingBy(BackendData& data)
{
    static_cast<PerforceData&>(data).FailEachTime(way);
    return data.Address(u"text.txt");
}

constexpr char refused[] = "refused";
constexpr char password[] = "password";
constexpr char newUser[] = "newuser";
constexpr char expired[] = "expired";
constexpr char silent[] = "silent";
constexpr char workspace[] = "workspace";

// Labels, renamings and failures are made on the stand-in only.
Strict StrictPerforce()
{
    if (PerforceServer::IsReal())
        return {.elsewhere = true, .whyNot = "a real server isn't made to rename and to fail"};
    return {
        .histories = true,
        .trees = true,
        .names = {u"\u00e4\u65e5\u672c.txt", u"$HOME", u"!x", u"--all", u"v1.0", u"HEAD",
                  u"sub dir/x.txt"},
        .links = true,
        .programs = true,
        .failures = {
            {"a server that isn't there", HistoryServerSilent, u"The server of ",
             FailingBy<refused>},
            {"a wrong password", E_ACCESSDENIED, u"Access to ", FailingBy<password>},
            {"an unknown user", E_ACCESSDENIED, u"Access to ", FailingBy<newUser>},
            {"a session that is over", E_ACCESSDENIED, u"Access to ", FailingBy<expired>},
            {"an unknown workspace", HistoryBadSettings, u"The settings of ", FailingBy<workspace>},
            {"a client without words", HistoryClientFailed, u"The client failed ",
             FailingBy<silent>}}};
}

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
    .strict = StrictPerforce(),
    .openIntoNothing = OpenIntoNothing::Succeeds,
    .source = u"p4objects",
    .client = "p4",
    .clientMissing = u"Can't find the Perforce command line utility (p4.exe). Please check that "
                     u"the Perforce client is correctly installed.",
    .guarded = u"p4://@127.0.0.1///depot/base",
    .credentialsKind = 1,
};

} // namespace tarnwell::test
