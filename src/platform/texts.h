// Texts for the user: the module's own, and the system's.
#pragma once

#include "platform/win32.h"

#include <span>
#include <string>

namespace tarnwell
{

// The user interface's language; where the system can't tell it, the user's default language.
LANGID WantedLanguage();

// The language of the module's texts for a user who wants `wanted`: that very one, else one of the
// same primary language, else English.
LANGID ChooseLanguage(LANGID wanted);

} // namespace tarnwell

extern "C"
{
    // The module's text of this number in `language`, else in English. False if there is none.
    BOOL LoadModuleText(unsigned id, LANGID language, std::u16string& text);

    // `text` with an insert in the place of each "%1" to "%9", of which there must be as many as
    // the highest; nothing in an insert is looked at. Lines end as they do on the platform. False
    // if nothing comes of it.
    BOOL FillInserts(const std::u16string& text, std::span<const std::u16string> inserts,
                     std::u16string& filled);

    // What the system says about an error or a status, in one line. False if it knows nothing.
    BOOL FindSystemText(DWORD code, std::u16string& text);
}
