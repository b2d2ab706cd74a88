#include "platform/posix/dialogs/question.h"

#include "platform/posix/dialogs/dialog.h"
#include "platform/posix/dialogs/terminal.h"

#include <tarnwell/text.h>

namespace tarnwell::posix
{
namespace
{

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

} // namespace

std::string Displayable(std::u16string_view text, bool lines)
{
    std::u16string shown;
    for (std::size_t i = 0; i < text.size(); ++i)
    {
        if (IsPair(text.substr(i)))
            shown.append(text.substr(i++, 2));
        else
            shown += IsShown(text[i]) || (lines && text[i] == u'\n') ? text[i] : u'?';
    }
    return EncodeName(shown).value_or("?");
}

bool AskUser(const std::string& question)
{
    if (const std::optional<bool> answer = AskByDialog(question))
        return *answer;
    return AskOnTerminal(question);
}

} // namespace tarnwell::posix
