#include "platform/ftplinks.h"

namespace tarnwell
{

// What the system's listings call a folder is taken for one.
bool TriesFtpFoldersAsFiles()
{
    return false;
}

} // namespace tarnwell
