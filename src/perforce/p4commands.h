// What the Perforce client is asked, word for word, and what its answers mean. All functions that
// run it throw if that fails. `host` gives the credentials, and is told of refused ones.
#pragma once

#include "addressed/fsitem.h"
#include "addressed/uri.h"
#include "frame/hostuser.h"
#include "frame/revisions.h"
#include "runner/client.h"

#include <tarnwell/pointers.h>
#include <tarnwell/streams.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tarnwell
{

// The options in front of each command, every one with a blank behind it: user, password, server. A
// password without a user is left out. The host is asked only if there is a client to tell.
std::u16string P4GlobalOptions(const HostUIUser& host, const Uri& uri);

// What follows them. Two begin with a blank of their own, and one ends in one, on purpose.
std::u16string P4FstatArguments(std::u16string_view path);
std::u16string P4DirsArguments(std::u16string_view path);
std::u16string P4PrintArguments(std::u16string_view path, std::u16string_view target);
std::u16string P4FilelogArguments(std::u16string_view path);
std::u16string P4HaveArguments(std::u16string_view path);

// A depot's path as an argument to clients that take text, or to those that take bytes. What these
// print is widened byte by byte, so a name that could be the bytes of UTF-8 goes back as these
// bytes. Each name is judged by itself: one that was listed may stand beside one that was typed.
std::u16string P4PathArgument(std::u16string_view path, bool takeBytes);

// Throws if what the client wrote to its error stream is a failure: by its words, or else by its
// exit code; the rest are warnings. Without `uri` nobody's credentials are meant. `address` is for
// the failure's text.
void CheckP4Failure(const HostUIUser& host, const Uri* uri, const std::u16string& address,
                    const ClientOutcome& outcome);

// An item's facts and its whole address without a revision, in two runs. What is a folder as well
// as a file counts as a folder.
std::shared_ptr<FSItem> P4FindItem(const HostUIUser& host, const Uri& uri);

// A folder's files, and behind them its folders, with their whole addresses, in two runs. Files are
// in the revision that was read, folders in the folder's.
FSItems P4ListFolder(const HostUIUser& host, const Uri& uri);

// Makes addresses of the depot paths of files in a listing of `folder`, each in the revision that
// was read. They have all parts of the folder's but the path.
void CompleteP4Files(const Uri& folder, const FSItems& files);

// The history of the file, whatever revision is named, in two runs. If the workspace has the file,
// it comes first.
std::vector<RevisionRecord> P4History(const HostUIUser& host, const std::u16string& address);

// The content of the revision that is named, or of the latest.
ComPtr<IFileStream> P4Print(const HostUIUser& host, const Uri& uri);

// Where the workspace has the file; empty if it doesn't.
std::u16string P4Have(const HostUIUser& host, const std::u16string& address);

} // namespace tarnwell
