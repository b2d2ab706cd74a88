#include "platform/ntfscontrol.h"

#include "platform/windows/systemcall.h"

namespace tarnwell
{

NtFsControlFileCall ntFsControlFile = reinterpret_cast<NtFsControlFileCall>(
    reinterpret_cast<void*>(FindSystemCall(L"ntdll.dll", "NtFsControlFile")));

} // namespace tarnwell
