// What a host means by a path and a revision of a Subversion repository, and what the client knows
// of that.
#pragma once

#include "addressed/uri.h"
#include "subversion/svnstrict.h"
#include "subversion/svntreeparser.h"

#include <optional>
#include <string>
#include <string_view>

namespace tarnwell
{

// As the host means it. Nobody was asked yet.
struct SvnQuestion
{
    std::u16string target;   // an address as the client knows it, or a local path
    std::u16string revision; // empty for the latest, or for what is checked out
    std::u16string address;  // as the host gave it, for texts
    std::u16string place;    // an address in the host's form, without the revision
    bool isLocal = false;

    StrictSubject Subject() const
    {
        return {address, RevisionText()};
    }
    std::u16string RevisionText() const
    {
        const std::u16string usual = isLocal ? u"BASE" : u"HEAD";
        return revision.empty() ? usual : revision;
    }
};

// `given` is an address, whose revision counts unless one is `wanted`, or a local path, which is
// taken as it stands. Throws for an address that can't be, and for what is no revision.
SvnQuestion SvnQuestionOf(const std::u16string& given, const std::optional<std::u16string>& wanted);

// A client that is asked for an item's facts.
std::unique_ptr<RunningClient> StartSvnInfo(const SvnLogin& login, const std::u16string& item,
                                            const std::u16string& revision);
// What it says. Throws if it fails; the second gives nothing if there is no such item.
SvnItemFacts ReadSvnFacts(const SvnLogin& login, RunningClient& client,
                          const StrictSubject& subject, Patience& patience);
std::optional<SvnItemFacts> FindSvnFacts(const SvnLogin& login, RunningClient& client,
                                         const StrictSubject& subject, Patience& patience);

// The address of a repository that the host knows, in its own form.
class SvnRoot
{
public:
    // By the address of an item with this path.
    SvnRoot(const std::u16string& address, std::string_view path);

    // The address of a path below it, in a revision.
    std::u16string AddressOf(const std::u16string& path, const std::u16string& revision) const;

private:
    UriParts parts_;
};

// Where the client is to look for what a host means.
struct SvnPlace
{
    SvnLogin login;
    std::u16string item;         // its address, as the client knows it
    std::u16string revision;     // never empty, but for an item that was never committed
    std::optional<SvnRoot> root; // of a working copy, whose address the host hasn't given
    std::u16string path;         // likewise, from the root on
};
// Asks the host for credentials, and of a local path the working copy where it belongs.
SvnPlace FindSvnPlace(const HostUIUser& host, const SvnQuestion& question, Patience& patience);

// The client's address in the form of this module. Throws for one of a kind that this module
// doesn't have: working copies may come from anywhere.
std::u16string OwnSvnAddress(std::string_view url);

} // namespace tarnwell
