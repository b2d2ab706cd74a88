#include "system.h"

#include <cstdlib>

namespace tarnwell::host
{

void PrepareProcess(std::u16string_view language)
{
    if (language.empty())
        return;
    // What the user has set of these two goes before all else that chooses a language.
    setenv("LC_ALL", language == u"ja" ? "ja_JP.UTF-8" : "C.UTF-8", 1);
    setenv("LANGUAGE", language == u"ja" ? "ja" : "en", 1);
}

} // namespace tarnwell::host
