#include "platform/texts.h"

#include "platform/wide.h"
#include "platform/windows/modulehandle.h"

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

} // namespace

LANGID WantedLanguage()
{
    const HMODULE kernel = GetModuleHandleW(L"kernel32.dll");
    const FARPROC found =
        kernel == nullptr ? nullptr : GetProcAddress(kernel, "GetUserDefaultUILanguage");
    if (found == nullptr)
        return GetUserDefaultLangID();
    return reinterpret_cast<LANGID(WINAPI*)()>(reinterpret_cast<void*>(found))();
}

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

} // namespace tarnwell

using namespace tarnwell;

extern "C" BOOL LoadModuleText(unsigned id, LANGID language, std::u16string& text)
{
    text.clear();
    const WCHAR* found = FindBlock(static_cast<WORD>((id >> 4) + 1), language);
    if (found == nullptr)
        return FALSE;
    for (unsigned skipped = id & 15; skipped > 0; --skipped)
        found += 1 + *found;
    text.assign(reinterpret_cast<const char16_t*>(found) + 1, *found);
    return !text.empty();
}

extern "C" BOOL FillInserts(const std::u16string& text, std::span<const std::u16string> inserts,
                            std::u16string& filled)
{
    constexpr DWORD minimumUnits = 2048;
    std::vector<DWORD_PTR> arguments;
    arguments.reserve(inserts.size());
    for (const std::u16string& insert : inserts)
        arguments.push_back(reinterpret_cast<DWORD_PTR>(Wide(insert)));
    FormattedText formatted;
    const DWORD length = FormatMessageW(
        FORMAT_MESSAGE_FROM_STRING | FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_ARGUMENT_ARRAY,
        Wide(text), 0, 0, formatted.Out(), minimumUnits,
        reinterpret_cast<va_list*>(arguments.data()));
    filled = formatted.View();
    return length != 0;
}

// The system ends its texts with a line end, which is cut off. A text with inserts of its own can't
// be filled and counts as none.
extern "C" BOOL FindSystemText(DWORD code, std::u16string& text)
{
    FormattedText formatted;
    FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_ALLOCATE_BUFFER, nullptr, code, 0,
                   formatted.Out(), 0, nullptr);
    const std::u16string_view whole = formatted.View();
    text = whole.substr(0, whole.find(u'\r'));
    return !text.empty();
}
