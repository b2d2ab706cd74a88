#include "local/tempname.h"

#include "frame/handle.h"
#include "frame/paths.h"
#include "frame/status.h"
#include "frame/text.h"

namespace tarnwell
{

HRESULT CreateFileBeside(const std::u16string& path, std::u16string& made)
{
    constexpr std::uint64_t attempts = 100;
    std::u16string start(ParentFolderOf(path));
    AppendSeparator(start);
    start += u"vrltmp";
    for (std::uint64_t n = 0; n < attempts; ++n)
    {
        made = start + Decimal(n);
        // CREATE_NEW makes a file for one caller only, so no two get the same name.
        const OsHandle file(CreateFileW(Wide(made), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                        FILE_ATTRIBUTE_NORMAL, nullptr));
        if (file)
            return S_OK;
        // No other name would be any better.
        if (GetLastError() == ERROR_ACCESS_DENIED)
            return StatusFromError(ERROR_ACCESS_DENIED);
    }
    return E_FAIL;
}

} // namespace tarnwell
