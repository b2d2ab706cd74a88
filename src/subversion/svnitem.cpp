#include "subversion/svnitem.h"

#include "frame/exception.h"
#include "frame/paths.h"
#include "subversion/svnuri.h"
#include "subversion/svnvalues.h"

#include <tarnwell/text.h>

#include <algorithm>

namespace tarnwell
{

namespace
{

constexpr std::u16string_view infoCommand = u"info --xml ";

// Only in the last name: a revision has no slash.
std::optional<std::u16string> RevisionIn(const std::u16string& path)
{
    const std::optional<std::u16string_view> marked = svnMarker.RevisionOf(path);
    if (!marked || marked->find(u'/') != std::u16string_view::npos)
        return std::nullopt;
    return std::u16string(*marked);
}

void CheckRevision(const SvnQuestion& question)
{
    const std::u16string& revision = question.revision;
    if (!revision.empty() && !IsSvnRevision(revision) &&
        !(question.isLocal && IsWorkingCopyRevision(revision)))
        ThrowStrictFailure(svnSource, noRevision, revision);
}

// Takes the last name off a path of an address.
std::u16string TakeLastName(std::u16string& path)
{
    path = WithoutTrailingSlashes(path);
    const std::size_t slash = path.rfind(u'/');
    const std::size_t start = slash == std::u16string::npos ? 0 : slash + 1;
    std::u16string name = path.substr(start);
    path.resize(start);
    return name;
}

bool IsHexadecimal(char16_t unit)
{
    return (unit >= u'0' && unit <= u'9') || (unit >= u'A' && unit <= u'F') ||
           (unit >= u'a' && unit <= u'f');
}

// The client takes "%" and two digits for a character, and every other one as it stands.
std::u16string WithPercentsEncoded(const std::u16string& path)
{
    std::u16string encoded;
    for (std::size_t i = 0; i < path.size(); ++i)
    {
        encoded += path[i];
        if (path[i] == u'%' && i + 2 < path.size() && IsHexadecimal(path[i + 1]) &&
            IsHexadecimal(path[i + 2]))
            encoded += u"25";
    }
    return encoded;
}

SvnItemFacts FactsIn(const SvnElement& entry, const StrictSubject& subject)
{
    std::optional<SvnItemFacts> facts = ReadSvnInfo(entry);
    if (!facts)
        ThrowStrictFailure(svnSource, badAnswer, subject.address);
    return std::move(*facts);
}

// The facts of an item of a working copy, or of the nearest folder around it that is in one. `rest`
// becomes what is below that, with "/" in between.
SvnItemFacts FindInWorkingCopy(const SvnQuestion& question, std::u16string& rest,
                               Patience& patience)
{
    const SvnLogin nobody;
    std::u16string path = question.target;
    rest.clear();
    for (;;)
    {
        const auto client = StartSvnInfo(nobody, path, {});
        if (auto facts = FindSvnFacts(nobody, *client, question.Subject(), patience))
            return std::move(*facts);
        const std::u16string name(LeafNameOf(path));
        std::u16string parent(ParentFolderOf(path));
        if (name == u".." || parent.empty() || parent == path)
            ThrowStrictFailure(svnSource, noRepository, question.address);
        if (!name.empty() && name != u".")
            rest.insert(0, rest.empty() ? name : name + u"/");
        path = std::move(parent);
    }
}

// The number that a word for a revision of a working copy stands for.
std::u16string RevisionOf(const SvnQuestion& question, const SvnItemFacts& facts)
{
    if (question.revision.empty() || IsSvnWord(question.revision, u"BASE"))
        return SvnText(facts.revision);
    if (IsSvnWord(question.revision, u"COMMITTED"))
        return SvnText(facts.changedRevision);
    if (!IsSvnWord(question.revision, u"PREV"))
        return question.revision;
    const std::uint64_t changed = ParseSvnNumber<std::uint64_t>(SvnText(facts.changedRevision));
    if (changed == 0)
        ThrowStrictFailure(svnSource, noRevision, question.revision);
    return DecodeName(std::to_string(changed - 1));
}

} // namespace

SvnQuestion SvnQuestionOf(const std::u16string& given, const std::optional<std::u16string>& wanted)
{
    SvnQuestion question{given, wanted.value_or(u""), given, {}, IsWholePath(given)};
    if (!question.isLocal)
    {
        UriParts parts = SVNUri(given).GetParts();
        const std::optional<std::u16string> marked = RevisionIn(parts.path);
        if (!wanted && marked)
        {
            question.revision = *marked;
            parts.path = svnMarker.Strip(parts.path);
        }
        question.place = Uri({}).Compose(parts)->GetText();
        parts.scheme = SvnRealScheme(parts.scheme);
        parts.user.clear();
        parts.password.clear();
        question.target = Uri({}).Compose(parts)->GetText();
    }
    CheckRevision(question);
    return question;
}

std::unique_ptr<RunningClient> StartSvnInfo(const SvnLogin& login, const std::u16string& item,
                                            const std::u16string& revision)
{
    return login.Start(std::u16string(infoCommand) + SvnTarget(item, revision));
}

SvnItemFacts ReadSvnFacts(const SvnLogin& login, RunningClient& client,
                          const StrictSubject& subject, Patience& patience)
{
    return FactsIn(ReadSvnElement(login, client, "entry", subject, patience), subject);
}

std::optional<SvnItemFacts> FindSvnFacts(const SvnLogin& login, RunningClient& client,
                                         const StrictSubject& subject, Patience& patience)
{
    const auto entry = FindSvnElement(login, client, "entry", subject, patience);
    if (!entry)
        return std::nullopt;
    return FactsIn(*entry, subject);
}

SvnPlace FindSvnPlace(const HostUIUser& host, const SvnQuestion& question, Patience& patience)
{
    SvnPlace place;
    if (!question.isLocal)
    {
        place.login = SvnLogin(host, question.address);
        place.item = question.target;
        place.revision = question.RevisionText();
        return place;
    }
    std::u16string rest;
    const SvnItemFacts facts = FindInWorkingCopy(question, rest, patience);
    place.login = SvnLogin(host, OwnSvnAddress(facts.url));
    place.root = SvnRoot(OwnSvnAddress(facts.root), {});
    place.path = DecodeName(facts.path);
    place.item = DecodeName(facts.url);
    place.revision = RevisionOf(question, facts);
    if (!rest.empty())
    {
        const std::optional<std::string> name = EncodeName(rest);
        if (!name)
            ThrowStrictFailure(svnSource, noPath, question.address);
        place.path += (place.path.empty() ? u"" : u"/") + rest;
        place.item += u"/" + DecodeName(EncodeSvnPath(*name));
    }
    return place;
}

SvnRoot::SvnRoot(const std::u16string& address, std::string_view path)
    : parts_(SVNUri(address).GetParts())
{
    // The names below the root are as many as the path has; how they are written, and what is in
    // front of them, is the host's.
    auto left = path.empty() ? 0 : 1 + std::count(path.begin(), path.end(), '/');
    for (std::u16string rest = parts_.path; !rest.empty();)
    {
        const std::u16string name = TakeLastName(rest);
        if (left == 0 && name != u".")
            break;
        left -= name != u"." ? 1 : 0;
        parts_.path = rest;
    }
    parts_.path = WithoutTrailingSlashes(parts_.path);
}

std::u16string SvnRoot::AddressOf(const std::u16string& path, const std::u16string& revision) const
{
    UriParts parts = parts_;
    if (!path.empty())
        parts.path += (parts.path.empty() ? u"" : u"/") + WithPercentsEncoded(path);
    if (!revision.empty())
        parts.path += u"@" + revision;
    return Uri({}).Compose(parts)->GetText();
}

std::u16string OwnSvnAddress(std::string_view url)
{
    const std::u16string address = DecodeName(url);
    const std::u16string_view scheme = std::u16string_view(address).substr(0, address.find(u':'));
    const bool isRenamed = scheme == u"file" || scheme == u"http" || scheme == u"https";
    return SVNUri(isRenamed ? u"svn" + address : address).GetText();
}

} // namespace tarnwell
