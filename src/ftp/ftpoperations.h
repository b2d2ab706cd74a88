// The operations of the file system. Each takes a session from the pool, uses it alone, and gives
// it back if it is sound: then the next needs no new logon.
#pragma once

#include "addressed/fsitem.h"
#include "addressed/uri.h"
#include "frame/hostuser.h"

#include <tarnwell/pointers.h>
#include <tarnwell/streams.h>

namespace tarnwell
{

// All throw if they fail. `host` is asked for credentials, where an address lacks them, and for the
// owner of questions.
std::shared_ptr<FSItem> FtpQueryItem(const HostUIUser& host, const Uri& uri);
FSItems FtpQueryFolderItems(const HostUIUser& host, const Uri& folder);
void FtpCreateFolderUri(const HostUIUser& host, const Uri& folder, bool recursive);
// The stream keeps its session until it is closed.
ComPtr<IFileStream> FtpOpenUri(const HostUIUser& host, const Uri& uri, std::uint32_t access);

// Unless `noConfirm`, the user is asked first, once for a whole list. Anything but a yes is no
// failure, and nothing is asked of the server.
void FtpDeleteUri(const HostUIUser& host, const Uri& uri, bool noConfirm, bool recursive);
// Entries that can't be had are skipped; the first that can't be deleted ends it.
void FtpDeleteUriList(const HostUIUser& host, IItemList& items, bool noConfirm, bool recursive);

} // namespace tarnwell
