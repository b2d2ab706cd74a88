#include "addressed/filesystemobject.h"

namespace tarnwell
{

std::u16string CombineAddresses(std::u16string base, std::u16string_view relative)
{
    if (relative.starts_with(u'/'))
        relative.remove_prefix(1);
    if (!base.ends_with(u'/'))
        base += u'/';
    return base.append(relative);
}

} // namespace tarnwell
