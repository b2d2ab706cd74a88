// What only Windows has: named streams, control codes for file systems, lists of icons.
#include "platform/backup.h"
#include "platform/icons.h"
#include "platform/ntfscontrol.h"

namespace tarnwell
{

const BackupCalls* backupCalls = nullptr;
constinit NtFsControlFileCall ntFsControlFile = nullptr;

} // namespace tarnwell

extern "C" BOOL FindIcon(const std::u16string&, std::int32_t&, void*&)
{
    return 0;
}
