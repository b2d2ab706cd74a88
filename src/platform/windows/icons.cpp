#include "platform/icons.h"

#include "platform/wide.h"

extern "C" BOOL FindIcon(const std::u16string& path, std::int32_t& index, void*& images)
{
    SHFILEINFOW info{};
    const DWORD_PTR list = SHGetFileInfoW(tarnwell::Wide(path), 0, &info, sizeof(info),
                                          SHGFI_SYSICONINDEX | SHGFI_SMALLICON);
    if (list == 0)
        return FALSE;
    images = reinterpret_cast<void*>(list);
    index = info.iIcon;
    return TRUE;
}
