// Asking the user a question that is answered with yes or no.
#pragma once

#include <string>
#include <string_view>

namespace tarnwell::posix
{

// `text` as it may be shown: whatever a terminal or a dialog could take for more than text
// becomes a question mark, line feeds excepted if `lines` is set.
std::string Displayable(std::u16string_view text, bool lines = false);

// Asks through the desktop's dialog program if there is a display, else on the terminal. Where
// there is nobody to ask, the answer is no.
bool AskUser(const std::string& question);

} // namespace tarnwell::posix
