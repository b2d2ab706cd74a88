// Questions to the Subversion client whose answers don't depend on anybody's settings, and what its
// failures mean.
#pragma once

#include "frame/hostuser.h"
#include "runner/runningclient.h"
#include "runner/strictclient.h"
#include "subversion/svnxml.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace tarnwell
{

extern const ClientRow strictSvn;

// How the client logs on, which is the same for all runs of a question.
class SvnLogin : public HostUIUser
{
public:
    // Logs on to nobody.
    SvnLogin() = default;
    // By an address in the form of this module; the host is asked, but for a file repository.
    // Throws if it has nothing to say.
    SvnLogin(const HostUIUser& host, const std::u16string& address);

    // A client that runs this command, with all that it gets to read.
    std::unique_ptr<RunningClient> Start(std::u16string_view command) const;

    // Throws if it failed, and then tells the host of credentials that were refused.
    void Check(const ClientOutcome& outcome, const StrictSubject& subject) const;

private:
    Credentials credentials_;
};

// An argument: an item in a revision, be there an "@" in its name or not. An empty revision is the
// client's own choice.
std::u16string SvnTarget(const std::u16string& item, const std::u16string& revision);

// Whether a revision can be asked for: a number, HEAD or a date in braces, and for an item of a
// working copy BASE, COMMITTED and PREV.
bool IsSvnRevision(std::u16string_view text);
bool IsWorkingCopyRevision(std::u16string_view text);
// Whether the text is this word, in capitals or not.
bool IsSvnWord(std::u16string_view text, std::u16string_view word);

StrictFailure SvnFailureOf(std::u16string_view words);

std::u16string SvnText(std::string_view bytes);

// The only element of a name that the client prints. Throws as `Check` does, and if there isn't
// exactly one. The second gives nothing where the client says that there is no such item.
SvnElement ReadSvnElement(const SvnLogin& login, RunningClient& client, std::string_view name,
                          const StrictSubject& subject, Patience& patience);
std::optional<SvnElement> FindSvnElement(const SvnLogin& login, RunningClient& client,
                                         std::string_view name, const StrictSubject& subject,
                                         Patience& patience);

} // namespace tarnwell
