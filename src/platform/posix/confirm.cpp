#include "platform/posix/confirm.h"

#include "platform/posix/dialog.h"
#include "platform/posix/terminal.h"
#include "platform/win32.h"

#include <tarnwell/text.h>

namespace tarnwell::posix
{
namespace
{

constexpr LANGID japanese = 1041;

// What stands before the name, and behind it for one item and for several.
struct Wording
{
    const char* before;
    const char* one;
    const char* several;
};

constexpr Wording inEnglish{"Permanently delete ", "?", " and the other selected items?"};
constexpr Wording inJapanese{"完全に削除しますか: ", "", " 他"};

// A terminal or a dialog may take these for more than text: controls, and the invisible marks
// that reverse what stands beside them.
bool IsShown(char16_t unit)
{
    const bool control = unit < 0x20 || (unit >= 0x7F && unit < 0xA0);
    const bool mark = (unit >= 0x200B && unit <= 0x200F) || (unit >= 0x2028 && unit <= 0x202E) ||
                      (unit >= 0x2060 && unit <= 0x206F);
    const bool surrogate = unit >= 0xD800 && unit <= 0xDFFF;
    return !control && !mark && !surrogate;
}

bool IsPair(std::u16string_view text)
{
    return text.size() > 1 && text[0] >= 0xD800 && text[0] <= 0xDBFF && text[1] >= 0xDC00 &&
           text[1] <= 0xDFFF;
}

// A name may hold anything; what can't be shown becomes a question mark.
std::string Displayable(std::u16string_view name)
{
    std::u16string shown;
    for (std::size_t i = 0; i < name.size(); ++i)
    {
        if (IsPair(name.substr(i)))
            shown.append(name.substr(i++, 2));
        else
            shown += IsShown(name[i]) ? name[i] : u'?';
    }
    return EncodeName(shown).value_or("?");
}

std::string Question(std::u16string_view first, std::size_t count)
{
    const Wording& wording = GetUserDefaultUILanguage() == japanese ? inJapanese : inEnglish;
    return wording.before + Displayable(first) + (count > 1 ? wording.several : wording.one);
}

} // namespace

bool ConfirmDelete(std::u16string_view first, std::size_t count)
{
    const std::string question = Question(first, count);
    if (const std::optional<bool> answer = AskByDialog(question))
        return *answer;
    return AskOnTerminal(question);
}

} // namespace tarnwell::posix
