#include "platform/username.h"

#include "platform/wide.h"

extern "C" BOOL FindUserName(std::u16string& name)
{
    constexpr DWORD longestName = 256;
    WCHAR found[longestName + 1] = {};
    DWORD size = longestName + 1;
    const BOOL isFound = GetUserNameW(found, &size);
    name = isFound ? tarnwell::Units(found) : std::u16string_view();
    return isFound;
}
