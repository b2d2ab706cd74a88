#include "output.h"

#include "errors.h"
#include "system.h"
#include "text16.h"

#include <utility>

namespace tarnwell::host
{

namespace
{

inline constexpr std::size_t keptBack = 0x10000;

std::string pending;

bool IsControl(char16_t unit)
{
    return unit < 0x20 || (unit >= 0x7F && unit < 0xA0);
}

} // namespace

void Print(std::u16string_view text)
{
    PrintBytes(ToUtf8(text));
}

void PrintBytes(std::string_view bytes)
{
    pending += bytes;
    if (pending.size() >= keptBack)
        FlushOutput();
}

void FlushOutput()
{
    const std::string bytes = std::exchange(pending, {});
    if (!bytes.empty() && !WriteOutput(bytes))
        throw Failure{E_FAIL, u"Can't write to standard output."};
}

void PrintError(std::u16string_view text)
{
    // A failure to write the output must not hide the one that is being told.
    WriteOutput(std::exchange(pending, {}));
    WriteErrors(ToUtf8(text));
}

std::u16string Shown(std::u16string_view name)
{
    std::u16string result(name);
    if (!OutputIsTerminal())
        return result;
    for (char16_t& unit : result)
    {
        if (IsControl(unit))
            unit = u'?';
    }
    return result;
}

} // namespace tarnwell::host
