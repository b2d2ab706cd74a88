// The manual page.
#pragma once

#include <string>

namespace tarnwell::host
{

// For man, in the language of the texts.
std::u16string ManualPage();

} // namespace tarnwell::host
