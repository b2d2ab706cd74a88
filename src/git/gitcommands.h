// What the Git client is asked, word for word.
#pragma once

#include "addressed/uri.h"
#include "frame/handle.h"
#include "frame/revisions.h"

#include <tarnwell/pointers.h>
#include <tarnwell/streams.h>

#include <optional>
#include <string>

namespace tarnwell
{

std::u16string GitLogArguments(const std::u16string& path);

// Without a revision, the latest commit is meant. `relative` is the file's path below the root.
std::u16string GitShowArguments(std::optional<std::u16string_view> revision,
                                std::u16string relative);

// The revisions of the file that `text` (an address or a path) names, the latest first, behind a
// record for the working copy. Empty for a folder, without asking the client.
RevisionList GetGitLog(const std::u16string& text);

// The content of the file at the revision of `uri`, or at the latest commit.
ComPtr<IFileStream> GetGitContent(const Uri& uri);

} // namespace tarnwell
