#include "platform/icons.h"

extern "C" BOOL FindIcon(const std::u16string&, std::int32_t&, void*&)
{
    return 0;
}
