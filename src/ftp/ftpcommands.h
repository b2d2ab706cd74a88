// What a session asks its server about folders. Nothing is cached: every call goes there. All throw
// if they fail; `host` gives the credentials where the session must log on first.
#pragma once

#include "addressed/fsitem.h"
#include "ftp/ftpsession.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tarnwell
{

// A folder's items in the server's order. What has no name that is one path component is left out.
FSItems FtpList(FTPSession& session, const HostUIUser& host, const Uri& folder);

// One item, which is looked for in its parent's listing: servers answer for folders only. It is
// found by exactly its address, credentials included.
std::shared_ptr<FSItem> FtpFind(FTPSession& session, const HostUIUser& host, const Uri& uri);

// Fails for what exists already. With `recursive` the missing parents are made, too.
void FtpCreateFolder(FTPSession& session, const HostUIUser& host, const Uri& uri, bool recursive);

// A file, an empty folder, or, with `recursive`, a folder with all that is in it.
void FtpDeleteItem(FTPSession& session, const HostUIUser& host, const Uri& uri, bool recursive);

// The folders on the way to `path`, the shortest first, itself last unless it ends in "/".
std::vector<std::u16string> SplitFolderPrefixes(std::u16string_view path);

} // namespace tarnwell
