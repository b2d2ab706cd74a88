#include "system.h"

#include <clocale>
#include <cstdlib>
#include <langinfo.h>
#include <string>

namespace tarnwell::host
{

namespace
{

void Set(const char* name, const std::string& value)
{
    setenv(name, value.c_str(), 1);
}

bool CharacterSetIsUtf8()
{
    const locale_t locale = newlocale(LC_CTYPE_MASK, "", nullptr);
    if (locale == nullptr)
        return false;
    const std::string characterSet = nl_langinfo_l(CODESET, locale);
    freelocale(locale);
    return characterSet == "UTF-8";
}

// LC_ALL hides the variables of the categories, so it goes, and leaves its value to the two
// categories that count here: the characters and the language of messages.
void MoveAllAway()
{
    const char* const all = getenv("LC_ALL");
    if (all == nullptr)
        return;
    const std::string value = all;
    unsetenv("LC_ALL");
    if (value.empty())
        return;
    Set("LC_CTYPE", value);
    Set("LC_MESSAGES", value);
}

} // namespace

void PrepareProcess(std::u16string_view language)
{
    if (!CharacterSetIsUtf8())
    {
        MoveAllAway();
        Set("LC_CTYPE", "C.UTF-8");
    }
    // The module reads what the clients print: it has to be in English, in UTF-8, and without
    // what users configure for their own eyes.
    Set("LANGUAGE", "en");
    Set("HGPLAIN", "1");
    Set("HGENCODING", "utf-8");
    if (!language.empty())
    {
        MoveAllAway();
        Set("LC_MESSAGES", language == u"ja" ? "ja_JP.UTF-8" : "C.UTF-8");
    }
}

} // namespace tarnwell::host
