#include "subversion/svncommands.h"

#include "frame/exception.h"
#include "frame/messages.h"
#include "frame/text.h"
#include "frame/trim.h"
#include "platform/clients.h"
#include "runner/commandline.h"
#include "runner/outputfile.h"
#include "runner/readstream.h"
#include "subversion/svnparser.h"
#include "subversion/svnuri.h"

#include <algorithm>
#include <array>
#include <utility>

namespace tarnwell
{

namespace
{

constexpr ClientRow svnClient{
    .source = svnSource,
    .hiddenNames = nullptr,
    .decoding = Decoding::Widen,
    .notFound = MessageId::SubversionClientNotFound,
    .communication = MessageId::SubversionCommunicationFailed,
    .reportedFailure = MessageId::SubversionAccessFailed,
};

// How the client says in English that the credentials were refused; in other languages that is a
// failure like any other.
constexpr std::array<std::u16string_view, 3> refusals{u"Can't get password", u"Password incorrect",
                                                      u"authorization failed"};

bool SpeaksOfRefusal(std::u16string_view errors)
{
    return std::any_of(refusals.begin(), refusals.end(), [&](std::u16string_view phrase) {
        return errors.find(phrase) != std::u16string_view::npos;
    });
}

bool EqualsIgnoringCase(std::u16string_view text, std::u16string_view lower)
{
    return std::equal(text.begin(), text.end(), lower.begin(), lower.end(),
                      [](char16_t unit, char16_t wanted) {
                          return (unit >= u'A' && unit <= u'Z' ? unit + 32 : unit) == wanted;
                      });
}

// The repository's own address, without a revision: that is an option, and never stands here.
std::u16string Target(const Uri& uri)
{
    return Quoted(uri.ForComparison()->GetText());
}

using ArgumentsFor = std::u16string (*)(const HostUIUser& host, const Uri& uri);

// What the client printed, from its start.
std::shared_ptr<OsHandle> RunSvn(const HostUIUser& host, const Uri& uri, ArgumentsFor arguments)
{
    const std::u16string& address = uri.GetText();
    // The host is asked for credentials only when there is somewhere to put the output.
    std::shared_ptr<OsHandle> output = MakeOutputFile(address, svnSource);
    RunIntoFile(svnClient, {clientNames.subversion, arguments(host, uri)}, *output,
                [&](const ClientOutcome& outcome) {
                    CheckSvnFailure(host, address, outcome.errors, outcome.exitCode);
                });
    return output;
}

} // namespace

std::u16string SvnAuthArguments(const HostUIUser& host, const Uri& uri)
{
    std::u16string arguments = u"--non-interactive ";
    const UriParts parts = uri.GetParts();
    if (EqualsIgnoringCase(parts.scheme, u"svnfile"))
        return arguments;
    const Credentials credentials =
        host.ResolveCredentials({parts.user, parts.password, parts.host}, serverCredentials);
    if (!credentials.user.empty())
        arguments += Option(u"--username", credentials.user);
    if (!credentials.password.empty())
        arguments += Option(u"--password", credentials.password);
    return arguments;
}

std::u16string SvnRevisionArgument(const Uri& uri)
{
    const std::u16string path = uri.GetPath();
    const std::optional<std::u16string_view> revision = svnMarker.RevisionOf(path);
    return revision ? Option(u"-r", *revision) : std::u16string();
}

std::u16string SvnListArguments(const HostUIUser& host, const Uri& uri)
{
    return SvnAuthArguments(host, uri) + SvnRevisionArgument(uri) + u"--xml list " + Target(uri);
}

std::u16string SvnInfoArguments(const HostUIUser& host, const Uri& uri)
{
    return SvnAuthArguments(host, uri) + SvnRevisionArgument(uri) + u"--xml info " + Target(uri);
}

std::u16string SvnLogArguments(const HostUIUser& host, const Uri& uri)
{
    return SvnAuthArguments(host, uri) + u"log -v --xml " + Target(uri);
}

std::u16string SvnCatArguments(const HostUIUser& host, const Uri& uri)
{
    return SvnAuthArguments(host, uri) + u"cat " + SvnRevisionArgument(uri) + Target(uri);
}

void CheckSvnFailure(const HostUIUser& host, const std::u16string& address,
                     const std::u16string& errors, int exitCode)
{
    if (errors.empty())
        return;
    const std::u16string trimmed(Trimmed(errors));
    if (SpeaksOfRefusal(errors))
    {
        host.ReportCredentialsRefused(u"Subversion: " + trimmed);
        throw ComException(
            E_FAIL, FormatMessageById(MessageId::SubversionCredentialsRefused, {address, trimmed}),
            At(svnSource));
    }
    if (exitCode != 0)
        throw ComException(E_FAIL, FormatMessageById(svnClient.reportedFailure, {address, trimmed}),
                           At(svnSource));
}

FSItems SvnList(const HostUIUser& host, const Uri& uri)
{
    const auto output = RunSvn(host, uri, SvnListArguments);
    return ParseListOutput(LoadSvnXml(output->Get()));
}

std::shared_ptr<FSItem> SvnListItem(const HostUIUser& host, const Uri& uri)
{
    const auto output = RunSvn(host, uri, SvnListArguments);
    return ParseListItemOutput(LoadSvnXml(output->Get()));
}

std::shared_ptr<FSItem> SvnInfo(const HostUIUser& host, const Uri& uri)
{
    const auto output = RunSvn(host, uri, SvnInfoArguments);
    return ParseInfoOutput(LoadSvnXml(output->Get()));
}

std::vector<RevisionRecord> SvnLog(const HostUIUser& host, const std::u16string& address)
{
    const SVNUri uri(address);
    const auto output = RunSvn(host, uri, SvnLogArguments);
    return ParseLogOutput(uri, LoadSvnLog(output->Get()));
}

ComPtr<IFileStream> SvnCat(const HostUIUser& host, const Uri& uri)
{
    return MakeReadStream(RunSvn(host, uri, SvnCatArguments), svnSource);
}

std::shared_ptr<FSItem> SvnReadItem(const HostUIUser& host, const Uri& uri)
{
    auto item = SvnInfo(host, uri);
    if (!item->isDirectory)
        item->size = SvnListItem(host, uri)->size;
    return item;
}

FSItems SvnListChildren(const HostUIUser& host, const Uri& uri)
{
    FSItems items = SvnList(host, uri);
    CompleteSvnAddresses(uri, items);
    return items;
}

void CompleteSvnAddresses(const Uri& parent, const FSItems& items)
{
    UriParts parts = parent.GetParts();
    const std::u16string place = WithoutTrailingSlashes(std::exchange(parts.path, {}));
    const std::u16string peg = place.substr(svnMarker.Strip(place).size());
    const std::u16string front = ComposedText(parts);
    for (const std::shared_ptr<FSItem>& item : items)
    {
        item->text += item->isDirectory ? peg : u"@" + Decimal(item->revision);
        const std::u16string path = SvnPathOf(item->text);
        item->text = front;
        item->text += path;
    }
}

} // namespace tarnwell
