#include "git/gitworkfiles.h"

#include "frame/exception.h"
#include "frame/paths.h"
#include "frame/text.h"
#include "git/gittreeparser.h"
#include "git/gitworkparser.h"
#include "platform/endless.h"
#include "platform/wide.h"

#include <tarnwell/text.h>

#include <vector>

namespace tarnwell
{

namespace
{

// As where there is no such file. The client would read for as long as there is no end.
constexpr StrictFailure notRecorded{HistoryClientFailed, MessageId::TreeItemNotFile};

// Each setting with which a filter could run a program, or insist on it, and what it becomes.
constexpr std::pair<std::u16string_view, std::u16string_view> filterSettings[] = {
    {u"clean", u"="}, {u"smudge", u"="}, {u"process", u"="}, {u"required", u"=false"}};

// Variables that set these over whatever the settings' files say.
std::vector<std::u16string> WithoutFilters(const std::set<std::string>& names,
                                           const PlacedItem& item)
{
    std::vector<std::u16string> variables;
    std::uint64_t count = 0;
    for (const std::string& name : names)
    {
        const std::u16string text = StrictText(strictGit, name);
        // What wouldn't arrive as it is would leave the filter as it is.
        if (EncodeName(text) != name)
            ThrowStrictFailure(strictGit.source, badSettings, item.address, u"filter." + text);
        for (const auto& [setting, value] : filterSettings)
        {
            const std::u16string number = Decimal(count++);
            std::u16string key = u"GIT_CONFIG_KEY_" + number;
            key.append(u"=filter.").append(text).append(u".").append(setting);
            variables.push_back(std::move(key));
            variables.push_back(u"GIT_CONFIG_VALUE_" + number + std::u16string(value));
        }
    }
    variables.push_back(u"GIT_CONFIG_COUNT=" + Decimal(count));
    return variables;
}

// The settings are looked at whenever the client is started.
ClientCall CallIn(const PlacedItem& item, Patience& patience)
{
    const std::set<std::string> filters =
        ReadGitFilterNames(GitAnswer(item, u"config --list --name-only -z", patience));
    ClientCall call = GitWorkCall(item.place, u"hash-object --stdin-paths");
    for (std::u16string& variable : WithoutFilters(filters, item))
        call.variables.push_back(std::move(variable));
    return call;
}

// The working trees of one have it in common.
std::string RepositoryOf(const PlacedItem& item, Patience& patience)
{
    return GitAnswer(item, u"rev-parse --path-format=absolute --git-common-dir", patience);
}

// A file may lie in anybody's repository: one that is none after all, or that may not be opened,
// isn't known to be the tree's.
bool IsInRepository(const PlacedItem& file, const std::string& repository, Patience& patience)
{
    try
    {
        return RepositoryOf(file, patience) == repository;
    }
    catch (const ComException& failure)
    {
        const auto status = static_cast<HRESULT>(failure.code);
        if (status != HistoryNoRepository && status != E_ACCESSDENIED)
            throw;
        return false;
    }
}

// However the host ended the path.
bool IsSameFolder(std::u16string one, std::u16string other)
{
    AppendSeparator(one);
    AppendSeparator(other);
    return one == other;
}

} // namespace

GitWorkFiles::GitWorkFiles(PlacedItem item) : item_(std::move(item)) {}

std::u16string GitWorkFiles::IdOf(const std::u16string& path, Patience& patience)
{
    const std::optional<PlacedItem> file = GitWorkFileOf(path, patience);
    const std::optional<std::string> name = file ? EncodeName(file->place.path) : std::nullopt;
    if (!name || name->empty())
        return {};
    // Held here, too, as the host may ask for another working tree's file meanwhile.
    std::shared_ptr<GitClient> client = client_;
    if (file->place.folder != folder_)
    {
        client = ClientIn(*file, patience);
        client_ = client;
        folder_ = file->place.folder;
    }
    if (!client)
        return {};
    if (IsEndless(Wide(PathInPlace(file->place, file->place.path))))
        ThrowStrictFailure(strictGit.source, notRecorded, path);
    std::string id;
    client->Ask(
        [&](GitClient::Session& session) {
            session.Tell(QuotedGitPath(*name) + "\n");
            id = session.ReadLine(patience);
            // With it the client goes, of which nobody knows what it prints next.
            if (!IsGitId(id))
                ThrowStrictFailure(strictGit.source, badAnswer, path);
        },
        patience);
    return StrictText(strictGit, id);
}

std::shared_ptr<GitClient> GitWorkFiles::ClientIn(const PlacedItem& file, Patience& patience)
{
    if (!IsSameFolder(file.place.folder, item_.place.folder) &&
        !IsInRepository(file, RepositoryOf(item_, patience), patience))
        return nullptr;
    return std::make_shared<GitClient>(file,
                                       [file](Patience& asked) { return CallIn(file, asked); });
}

} // namespace tarnwell
