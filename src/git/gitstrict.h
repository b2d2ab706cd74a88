// Questions to the Git client whose answers don't depend on anybody's settings, and what its
// failures mean.
#pragma once

#include "frame/patience.h"
#include "git/gitplace.h"
#include "runner/strictclient.h"

#include <optional>
#include <string>
#include <string_view>

namespace tarnwell
{

extern const ClientRow strictGit;

// The item, as `PlacedItemOf` finds it. Throws as that does, and where the client would take no
// notice of what is in its folder and go on to a repository around it.
PlacedItem GitItemOf(const std::u16string& path, const std::optional<std::u16string>& revision,
                     Patience& patience);

// A file in a working tree; nothing if it is in none. Throws likewise.
std::optional<PlacedItem> GitWorkFileOf(const std::u16string& path, Patience& patience);

// A command of the client with its arguments, in the repository.
ClientCall StrictGitCall(const Place& place, std::u16string_view arguments);

// The same for what the client makes of files in the working tree: there everybody's attributes
// count.
ClientCall GitWorkCall(const Place& place, std::u16string_view arguments);

// All that a strict command prints. Throws if it fails.
std::string GitAnswer(const PlacedItem& item, std::u16string_view arguments, Patience& patience);

// The argument for a revision, which stands for one commit or nothing. An empty one is what is
// checked out. Throws `HistoryNoRevision` for a text that means several.
std::u16string CommitArgument(const std::u16string& revision);

// What the client's words mean.
StrictFailure GitFailureOf(std::u16string_view words);

// Throws if the exit code says that the client failed.
void ThrowIfGitFailed(const ClientOutcome& outcome, const PlacedItem& item);

} // namespace tarnwell
