#include "style.h"

namespace tarnwell::host
{

bool WantsColours(const char* noColour)
{
    return noColour == nullptr || *noColour == '\0';
}

std::string Coloured(std::string_view text, Style style)
{
    static constexpr std::string_view beginnings[] = {"", "\x1b[1;34m", "\x1b[36m", "\x1b[31m"};
    const std::string_view beginning = beginnings[static_cast<std::size_t>(style)];
    std::string coloured(beginning);
    return coloured.append(text).append(beginning.empty() ? "" : "\x1b[0m");
}

} // namespace tarnwell::host
