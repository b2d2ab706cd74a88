#include "platform/posix/messages/systemtext.h"

#include "platform/posix/errors/errnotable.h"
#include "platform/posix/messages/languages.h"

#include <tarnwell/text.h>

#include <cerrno>
#include <clocale>
#include <cstring>
#include <map>
#include <mutex>
#include <string>

namespace tarnwell
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
    // A language that isn't installed leaves the C library's own English.
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

std::u16string ErrorText(int number)
{
    const locale_t locale = MessagesLocale();
    return locale == locale_t{} ? std::u16string() : DecodeName(strerror_l(number, locale));
}

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
    return GetUserDefaultUILanguage() == japanese ? u"エラーを特定できません"
                                                  : u"Unspecified error";
}

std::u16string Words(DWORD code)
{
    if (code == static_cast<DWORD>(E_FAIL))
        return UnspecifiedError();
    const int number = CounterpartOf(code);
    return number == 0 ? std::u16string() : ErrorText(number);
}

} // namespace

std::u16string SystemText(DWORD code)
{
    const std::u16string words = Words(code);
    return words.empty() ? words : words + u"\r\n";
}

} // namespace tarnwell
