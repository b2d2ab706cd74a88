#include "platform/backup.h"

namespace tarnwell
{

const BackupCalls* backupCalls = nullptr;

} // namespace tarnwell
