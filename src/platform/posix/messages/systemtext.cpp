// What the system says about a code: the C library's text for its counterpart, in the language of
// the environment.
#include "platform/posix/messages/systemtext.h"

#include "platform/posix/errors/errnotable.h"
#include "platform/posix/errors/lasterror.h"
#include "platform/posix/messages/languages.h"
#include "platform/texts.h"

#include <tarnwell/text.h>

#include <cerrno>
#include <clocale>
#include <cstring>
#include <map>
#include <mutex>
#include <new>
#include <string>

namespace tarnwell::posix
{
namespace
{

// `language`'s messages in UTF-8, whatever the environment's own character set is. Null if the C
// library has no memory for it.
locale_t MakeLocale(const std::string& language)
{
    const locale_t base = newlocale(LC_CTYPE_MASK, "C.UTF-8", locale_t{});
    if (base == locale_t{})
        return base;
    // A language that isn't installed leaves the C library's English. One that can't be read counts
    // as not installed, and the C library remembers that.
    const locale_t wanted = newlocale(LC_MESSAGES_MASK, language.c_str(), base);
    return wanted == locale_t{} ? base : wanted;
}

// The locale of the environment's language. Each is made once and kept: the C library loses memory
// with each one made where LOCPATH is set. Kept beyond the end, since texts may be wanted then.
locale_t MessagesLocale()
{
    static std::mutex& lock = *new std::mutex;
    static auto& made = *new std::map<std::string, locale_t>;
    const std::string language(MessagesLanguage());
    const std::lock_guard locked(lock);
    locale_t& locale = made[language];
    if (locale == locale_t{})
        locale = MakeLocale(language);
    return locale;
}

// Without a locale, in the words that the C library has at hand.
std::u16string ErrorText(int number)
{
    const locale_t locale = MessagesLocale();
    const char* const words =
        locale == locale_t{} ? strerrordesc_np(number) : strerror_l(number, locale);
    return words == nullptr ? std::u16string() : DecodeName(words);
}

// Making a locale, and finding its first text, opens a file, which fails where the failure to be
// told is that too many are open. So both are done when the library is loaded.
bool PrepareTexts() noexcept
{
    try
    {
        return !ErrorText(EMFILE).empty();
    }
    catch (const std::bad_alloc&)
    {
        return false;
    }
}

[[maybe_unused]] const bool arePrepared = PrepareTexts();

int CounterpartOf(DWORD code)
{
    constexpr DWORD errorStatus = 0x80070000;
    if (code == static_cast<DWORD>(E_NOTIMPL))
        return ENOSYS;
    if (code == static_cast<DWORD>(E_ABORT))
        return ECANCELED;
    return ErrnoFromError((code & 0xFFFF0000) == errorStatus ? code & 0xFFFF : code);
}

// The one status in use that says nothing at all, which the C library has no words for.
std::u16string UnspecifiedError()
{
    return WantedLanguage() == japanese ? u"エラーを特定できません" : u"Unspecified error";
}

std::u16string Words(DWORD code)
{
    if (code == static_cast<DWORD>(E_FAIL))
        return UnspecifiedError();
    const int number = CounterpartOf(code);
    return number == 0 ? std::u16string() : ErrorText(number);
}

} // namespace

// The library knows no call for this that takes a locale, so the thread has it meanwhile.
std::u16string SignalText(int signal)
{
    const char* words = sigdescr_np(signal);
    if (words == nullptr)
        return {};
    const locale_t locale = MessagesLocale();
    if (locale == locale_t{})
        return DecodeName(words);
    const locale_t before = uselocale(locale);
    words = strsignal(signal);
    uselocale(before);
    return DecodeName(words);
}

} // namespace tarnwell::posix

extern "C" BOOL FindSystemText(DWORD code, std::u16string& text)
{
    text = tarnwell::posix::Words(code);
    return text.empty() ? tarnwell::posix::Fail(ERROR_RESOURCE_NAME_NOT_FOUND) : 1;
}
