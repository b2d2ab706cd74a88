#include "platform/ntfscontrol.h"

namespace tarnwell
{

constinit NtFsControlFileCall ntFsControlFile = nullptr;

} // namespace tarnwell
