#include "mercurial/hgstrict.h"

#include "mercurial/hguri.h"
#include "platform/clients.h"
#include "runner/commandline.h"

#include <atomic>
#include <charconv>

namespace tarnwell
{

namespace
{

// Nobody's settings are read: not the user's, for which a name stands that no file can have on any
// system, and not the repository's. The client's words are read, in English.
constexpr const char16_t* strictVariables[] = {
    u"HGPLAIN=+strictflags", u"HGRCPATH=/dev/null/*", u"HGRCSKIPREPO=1",
    u"HGENCODING=UTF-8",     u"LC_ALL=C.UTF-8",       u"LANGUAGE=en",
};

// What is left that could run a program or ask a server: extensions that a repository can require,
// and repositories inside.
constexpr std::u16string_view strictSettings =
    u"--config extensions.git=! --config extensions.largefiles=! --config extensions.lfs=! "
    u"--config subrepos.allowed=no --config ui.interactive=no "
    // The client's own, which runs nothing, and without which a sparse checkout isn't opened.
    u"--config extensions.sparse= ";

constexpr std::u16string_view unknownFeatures =
    u"abort: repository requires features unknown to this Mercurial: ";
constexpr StrictPhrase hgPhrases[] = {
    {u"abort: unknown revision ", u"", noRevision},
    {u"abort: hidden revision ", u"", noRevision},
    {u"abort: filtered revision ", u"", noRevision},
    {u"abort: ambiguous revision identifier", u"", noRevision},
    {u"abort: ", u": ambiguous identifier", noRevision},
    {u"abort: ", u": ambiguous identifier!", noRevision},
    {u"abort: repository ", u" not found", noRepository},
    {u"abort: repository ", u" not found!", noRepository},
    {u"abort: no repository found in ", u"", noRepository},
    {unknownFeatures, u"lfs", incomplete},
    {unknownFeatures, u"narrowhg-experimental", incomplete},
    {unknownFeatures, u"exp-remotefilelog-repo-req-1", incomplete},
    {u"abort: repository requires ", u"", badSettings},
    {u"abort: .hg/requires ", u"", badSettings},
    {u"abort: .hg/store/requires ", u"", badSettings},
    {u"config error", u"", badSettings},
    {u"hg: config error", u"", badSettings},
    {u"hg: parse error at ", u"", badSettings},
    {u"abort: Permission denied", u"", noRight},
    {u"abort: ", u": Permission denied", noRight},
    {u"abort: Access is denied", u"", noRight},
    {u"abort: path ", u"", noPath},
};

// Set once such a client was met.
std::atomic<bool> isClientKnown = false;

void CheckClient(const HgItem& item, Patience& patience)
{
    RunningClient client(strictHg, {clientNames.mercurial, u"version -q", clientNames.rootFolder});
    client.CloseInput();
    std::string version;
    for (std::string bytes = client.Read(patience); !bytes.empty(); bytes = client.Read(patience))
        version += bytes.substr(0, 1000);
    ThrowIfHgFailed(client.Finish(patience), item);
    if (!LeavesHgSettings(version))
        ThrowStrictFailure(strictHg.source, badSettings, item.address, HgText(version));
    isClientKnown = true;
}

bool IsPlain(char byte)
{
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') ||
           (byte >= '0' && byte <= '9');
}

// On Windows the client takes a backslash in a path for a slash, so that another item would be
// meant; not so in a regular expression.
bool IsPath(std::string_view name)
{
    return name.find('\\') == std::string_view::npos;
}

std::string InExpression(std::string_view name)
{
    std::string text = "^";
    for (const char byte : name)
    {
        const bool isAscii = static_cast<unsigned char>(byte) < 0x80;
        if (isAscii && !IsPlain(byte))
            text += '\\';
        text += byte;
    }
    return text;
}

std::string_view TakeNumber(std::string_view text, int& number)
{
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return text.substr(static_cast<std::size_t>(end - text.data()));
}

} // namespace

const ClientRow strictHg{
    .source = mercurialAddresses.source,
    .hiddenNames = u"HG",
    .decoding = Decoding::Utf8,
    .notFound = MessageId::MercurialClientNotFound,
    .communication = MessageId::MercurialCommunicationFailed,
    .reportedFailure = MessageId::ClientFailed,
    .missing = HistoryNoClient,
    .variables = strictVariables,
};

ClientCall HgServerCall(const HgItem& item, Patience& patience)
{
    if (!isClientKnown && HasHgSettings(item.place))
        CheckClient(item, patience);
    // It is started elsewhere and goes to the repository itself: what lies there mustn't become a
    // part of it. The repository is "." to it, as it would take "$HOME" or "#" in a path for more
    // than a name.
    std::u16string arguments = u"--cwd " + Quoted(item.place.folder) + u" -R . ";
    arguments.append(strictSettings).append(u"serve --cmdserver pipe");
    return {clientNames.mercurial, std::move(arguments), clientNames.rootFolder};
}

std::u16string HgText(std::string_view bytes)
{
    return StrictText(strictHg, bytes);
}

void ThrowIfHgFailed(const ClientOutcome& outcome, const HgItem& item)
{
    ThrowIfStrictFailed(strictHg, outcome, hgPhrases, {item.address, item.RevisionText()});
}

std::string HgQuoted(std::string_view name)
{
    constexpr const char* digits = "0123456789abcdef";
    std::string text = "\"";
    for (const char byte : name)
    {
        if (IsPlain(byte))
        {
            text += byte;
            continue;
        }
        text += "\\x";
        text += digits[static_cast<unsigned char>(byte) >> 4];
        text += digits[static_cast<unsigned char>(byte) & 15];
    }
    return text += '"';
}

std::string HgExpression(std::string_view expression)
{
    return "revset(" + std::string(expression) + ")";
}

std::string HgPathPattern(std::string_view path)
{
    return IsPath(path) ? "path:" + std::string(path) : "re:" + InExpression(path) + "(?:/|$)";
}

std::string HgFilesPattern(std::string_view folder)
{
    return IsPath(folder) ? "rootfilesin:" + std::string(folder)
                          : "re:" + InExpression(folder) + "/[^/]+$";
}

bool LeavesHgSettings(std::string_view version)
{
    constexpr std::string_view mark = "(version ";
    const std::size_t at = version.find(mark);
    if (at == std::string_view::npos)
        return false;
    int major = 0;
    int minor = 0;
    const std::string_view rest = TakeNumber(version.substr(at + mark.size()), major);
    if (rest.starts_with('.'))
        TakeNumber(rest.substr(1), minor);
    return major > 5 || (major == 5 && minor >= 9);
}

} // namespace tarnwell
