#include "runner/commandline.h"

namespace tarnwell
{

std::u16string Quoted(std::u16string_view value)
{
    std::u16string quoted = u"\"";
    std::size_t backslashes = 0; // in front of the next unit
    for (const char16_t unit : value)
    {
        if (unit == u'"')
            quoted.append(backslashes + 1, u'\\');
        backslashes = unit == u'\\' ? backslashes + 1 : 0;
        quoted += unit;
    }
    return quoted.append(backslashes, u'\\') += u'"';
}

std::u16string Option(std::u16string_view name, std::u16string_view value)
{
    return std::u16string(name) + u" " + Quoted(value) + u" ";
}

} // namespace tarnwell
