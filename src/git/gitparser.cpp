#include "git/gitparser.h"

#include "git/gituri.h"

namespace tarnwell
{

RevisionList ReadGitLog(const std::u16string& path, HANDLE file)
{
    return ReadWorkingCopyLog(gitAddresses.scheme, path, file, Descriptions::Trimmed);
}

} // namespace tarnwell
