// Questions to the Git client whose answers don't depend on anybody's settings, and what its
// failures mean.
#pragma once

#include "git/gitplace.h"
#include "runner/runningclient.h"

#include <tarnwell/constants.h>

#include <string>
#include <string_view>

namespace tarnwell
{

extern const ClientRow strictGit;

// A command of the client with its arguments, in the repository.
ClientCall StrictGitCall(const GitPlace& place, std::u16string_view arguments);

// The argument for a revision, which stands for one commit or nothing. An empty one is what is
// checked out. Throws `HistoryNoRevision` for a text that means several.
std::u16string CommitArgument(const std::u16string& revision);

// What a failed run of the client means.
struct GitFailure
{
    HRESULT status;
    MessageId message; // inserts: what was asked for, the client's words, the exit code
};
GitFailure GitFailureOf(std::u16string_view words);

// The text of what the client printed. Throws where the platform can't convert it, so that nothing
// is lost; what is ill-formed is replaced.
std::u16string GitText(std::string_view bytes);

// Throws if the exit code says that the client failed. `asked` is for the text: the revision, where
// that is what was missing, else the address.
void ThrowIfGitFailed(const ClientOutcome& outcome, const std::u16string& address,
                      const std::u16string& revision);

[[noreturn]] void ThrowHistoryFailure(HistoryStatus status, MessageId message,
                                      const std::u16string& insert,
                                      const std::u16string& words = {});

} // namespace tarnwell
