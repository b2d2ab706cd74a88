#include "platform/backup.h"

namespace tarnwell
{

namespace
{
constexpr BackupCalls systemCalls{&BackupRead, &BackupSeek};
}

const BackupCalls* backupCalls = &systemCalls;

} // namespace tarnwell
