// Colours, where somebody sees them.
#pragma once

#include <string>
#include <string_view>

namespace tarnwell::host
{

enum class Style
{
    Plain,
    Folder,
    Link,
    Error,
};

// Whether the value of NO_COLOR, null if there is none, lets colours be. An empty one counts as
// none.
bool WantsColours(const char* noColour);

// The text as a terminal shows it in that style.
std::string Coloured(std::string_view text, Style style);

} // namespace tarnwell::host
