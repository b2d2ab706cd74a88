// Questions to the Mercurial client whose answers don't depend on anybody's settings, and what its
// failures mean.
#pragma once

#include "mercurial/hgplace.h"
#include "runner/runningclient.h"
#include "runner/strictclient.h"

#include <string>
#include <string_view>

namespace tarnwell
{

extern const ClientRow strictHg;

// The command server for the repository that the item is in. Throws for a client that is so old
// that it would read settings of the repository's own.
ClientCall HgServerCall(const HgItem& item, Patience& patience);

// As those of all strict clients.
std::u16string HgText(std::string_view bytes);
void ThrowIfHgFailed(const ClientOutcome& outcome, const HgItem& item);

// A text in the client's languages of revisions and templates, in quotes and with nothing in it
// that has a meaning in either. As a revision it is a name, whatever it looks like.
std::string HgQuoted(std::string_view name);

// An expression in the client's language as an argument. By itself the client would first look for
// a tag, a branch or a bookmark of that very name, and a repository can have one.
std::string HgExpression(std::string_view expression);

// What stands for an item with all below it, and for nothing else.
std::string HgPathPattern(std::string_view path);
// What stands for the files of a folder, without those below its folders.
std::string HgFilesPattern(std::string_view folder);

// Whether the client that says this of its version leaves a repository's settings alone.
bool LeavesHgSettings(std::string_view version);

} // namespace tarnwell
