#include "platform/posix/systemtext.h"

#include "platform/posix/errnotable.h"
#include "platform/posix/languages.h"

#include <tarnwell/text.h>

#include <cerrno>
#include <clocale>
#include <cstring>

namespace tarnwell
{

namespace
{

// The environment's language for messages, in UTF-8 whatever its own character set is.
class MessagesLocale
{
public:
    MessagesLocale() : locale_(newlocale(LC_CTYPE_MASK, "C.UTF-8", locale_t{}))
    {
        if (locale_ == locale_t{})
            return;
        // A language that isn't installed leaves the C library's own English.
        if (const locale_t wanted = newlocale(LC_MESSAGES_MASK, "", locale_); wanted != locale_t{})
            locale_ = wanted;
    }
    MessagesLocale(const MessagesLocale&) = delete;
    MessagesLocale& operator=(const MessagesLocale&) = delete;
    ~MessagesLocale()
    {
        if (locale_ != locale_t{})
            freelocale(locale_);
    }

    std::u16string ErrorText(int number) const
    {
        if (locale_ == locale_t{})
            return {};
        return DecodeName(strerror_l(number, locale_));
    }

private:
    locale_t locale_;
};

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
    return number == 0 ? std::u16string() : MessagesLocale().ErrorText(number);
}

} // namespace

std::u16string SystemText(DWORD code)
{
    const std::u16string words = Words(code);
    return words.empty() ? words : words + u"\r\n";
}

} // namespace tarnwell
