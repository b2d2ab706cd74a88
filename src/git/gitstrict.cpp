#include "git/gitstrict.h"

#include "frame/paths.h"
#include "git/gituri.h"
#include "platform/clients.h"
#include "runner/feed.h"
#include "runner/runningclient.h"

#include <new>

namespace tarnwell
{

namespace
{

// Names are names, objects are the ones that were committed, the working tree is where the client
// runs, and nothing is fetched: of the ways to a server only one that doesn't exist is allowed. The
// client's words are read, in English.
constexpr const char16_t* strictVariables[] = {
    u"GIT_LITERAL_PATHSPECS=1",
    u"GIT_NO_REPLACE_OBJECTS=1",
    u"GIT_GRAFT_FILE=/dev/null/none",
    u"GIT_NO_LAZY_FETCH=1",
    u"GIT_ALLOW_PROTOCOL=none",
    u"GIT_TERMINAL_PROMPT=0",
    u"GIT_OPTIONAL_LOCKS=0",
    u"GIT_WORK_TREE=.",
    u"LC_ALL=C.UTF-8",
    u"LANGUAGE=en",
};

// Settings that would change what is printed, run a program, or keep a repository from being read
// that was named by its path.
constexpr std::u16string_view strictSettings =
    u"--no-pager -c color.ui=false -c core.fsmonitor=false "
    u"-c core.hooksPath=/dev/null -c core.useReplaceRefs=false -c diff.orderFile=/dev/null "
    u"-c diff.renames=true -c diff.renameLimit=1000 -c format.pretty=medium -c log.follow=false "
    u"-c log.mailmap=false -c log.showRoot=true -c log.showSignature=false "
    u"-c safe.bareRepository=all ";

// Attributes of the user and of the system. A variable stands in the environment once: of two of a
// name the client takes the first.
constexpr std::u16string_view noUsersAttributes = u"-c core.attributesFile=/dev/null ";
constexpr std::u16string_view noSystemsAttributes = u"GIT_ATTR_NOSYSTEM=1";

constexpr StrictPhrase phrases[] = {
    {u"fatal: not a git repository", u"", noRepository},
    {u"fatal: detected dubious ownership", u"", noRight},
    {u"fatal: unsafe repository", u"", noRight},
    {u"fatal: transport '", u"", incomplete},
    {u"fatal: could not fetch ", u"", incomplete},
    {u"error: Could not read ", u"", incomplete},
    {u"fatal: unable to read ", u"", incomplete},
    {u"fatal: not a tree object", u"", incomplete},
    {u"fatal: bad revision ", u"", noRevision},
    {u"fatal: ambiguous argument ", u"", noRevision},
    {u"fatal: bad config ", u"", badSettings},
    {u"error: bad config ", u"", badSettings},
    {u"fatal: bad numeric config ", u"", badSettings},
    {u"fatal: bad boolean config ", u"", badSettings},
    {u"fatal: unable to parse ", u"", badSettings},
    {u"fatal: unknown value for config ", u"", badSettings},
    {u"fatal: unknown repository extension", u"", badSettings},
    {u"fatal: Expected git repo version", u"", badSettings},
    {u"", u": Permission denied", noRight},
};

// Where the client is told not to go on to.
std::u16string_view FolderAround(const Place& place)
{
    return ParentFolderOf(place.folder);
}

// It is told in a list of folders, in which nothing can be quoted.
bool CanBeTold(const Place& place)
{
    return FolderAround(place).find(platformPathRules.listMark) == std::u16string_view::npos;
}

ClientCall CallIn(const Place& place, std::u16string_view arguments)
{
    ClientCall call;
    call.program = clientNames.git;
    call.arguments = std::u16string(strictSettings).append(arguments);
    call.workingFolder = place.folder;
    // A repository that is none after all must not lead to one around it.
    if (CanBeTold(place))
        call.variables.push_back(u"GIT_CEILING_DIRECTORIES=" + std::u16string(FolderAround(place)));
    return call;
}

// A file that leads to no repository is a failure to the client by itself.
bool IsLink(const Place& place)
{
    return KindOf(PathInPlace(place, u".git")) == KindOnDisk::File;
}

// The client calls a repository that is where it runs by its name, and one around it by its path.
void CheckPlace(const PlacedItem& item, Patience& patience)
{
    if (CanBeTold(item.place) || IsLink(item.place))
        return;
    const std::string answer = GitAnswer(item, u"rev-parse --git-dir", patience);
    const std::string_view name = std::string_view(answer).substr(0, answer.find_first_of("\r\n"));
    if (name != ".git" && name != ".")
        ThrowStrictFailure(strictGit.source, noRepository, item.address);
}

} // namespace

const ClientRow strictGit{
    .source = gitAddresses.source,
    .hiddenNames = u"GIT_",
    .decoding = Decoding::Utf8,
    .notFound = MessageId::GitClientNotFound,
    .communication = MessageId::GitCommunicationFailed,
    .reportedFailure = MessageId::ClientFailed,
    .missing = HistoryNoClient,
    .variables = strictVariables,
};

PlacedItem GitItemOf(const std::u16string& path, const std::optional<std::u16string>& revision,
                     Patience& patience)
{
    PlacedItem item = PlacedItemOf(gitPlacing, path, revision);
    CheckPlace(item, patience);
    return item;
}

std::optional<PlacedItem> GitWorkFileOf(const std::u16string& path, Patience& patience)
{
    std::optional<Place> place = PlaceOf(gitWorkTrees, path);
    if (!place)
        return std::nullopt;
    PlacedItem item{std::move(*place), {}, path};
    CheckPlace(item, patience);
    return item;
}

ClientCall StrictGitCall(const Place& place, std::u16string_view arguments)
{
    ClientCall call = CallIn(place, std::u16string(noUsersAttributes).append(arguments));
    call.variables.emplace_back(noSystemsAttributes);
    return call;
}

ClientCall GitWorkCall(const Place& place, std::u16string_view arguments)
{
    return CallIn(place, arguments);
}

std::string GitAnswer(const PlacedItem& item, std::u16string_view arguments, Patience& patience)
{
    patience.Ask();
    RunningClient client(strictGit, StrictGitCall(item.place, arguments));
    std::string answer;
    for (std::string bytes = client.Read(patience); !bytes.empty(); bytes = client.Read(patience))
    {
        if (bytes.size() > mostRecordBytes - answer.size())
            throw std::bad_alloc();
        answer += bytes;
    }
    ThrowIfGitFailed(client.Finish(patience), item);
    return answer;
}

std::u16string CommitArgument(const std::u16string& revision)
{
    if (revision.empty())
        return u"HEAD^{commit}";
    // The latest commit with these words; what stood behind them would be looked for as well.
    if (revision.starts_with(u":/"))
        return revision;
    if (revision.find(u"..") != std::u16string::npos || revision.starts_with(u'^'))
        ThrowStrictFailure(strictGit.source, noRevision, revision);
    return revision + u"^{commit}";
}

StrictFailure GitFailureOf(std::u16string_view words)
{
    return StrictFailureOf(words, phrases);
}

void ThrowIfGitFailed(const ClientOutcome& outcome, const PlacedItem& item)
{
    ThrowIfStrictFailed(strictGit, outcome, phrases, {item.address, GitRevisionText(item)});
}

} // namespace tarnwell
