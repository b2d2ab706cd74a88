#include "mercurial/hgparser.h"

#include "mercurial/hguri.h"

namespace tarnwell
{

RevisionList ReadHgLog(const std::u16string& path, HANDLE file)
{
    return ReadWorkingCopyLog(mercurialAddresses.scheme, path, file, Descriptions::AsCollected);
}

} // namespace tarnwell
