// Links among what FTP servers show as folders.
#pragma once

namespace tarnwell
{

// Whether the deletion of a tree tries each folder as a file before it enters it. A link goes that
// way, whatever the server calls it.
bool TriesFtpFoldersAsFiles();

} // namespace tarnwell
