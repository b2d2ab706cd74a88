// What the Mercurial client is asked, word for word.
#pragma once

#include "addressed/uri.h"
#include "frame/revisions.h"

#include <tarnwell/pointers.h>
#include <tarnwell/streams.h>

#include <optional>
#include <string>

namespace tarnwell
{

// The template holds its line feeds and tabs as they are, not as escapes.
std::u16string HgLogArguments(const std::u16string& path);

// Without a revision the client takes the working folder's parent.
std::u16string HgCatArguments(std::optional<std::u16string_view> revision,
                              const std::u16string& path);

// The revisions of the file that `text` (an address or a path) names, the latest first, behind a
// record for the working copy. Empty for a folder, without asking the client.
RevisionList GetHgLog(const std::u16string& text);

// The content of the file at the revision of `uri`, or at the working folder's parent.
ComPtr<IFileStream> GetHgContent(const Uri& uri);

} // namespace tarnwell
