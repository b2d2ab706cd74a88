// Reading the log of a client. Git and Mercurial are told to print the same lines.
#pragma once

#include "frame/revisions.h"
#include "platform/win32.h"

#include <string>
#include <string_view>

namespace tarnwell
{

enum class Descriptions
{
    Trimmed,     // at both ends
    AsCollected, // the end stays as it is
};

// The records of the whole `file`, in its order: three lines with the id, the author and the time
// in Unix seconds; lines of description, each behind blanks; a line of "!". A record that breaks
// off, or has an empty line in it, ends the list and is dropped. In front of the first record
// stands one for the working copy's file at `path`. Addresses are `scheme`://`path`#id.
//
// The list keeps the file's bytes, and makes texts of those of a record when that is asked for.
RevisionList ReadWorkingCopyLog(std::u16string_view scheme, const std::u16string& path, HANDLE file,
                                Descriptions descriptions);

} // namespace tarnwell
