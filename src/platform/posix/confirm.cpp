#include "platform/posix/confirm.h"

#include "platform/posix/languages.h"
#include "platform/posix/question.h"

namespace tarnwell::posix
{
namespace
{

// What stands before the name, and behind it for one item and for several.
struct Wording
{
    const char* before;
    const char* one;
    const char* several;
};

constexpr Wording inEnglish{"Permanently delete ", "?", " and the other selected items?"};
constexpr Wording inJapanese{"完全に削除しますか: ", "", " 他"};

std::string Question(std::u16string_view first, std::size_t count)
{
    const Wording& wording = GetUserDefaultUILanguage() == japanese ? inJapanese : inEnglish;
    return wording.before + Displayable(first) + (count > 1 ? wording.several : wording.one);
}

} // namespace

bool ConfirmDelete(std::u16string_view first, std::size_t count)
{
    return AskUser(Question(first, count));
}

} // namespace tarnwell::posix
