#include "subversion/svnstrict.h"

#include "frame/exception.h"
#include "frame/trim.h"
#include "platform/clients.h"
#include "runner/commandline.h"
#include "subversion/svnuri.h"

#include <tarnwell/text.h>

#include <algorithm>
#include <optional>

namespace tarnwell
{

namespace
{

// The client's words are read, in English; it takes and prints names of all kinds.
constexpr const char16_t* strictVariables[] = {u"LC_ALL=C.UTF-8", u"LANGUAGE=en"};

// It asks nobody, and nothing that the host knows stays with it.
constexpr std::u16string_view strictOptions = u"--non-interactive --no-auth-cache ";

constexpr StrictFailure badAddress{E_INVALIDARG, MessageId::InvalidSubversionUri};

// By the numbers, which are the same in all languages and versions. Those of the system are below
// 1,000 on Linux, and behind 720,000 on Windows.
constexpr StrictPhrase causes[] = {
    {u"svn: E160006: ", u"", noRevision},
    {u"svn: E195002: ", u"", noRevision},
    {u"svn: E205000: Syntax error", u"", noRevision},
    {u"svn: E160013: ", u"", noPath},
    {u"svn: E160005: ", u"", noPath},
    {u"svn: E195012: ", u"", noPath},
    {u"svn: E155010: ", u"", noPath},
    {u"svn: E145000: Unknown node kind", u"", noPath},
    {u"svn: warning: W160013: ", u"", noPath},
    {u"svn: warning: W170000: ", u"", noPath},
    {u"svn: warning: W155010: ", u"", noPath},
    {u"svn: warning: W195007: ", u"", noFile},
    {u"svn: E195007: ", u"", noFile},
    {u"svn: E155007: ", u"", noRepository},
    {u"svn: warning: W155007: ", u"", noRepository},
    {u"svn: E210005: ", u"", noRepository},
    {u"svn: E175003: ", u"", noRepository},
    {u"svn: E170001: ", u"", noRight},
    {u"svn: E215004: ", u"", noRight},
    {u"svn: E220000: ", u"", noRight},
    {u"svn: E220001: ", u"", noRight},
    {u"svn: E175013: ", u"", noRight},
    {u"svn: E230001: ", u"", noRight},
    {u"svn: E000013: ", u"", noRight},
    {u"svn: E720005: ", u"", noRight},
    {u"svn: E200002: ", u"", badSettings},
    {u"svn: E165005: ", u"", badSettings},
    {u"svn: E160043: ", u"", badSettings},
    {u"svn: E155021: ", u"", badSettings},
    {u"svn: E155036: ", u"", badSettings},
    {u"svn: E000101: ", u"", serverSilent},
    {u"svn: E000104: ", u"", serverSilent},
    {u"svn: E000110: ", u"", serverSilent},
    {u"svn: E000111: ", u"", serverSilent},
    {u"svn: E000112: ", u"", serverSilent},
    {u"svn: E000113: ", u"", serverSilent},
    {u"svn: E670", u"", serverSilent},
    {u"svn: E730051: ", u"", serverSilent},
    {u"svn: E730054: ", u"", serverSilent},
    {u"svn: E730060: ", u"", serverSilent},
    {u"svn: E730061: ", u"", serverSilent},
    {u"svn: E730065: ", u"", serverSilent},
    {u"svn: E731001: ", u"", serverSilent},
    {u"svn: E175012: ", u"", serverSilent},
    {u"svn: E210002: ", u"", serverSilent},
    {u"svn: E125002: ", u"", badAddress},
};

// What stands in front of a cause, or alone.
constexpr StrictPhrase effects[] = {
    {u"svn: E180001: ", u"", noRepository},
};

std::span<const StrictPhrase> PhrasesFor(std::u16string_view words)
{
    const bool hasCause = StrictFailureOf(words, causes).status != otherFailure.status;
    return hasCause ? std::span<const StrictPhrase>(causes) : effects;
}

// Those of E_ACCESSDENIED that are about who one is, and not about what that one may do.
constexpr std::u16string_view unknownOnes[] = {
    u"svn: E170001: Can't get ", u"svn: E170001: Authentication error", u"svn: E215004: "};

bool SpeaksOfWhoOneIs(std::u16string_view words)
{
    return std::any_of(std::begin(unknownOnes), std::end(unknownOnes),
                       [&](std::u16string_view phrase) {
                           return words.find(phrase) != std::u16string_view::npos;
                       });
}

bool IsDate(std::u16string_view text)
{
    constexpr std::u16string_view characters = u"0123456789-:.+TZ ";
    return text.size() > 2 && text.front() == u'{' && text.back() == u'}' &&
           text.substr(1, text.size() - 2).find_first_not_of(characters) ==
               std::u16string_view::npos;
}

void ReadAll(RunningClient& client, SvnXmlReader& reader, Patience& patience)
{
    for (std::string bytes = client.Read(patience); !bytes.empty(); bytes = client.Read(patience))
        reader.Feed(bytes);
}

SvnElement OnlyElement(SvnXmlReader& reader, const StrictSubject& subject)
{
    std::optional<SvnElement> element = reader.Next();
    if (!element || reader.Next() || !reader.IsComplete())
        ThrowStrictFailure(svnSource, badAnswer, subject.address);
    return std::move(*element);
}

} // namespace

const ClientRow strictSvn{
    .source = svnSource,
    .hiddenNames = nullptr,
    .decoding = Decoding::Utf8,
    .notFound = MessageId::SubversionClientNotFound,
    .communication = MessageId::SubversionCommunicationFailed,
    .reportedFailure = MessageId::ClientFailed,
    .missing = HistoryNoClient,
    .variables = strictVariables,
};

SvnLogin::SvnLogin(const HostUIUser& host, const std::u16string& address)
{
    SetHostObject(host.HostObject());
    const UriParts parts = SvnPartsOf(address);
    if (SvnRealScheme(parts.scheme) != u"file")
        credentials_ =
            host.ResolveCredentials({parts.user, parts.password, parts.host}, serverCredentials);
}

std::unique_ptr<RunningClient> SvnLogin::Start(std::u16string_view command) const
{
    std::u16string arguments(strictOptions);
    if (!credentials_.user.empty())
        arguments += Option(u"--username", credentials_.user);
    const std::optional<std::string> password = EncodeName(credentials_.password);
    // The client reads one line.
    const bool canBeRead =
        password && password->find_first_of(std::string_view("\r\n\0", 3)) == std::string::npos;
    if (!canBeRead)
        ThrowStrictFailure(svnSource, noRight, credentials_.host);
    if (!password->empty())
        arguments += u"--password-from-stdin ";
    auto client = std::make_unique<RunningClient>(
        strictSvn, ClientCall{clientNames.subversion, arguments.append(command)});
    // Without an end of a line, since that differs: what ends is the input.
    if (!password->empty())
        client->Write(*password);
    client->CloseInput();
    return client;
}

void SvnLogin::Check(const ClientOutcome& outcome, const StrictSubject& subject) const
{
    if (outcome.exitCode != 0 && SpeaksOfWhoOneIs(outcome.errors))
        ReportCredentialsRefused(u"Subversion: " + std::u16string(Trimmed(outcome.errors)));
    ThrowIfStrictFailed(strictSvn, outcome, PhrasesFor(outcome.errors), subject);
}

std::u16string SvnTarget(const std::u16string& item, const std::u16string& revision)
{
    return u"-- " + Quoted(item + u"@" + revision);
}

bool IsSvnRevision(std::u16string_view text)
{
    constexpr std::size_t mostDigits = 18;
    const std::u16string_view number = text.substr(text.starts_with(u'r') ? 1 : 0);
    const bool isNumber = !number.empty() && number.size() <= mostDigits &&
                          number.find_first_not_of(u"0123456789") == std::u16string_view::npos;
    return isNumber || IsSvnWord(text, u"HEAD") || IsDate(text);
}

bool IsWorkingCopyRevision(std::u16string_view text)
{
    return IsSvnWord(text, u"BASE") || IsSvnWord(text, u"COMMITTED") || IsSvnWord(text, u"PREV");
}

bool IsSvnWord(std::u16string_view text, std::u16string_view word)
{
    return std::equal(text.begin(), text.end(), word.begin(), word.end(),
                      [](char16_t unit, char16_t capital) {
                          return (unit >= u'a' && unit <= u'z' ? unit - 32 : unit) == capital;
                      });
}

StrictFailure SvnFailureOf(std::u16string_view words)
{
    return StrictFailureOf(words, PhrasesFor(words));
}

std::u16string SvnText(std::string_view bytes)
{
    return StrictText(strictSvn, bytes);
}

SvnElement ReadSvnElement(const SvnLogin& login, RunningClient& client, std::string_view name,
                          const StrictSubject& subject, Patience& patience)
{
    SvnXmlReader reader(name);
    ReadAll(client, reader, patience);
    login.Check(client.Finish(patience), subject);
    return OnlyElement(reader, subject);
}

std::optional<SvnElement> FindSvnElement(const SvnLogin& login, RunningClient& client,
                                         std::string_view name, const StrictSubject& subject,
                                         Patience& patience)
{
    SvnXmlReader reader(name);
    ReadAll(client, reader, patience);
    const ClientOutcome outcome = client.Finish(patience);
    if (outcome.exitCode != 0 && SvnFailureOf(outcome.errors).status == HistoryNoPath)
        return std::nullopt;
    login.Check(outcome, subject);
    return OnlyElement(reader, subject);
}

} // namespace tarnwell
