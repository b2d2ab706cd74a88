#include "platform/posix/shell/confirm.h"

#include "platform/posix/dialogs/question.h"
#include "platform/posix/messages/languages.h"
#include "platform/texts.h"

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

// By the kind of deletion.
constexpr Wording inEnglish[] = {
    {"Permanently delete ", "?", " and the other selected items?"},
    {"Move ", " to the trash?", " and the other selected items to the trash?"}};
constexpr Wording inJapanese[] = {{"完全に削除しますか: ", "", " 他"},
                                  {"ごみ箱に移動しますか: ", "", " 他"}};

std::string Question(std::u16string_view first, std::size_t count, Deletion deletion)
{
    const auto& wordings = WantedLanguage() == japanese ? inJapanese : inEnglish;
    const Wording& wording = wordings[static_cast<std::size_t>(deletion)];
    return wording.before + Displayable(first) + (count > 1 ? wording.several : wording.one);
}

} // namespace

bool ConfirmDelete(std::u16string_view first, std::size_t count, Deletion deletion)
{
    return AskUser(Question(first, count, deletion));
}

} // namespace tarnwell::posix
