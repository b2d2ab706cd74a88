#include "perforce/p4strict.h"

#include "frame/exception.h"
#include "frame/messages.h"
#include "frame/text.h"
#include "frame/trim.h"
#include "perforce/p4uri.h"
#include "platform/clients.h"
#include "runner/commandline.h"

#include <algorithm>

namespace tarnwell
{

namespace
{

// No file of settings is looked for in folders, and no command is another one. The name that turns
// the first off is the client's own word; the second is a folder that can't be on either platform.
// What the client prints is UTF-8 where it knows, in English, and nothing but the answer.
constexpr const char16_t* strictVariables[] = {
    u"P4CONFIG=noconfig", u"P4ALIASES=/dev/null/*", u"P4DEBUG=",
    u"P4LANGUAGE=",       u"P4COMMANDCHARSET=utf8",
};

// Records with their lengths; one path, from the standard input.
constexpr std::u16string_view strictOptions = u"-G -z tag ";
constexpr std::u16string_view pathFromInput = u"-x - ";

constexpr StrictPhrase loginPhrases[] = {
    {u"Perforce password (P4PASSWD) invalid or unset", u"", noRight},
    {u"Password invalid", u"", noRight},
    {u"Your session has expired", u"", noRight},
    {u"Your session was logged out", u"", noRight},
    {u"Can't create a new user", u"", noRight},
    {u"Access for user '", u"", noRight},
    {u"User ", u" doesn't exist.", noRight},
};

constexpr StrictPhrase phrases[] = {
    {u"Connect to server failed", u"", serverSilent},
    {u"TCP connect to ", u"", serverSilent},
    {u"TCP receive failed", u"", serverSilent},
    {u"TCP send failed", u"", serverSilent},
    {u"SSL connect to ", u"", serverSilent},
    {u"SSL receive failed", u"", serverSilent},
    {u"Partner exited unexpectedly", u"", serverSilent},
    {u"You don't have permission for this operation", u"", noRight},
    {u"The authenticity of '", u"", noRight},
    {u"", u" - no permission for operation on file(s).", noRight},
    {u"", u" - protected namespace - access denied.", noRight},
    {u"Invalid changelist/client/label/date '", u"", noRevision},
    {u"Client '", u" unknown - use 'client' command to create it.", badSettings},
    {u"Unicode server permits only unicode enabled clients", u"", badSettings},
    {u"Unicode clients require a unicode enabled server", u"", badSettings},
    {u"Character set must be one of", u"", badSettings},
};

// The client's classes of failures, for words that aren't known.
struct Class
{
    std::uint64_t generic;
    StrictFailure failure;
};
constexpr Class classes[] = {
    {0x02, noRevision},   // something that doesn't exist
    {0x04, noRight},      // not permitted
    {0x06, noRight},      // the server's protections
    {0x24, badSettings},  // the client's configuration
    {0x26, serverSilent}, // communication
};

char16_t InLowerCase(char16_t unit)
{
    return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit - u'A' + u'a') : unit;
}

// Behind these a client is known to run a program instead of connecting.
bool RunsAProgram(std::u16string server)
{
    std::transform(server.begin(), server.end(), server.begin(), InLowerCase);
    const std::u16string_view start = TrimmedLeft(server);
    return start.starts_with(u"rsh:") || start.starts_with(u"jsh:");
}

enum Severity : std::uint64_t
{
    Warned = 2,
    Failed = 3,
};

} // namespace

const ClientRow strictP4{
    .source = p4Source,
    .hiddenNames = nullptr,
    .decoding = Decoding::Utf8,
    .notFound = MessageId::PerforceClientNotFound,
    .communication = MessageId::PerforceCommunicationFailed,
    .reportedFailure = MessageId::ClientFailed,
    .missing = HistoryNoClient,
    .variables = strictVariables,
};

P4Login P4LoginOf(const HostUIUser& host, const P4Item& item)
{
    Credentials credentials{item.parts.user, item.parts.password, item.parts.host};
    if (FindClient(Wide(clientNames.perforce)))
        credentials = host.ResolveCredentials(credentials, perforceCredentials);
    if (RunsAProgram(credentials.host))
    {
        throw ComException(E_INVALIDARG,
                           FormatMessageById(MessageId::InvalidPerforceUri, {item.address}),
                           At(p4Source));
    }
    P4Login login;
    if (!credentials.user.empty())
        login.options += Option(u"-u", credentials.user);
    if (!credentials.host.empty())
        login.options += Option(u"-p", credentials.host);
    if (!credentials.user.empty() && !credentials.password.empty())
        login.variables.push_back(u"P4PASSWD=" + credentials.password);
    return login;
}

StrictFailure P4FailureOf(std::u16string_view words, std::uint64_t generic)
{
    if (IsP4LoginFailure(words))
        return noRight;
    const StrictFailure failure = StrictFailureOf(words, phrases);
    const auto* const found =
        std::find_if(std::begin(classes), std::end(classes),
                     [&](const Class& row) { return row.generic == generic; });
    const bool isKnown = failure.status != otherFailure.status;
    return isKnown || found == std::end(classes) ? failure : found->failure;
}

bool IsP4LoginFailure(std::u16string_view words)
{
    return StrictFailureOf(words, loginPhrases).status == noRight.status;
}

P4Question::P4Question(const P4Asker& asker, std::u16string_view command, std::string_view path,
                       Patience& patience)
    : asker_(asker), patience_(patience)
{
    ClientCall call;
    call.program = clientNames.perforce;
    call.arguments = std::u16string(strictOptions) + asker.login.options;
    call.arguments.append(pathFromInput).append(command);
    call.workingFolder = clientNames.rootFolder;
    call.variables = asker.login.variables;
    patience_.Ask();
    client_ = std::make_unique<RunningClient>(strictP4, call);
    client_->Write(std::string(path) + "\n");
    client_->CloseInput();
}

std::optional<P4Record> P4Question::Next(const Watcher& watch)
{
    std::optional<P4Record> record = Read(watch);
    if (!record && !isEnough_)
        Finish();
    return record;
}

std::optional<P4Record> P4Question::NextOrNone()
{
    std::optional<P4Record> record = Read();
    if (!record)
        client_->Finish(patience_);
    return record;
}

std::optional<P4Record> P4Question::Read(const Watcher& watch)
{
    for (;;)
    {
        while (std::optional<P4Record> record = parser_.Next())
        {
            // Giving them may take long, too.
            patience_.Ask();
            if (record->Code() != "error")
                return record;
            Note(*record);
        }
        isEnough_ = watch && !watch(parser_.Begun());
        const std::string bytes = isEnough_ ? std::string() : client_->Read(patience_);
        if (bytes.empty())
            return std::nullopt;
        parser_.Feed(bytes);
    }
}

void P4Question::Note(const P4Record& complaint)
{
    // What doesn't say how bad it is has failed.
    const std::uint64_t severity = P4Number(complaint.Text("severity")).value_or(Failed);
    if (severity < Failed)
    {
        if (severity == Warned)
            warning_ = complaint.Text("data");
        return;
    }
    if (!hasFailed_)
        generic_ = P4Number(complaint.Text("generic")).value_or(0);
    hasFailed_ = true;
    failure_ += complaint.Text("data") + "\n";
}

void P4Question::Finish()
{
    const ClientOutcome outcome = client_->Finish(patience_);
    if (hasFailed_ || outcome.exitCode != 0)
        Fail(P4Text(failure_) + outcome.errors, generic_, outcome.exitCode);
    if (!parser_.IsComplete())
        ThrowP4Failure(badAnswer, asker_.item.address);
}

void P4Question::Fail(const std::u16string& words, std::uint64_t generic, int exitCode) const
{
    const StrictFailure failure = P4FailureOf(words, generic);
    const std::u16string said(Trimmed(words));
    if (IsP4LoginFailure(words))
        asker_.host.ReportCredentialsRefused(u"Perforce: " + said);
    const bool isRevision = failure.status == HistoryNoRevision;
    const std::u16string& asked = isRevision ? asker_.item.RevisionText() : asker_.item.address;
    throw ComException(
        failure.status,
        FormatMessageById(failure.message,
                          {asked, said, Decimal(static_cast<std::uint32_t>(exitCode))}),
        At(p4Source));
}

std::u16string P4Text(std::string_view bytes)
{
    return StrictText(strictP4, bytes);
}

void ThrowP4Failure(const StrictFailure& failure, const std::u16string& insert,
                    const std::u16string& words)
{
    ThrowStrictFailure(strictP4.source, failure, insert, words);
}

} // namespace tarnwell
