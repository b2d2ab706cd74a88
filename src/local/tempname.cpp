#include "local/tempname.h"

#include "frame/paths.h"
#include "frame/status.h"
#include "frame/text.h"
#include "platform/newfile.h"

namespace tarnwell
{

HRESULT CreateFileBeside(const std::u16string& beside, std::u16string& made)
{
    constexpr std::uint64_t attempts = 100;
    std::u16string start(ParentFolderOf(beside));
    AppendSeparator(start);
    start += u"vrltmp";
    for (std::uint64_t n = 0; n < attempts; ++n)
    {
        made = start + Decimal(n);
        // Of all that try this name at once, one makes the file.
        if (MakeFileBeside(made, beside))
            return S_OK;
        const DWORD error = GetLastError();
        if (error == ERROR_ACCESS_DENIED)
            return StatusFromError(error);
        if (!MayTryAnotherName(error))
            break;
    }
    return E_FAIL;
}

} // namespace tarnwell
