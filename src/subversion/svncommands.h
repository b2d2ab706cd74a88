// What the Subversion client is asked, word for word, and what its answers mean. All functions that
// run it throw if that fails. `host` gives the credentials, and is told of refused ones.
#pragma once

#include "addressed/fsitem.h"
#include "addressed/uri.h"
#include "frame/hostuser.h"
#include "frame/revisions.h"

#include <tarnwell/pointers.h>
#include <tarnwell/streams.h>

#include <memory>
#include <string>
#include <vector>

namespace tarnwell
{

// Options that keep the client from asking, and give it the credentials. A file repository has no
// credentials, and the host isn't asked for them.
std::u16string SvnAuthArguments(const HostUIUser& host, const Uri& uri);
// The option for the revision of `uri`, with the blank behind it; empty without one.
std::u16string SvnRevisionArgument(const Uri& uri);

std::u16string SvnListArguments(const HostUIUser& host, const Uri& uri);
std::u16string SvnInfoArguments(const HostUIUser& host, const Uri& uri);
// Without the revision, so that all revisions of an item have the same history.
std::u16string SvnLogArguments(const HostUIUser& host, const Uri& uri);
std::u16string SvnCatArguments(const HostUIUser& host, const Uri& uri);

// Throws if what the client wrote to its error stream is a failure: refused credentials by what it
// says, whatever its exit code; anything else by the exit code, since the rest are warnings.
void CheckSvnFailure(const HostUIUser& host, const std::u16string& address,
                     const std::u16string& errors, int exitCode);

// One run each.
FSItems SvnList(const HostUIUser& host, const Uri& uri);
std::shared_ptr<FSItem> SvnListItem(const HostUIUser& host, const Uri& uri);
std::shared_ptr<FSItem> SvnInfo(const HostUIUser& host, const Uri& uri);
std::vector<RevisionRecord> SvnLog(const HostUIUser& host, const std::u16string& address);
ComPtr<IFileStream> SvnCat(const HostUIUser& host, const Uri& uri);

// An item's facts: one run for a folder, a second one for the size of a file.
std::shared_ptr<FSItem> SvnReadItem(const HostUIUser& host, const Uri& uri);

// A folder's items with their whole addresses, in one run.
FSItems SvnListChildren(const HostUIUser& host, const Uri& uri);

// Makes addresses of what a listing of the folder `parent` calls its items. They have all parts of
// the folder's but the path; folders are in the folder's revision, files in the one that changed
// them last.
void CompleteSvnAddresses(const Uri& parent, const FSItems& items);

} // namespace tarnwell
