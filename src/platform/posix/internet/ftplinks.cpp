#include "platform/ftplinks.h"

namespace tarnwell
{

bool TriesFtpFoldersAsFiles()
{
    return true;
}

} // namespace tarnwell
