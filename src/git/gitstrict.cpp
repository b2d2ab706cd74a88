#include "git/gitstrict.h"

#include "frame/exception.h"
#include "frame/messages.h"
#include "frame/paths.h"
#include "frame/text.h"
#include "frame/trim.h"
#include "git/gituri.h"
#include "platform/clients.h"
#include "runner/commandline.h"

#include <algorithm>

namespace tarnwell
{

namespace
{

// Names are names, objects are the ones that were committed, and nothing is fetched: of the ways to
// a server only one that doesn't exist is allowed. The client's words are read, in English.
constexpr const char16_t* strictVariables[] = {
    u"GIT_LITERAL_PATHSPECS=1", u"GIT_NO_REPLACE_OBJECTS=1", u"GIT_GRAFT_FILE=/dev/null",
    u"GIT_NO_LAZY_FETCH=1",     u"GIT_ALLOW_PROTOCOL=none",  u"GIT_TERMINAL_PROMPT=0",
    u"GIT_OPTIONAL_LOCKS=0",    u"LC_ALL=C.UTF-8",           u"LANGUAGE=en",
};

// Settings that would change what is printed, or run a program.
constexpr std::u16string_view strictSettings =
    u"--no-pager -c color.ui=false -c core.fsmonitor=false -c core.hooksPath=/dev/null "
    u"-c core.useReplaceRefs=false -c diff.renames=true -c diff.renameLimit=1000 "
    u"-c log.follow=false -c log.mailmap=false -c log.showRoot=true -c log.showSignature=false ";

struct Phrase
{
    std::u16string_view text;
    GitFailure failure;
};

// How a line of the client's words begins, or ends: names of others' stand in between.
constexpr GitFailure noRepository{HistoryNoRepository, MessageId::RepositoryNotFound};
constexpr GitFailure noRight{E_ACCESSDENIED, MessageId::RepositoryAccessDenied};
constexpr GitFailure noRevision{HistoryNoRevision, MessageId::RevisionNotFound};
constexpr GitFailure incomplete{HistoryIncomplete, MessageId::RepositoryIncomplete};
constexpr GitFailure badSettings{HistoryBadSettings, MessageId::RepositorySettingsInvalid};
constexpr GitFailure otherFailure{HistoryClientFailed, MessageId::ClientFailed};

constexpr Phrase beginnings[] = {
    {u"fatal: not a git repository", noRepository},
    {u"fatal: detected dubious ownership", noRight},
    {u"fatal: unsafe repository", noRight},
    {u"fatal: transport '", incomplete},
    {u"fatal: could not fetch ", incomplete},
    {u"fatal: bad revision ", noRevision},
    {u"fatal: ambiguous argument ", noRevision},
    {u"fatal: bad config ", badSettings},
    {u"error: bad config ", badSettings},
    {u"fatal: bad numeric config ", badSettings},
    {u"fatal: bad boolean config ", badSettings},
    {u"fatal: unable to parse ", badSettings},
    {u"fatal: unknown value for config ", badSettings},
    {u"fatal: unknown repository extension", badSettings},
    {u"fatal: Expected git repo version", badSettings},
};
constexpr std::u16string_view deniedEnding = u": Permission denied";

const GitFailure* FailureOfLine(std::u16string_view line)
{
    const auto found =
        std::find_if(std::begin(beginnings), std::end(beginnings),
                     [&](const Phrase& phrase) { return line.starts_with(phrase.text); });
    if (found != std::end(beginnings))
        return &found->failure;
    return line.ends_with(deniedEnding) ? &noRight : nullptr;
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

ClientCall StrictGitCall(const GitPlace& place, std::u16string_view arguments)
{
    ClientCall call;
    call.program = clientNames.git;
    call.arguments = std::u16string(strictSettings).append(arguments);
    call.workingFolder = place.folder;
    // A repository that is none after all must not lead to one around it.
    call.variables.push_back(u"GIT_CEILING_DIRECTORIES=" +
                             std::u16string(ParentFolderOf(place.folder)));
    return call;
}

std::u16string CommitArgument(const std::u16string& revision)
{
    if (revision.empty())
        return u"HEAD^{commit}";
    if (revision.find(u"..") != std::u16string::npos || revision.starts_with(u'^'))
        ThrowHistoryFailure(HistoryNoRevision, MessageId::RevisionNotFound, revision);
    return revision + u"^{commit}";
}

GitFailure GitFailureOf(std::u16string_view words)
{
    while (!words.empty())
    {
        const std::u16string_view line = words.substr(0, words.find(u'\n'));
        words.remove_prefix(std::min(words.size(), line.size() + 1));
        if (const GitFailure* const failure = FailureOfLine(Trimmed(line)))
            return *failure;
    }
    return otherFailure;
}

std::u16string GitText(std::string_view bytes)
{
    std::u16string text = Decode(bytes, Decoding::Utf8);
    if (text.empty() && !bytes.empty())
        ThrowClientFailure(strictGit, strictGit.communication, GetLastError());
    return text;
}

void ThrowIfGitFailed(const ClientOutcome& outcome, const std::u16string& address,
                      const std::u16string& revision)
{
    if (outcome.exitCode == 0)
        return;
    const GitFailure failure = GitFailureOf(outcome.errors);
    const bool isRevision = failure.status == HistoryNoRevision;
    throw ComException(
        failure.status,
        FormatMessageById(failure.message,
                          {isRevision ? revision : address, std::u16string(Trimmed(outcome.errors)),
                           Decimal(static_cast<std::uint32_t>(outcome.exitCode))}),
        At(strictGit.source));
}

void ThrowHistoryFailure(HistoryStatus status, MessageId message, const std::u16string& insert,
                         const std::u16string& words)
{
    throw ComException(status, std::u16string(Trimmed(FormatMessageById(message, {insert, words}))),
                       At(strictGit.source));
}

} // namespace tarnwell
