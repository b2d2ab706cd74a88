#include "frame/messages.h"

#include "platform/language.h"
#include "platform/modulehandle.h"
#include "platform/wide.h"

#include <vector>

namespace tarnwell
{

namespace
{

constexpr LANGID fallbackLanguage = 2057;
constexpr unsigned primaryLanguageMask = 0x3FF;

struct LanguageChoice
{
    LANGID wanted;
    LANGID chosen;
    bool exact;
};

LanguageChoice& ChoiceOf(LONG_PTR param)
{
    return *reinterpret_cast<LanguageChoice*>(param);
}

BOOL CALLBACK ConsiderLanguage(HMODULE, LPCWSTR, LPCWSTR, WORD language, LONG_PTR param)
{
    LanguageChoice& choice = ChoiceOf(param);
    choice.exact = language == choice.wanted;
    if (choice.exact || ((language ^ choice.wanted) & primaryLanguageMask) == 0)
        choice.chosen = language;
    return !choice.exact;
}

BOOL CALLBACK ConsiderBlock(HMODULE module, LPCWSTR type, LPWSTR name, LONG_PTR param)
{
    EnumResourceLanguagesW(module, type, name, ConsiderLanguage, param);
    return !ChoiceOf(param).exact;
}

// A block holds 16 texts, each with its length in front.
const WCHAR* FindBlock(WORD block, LANGID language)
{
    const HMODULE module = ThisModule();
    HRSRC found = FindResourceExW(module, RT_STRING, MAKEINTRESOURCEW(block), language);
    if (found == nullptr)
        found = FindResourceExW(module, RT_STRING, MAKEINTRESOURCEW(block), fallbackLanguage);
    if (found == nullptr)
        return nullptr;
    const HGLOBAL loaded = LoadResource(module, found);
    return loaded == nullptr ? nullptr : static_cast<const WCHAR*>(LockResource(loaded));
}

std::u16string LoadMessage(MessageId id)
{
    const unsigned number = static_cast<unsigned>(id);
    const WCHAR* text =
        FindBlock(static_cast<WORD>((number >> 4) + 1), ChooseLanguage(WantedLanguage()));
    if (text == nullptr)
        return {};
    for (unsigned skipped = number & 15; skipped > 0; --skipped)
        text += 1 + *text;
    return std::u16string(reinterpret_cast<const char16_t*>(text) + 1, *text);
}

// What the platform's formatter allocated.
class FormattedText
{
public:
    FormattedText() = default;
    FormattedText(const FormattedText&) = delete;
    FormattedText& operator=(const FormattedText&) = delete;
    ~FormattedText()
    {
        LocalFree(text_);
    }
    WCHAR* Out()
    {
        return reinterpret_cast<WCHAR*>(&text_);
    }
    std::u16string_view View() const
    {
        return Units(text_);
    }

private:
    WCHAR* text_ = nullptr;
};

std::u16string FillInserts(const std::u16string& message, Inserts inserts)
{
    constexpr DWORD minimumUnits = 2048;
    std::vector<DWORD_PTR> arguments;
    arguments.reserve(inserts.size());
    for (const std::u16string& insert : inserts)
        arguments.push_back(reinterpret_cast<DWORD_PTR>(Wide(insert)));
    FormattedText text;
    FormatMessageW(FORMAT_MESSAGE_FROM_STRING | FORMAT_MESSAGE_ALLOCATE_BUFFER |
                       FORMAT_MESSAGE_ARGUMENT_ARRAY,
                   Wide(message), 0, 0, text.Out(), minimumUnits,
                   reinterpret_cast<va_list*>(arguments.data()));
    return std::u16string(text.View());
}

// The system ends its texts with a line end, which is cut off. A text with inserts of its own can't
// be filled and counts as none.
std::u16string SystemText(HRESULT status)
{
    FormattedText text;
    FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_ALLOCATE_BUFFER, nullptr,
                   static_cast<DWORD>(status), 0, text.Out(), 0, nullptr);
    const std::u16string_view whole = text.View();
    return std::u16string(whole.substr(0, whole.find(u'\r')));
}

} // namespace

LANGID ChooseLanguage(LANGID wanted)
{
    LanguageChoice choice{wanted, fallbackLanguage, false};
    if (wanted != fallbackLanguage)
    {
        EnumResourceNamesW(ThisModule(), RT_STRING, ConsiderBlock,
                           reinterpret_cast<LONG_PTR>(&choice));
    }
    return choice.chosen;
}

std::u16string FormatMessageById(MessageId id, Inserts inserts)
{
    return FillInserts(LoadMessage(id), inserts);
}

std::u16string FormatMessageWithStatus(MessageId id, HRESULT status, Inserts inserts)
{
    const std::u16string system = SystemText(status);
    return FormatMessageById(MessageId::MessageWithStatus,
                             {FormatMessageById(id, inserts), system});
}

} // namespace tarnwell
