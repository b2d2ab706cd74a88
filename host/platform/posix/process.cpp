#include "system.h"

#include <cstdlib>
#include <string_view>

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

Language LanguageOfTexts()
{
    for (const char* const variable : {"LC_ALL", "LC_MESSAGES", "LANG"})
    {
        const char* const value = std::getenv(variable);
        if (value == nullptr || *value == '\0')
            continue;
        const std::string_view locale = value;
        return locale.substr(0, locale.find_first_of("_.@")) == "ja" ? Language::Japanese
                                                                     : Language::English;
    }
    return Language::English;
}

} // namespace tarnwell::host
