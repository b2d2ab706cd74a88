#include "platform/posix/messages/languages.h"
#include "platform/texts.h"

#include <cstdlib>
#include <string_view>

namespace tarnwell
{

std::string_view posix::MessagesLanguage()
{
    for (const char* const variable : {"LC_ALL", "LC_MESSAGES", "LANG"})
    {
        const char* const value = std::getenv(variable);
        if (value != nullptr && *value != '\0')
            return value;
    }
    return "C";
}

LANGID WantedLanguage()
{
    // Language, territory, character set, variant: "ja_JP.UTF-8@variant", all but the first
    // optional.
    const std::string_view locale = posix::MessagesLanguage();
    return locale.substr(0, locale.find_first_of("_.@")) == "ja" ? posix::japanese : posix::english;
}

} // namespace tarnwell
