#include "platform/posix/messages/systemtext.h"
#include "platform/win32.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>
#include <optional>
#include <string>
#include <string_view>

namespace
{

constexpr char16_t endOfText = u'\0';

// Walks over a message and fills in what follows its percent signs.
class Formatter
{
public:
    Formatter(std::u16string_view message, const DWORD_PTR* inserts)
        : rest_(message), inserts_(inserts)
    {
    }

    // Nothing if the message is ill-formed.
    std::optional<std::u16string> Run()
    {
        while (!rest_.empty())
        {
            const char16_t unit = Take();
            if (unit == u'%')
            {
                if (Next() == u'0')
                    return text_;
                if (!TakeSequence())
                    return std::nullopt;
            }
            else
            {
                TakeLiteral(unit);
            }
        }
        return text_;
    }

private:
    char16_t Next() const
    {
        return rest_.empty() ? endOfText : rest_.front();
    }

    char16_t Take()
    {
        const char16_t unit = Next();
        rest_.remove_prefix(rest_.empty() ? 0 : 1);
        return unit;
    }

    // Any kind of line end in the message is this system's own.
    void TakeLiteral(char16_t unit)
    {
        if (unit == u'\r' && Next() == u'\n')
            Take();
        text_ += unit == u'\r' ? u'\n' : unit;
    }

    bool TakeSequence()
    {
        const char16_t unit = Take();
        switch (unit)
        {
        case endOfText:
            return false;
        case u'n':
            text_ += u'\n';
            return true;
        case u'r':
            text_ += u'\r';
            return true;
        case u't':
            text_ += u'\t';
            return true;
        default:
            if (unit >= u'1' && unit <= u'9')
                return TakeInsert(unit);
            // A blank, a percent sign, a full stop, an exclamation mark or whatever else.
            text_ += unit;
            return true;
        }
    }

    // One or two digits, and the format of a text if any is given.
    bool TakeInsert(char16_t digit)
    {
        std::size_t number = digit - u'0';
        if (Next() >= u'0' && Next() <= u'9')
            number = number * 10 + (Take() - u'0');
        if (Next() == u'!')
        {
            constexpr std::u16string_view format = u"!s!";
            if (!rest_.starts_with(format))
                return false;
            rest_.remove_prefix(format.size());
        }
        const auto* const insert = reinterpret_cast<const char16_t*>(inserts_[number - 1]);
        text_ += insert == nullptr ? u"(null)" : insert;
        return true;
    }

    std::u16string_view rest_;
    const DWORD_PTR* inserts_;
    std::u16string text_;
};

std::optional<std::u16string> Format(DWORD flags, LPCVOID source, DWORD id, va_list* arguments)
{
    constexpr DWORD fromString = FORMAT_MESSAGE_FROM_STRING | FORMAT_MESSAGE_ARGUMENT_ARRAY;
    constexpr DWORD fromSystem = FORMAT_MESSAGE_FROM_SYSTEM;
    switch (flags & ~FORMAT_MESSAGE_ALLOCATE_BUFFER)
    {
    case fromString:
        return Formatter(static_cast<LPCWSTR>(source),
                         reinterpret_cast<const DWORD_PTR*>(arguments))
            .Run();
    case fromSystem:
    case fromSystem | FORMAT_MESSAGE_IGNORE_INSERTS:
        return tarnwell::SystemText(id);
    default:
        return std::nullopt;
    }
}

// A copy of `text` with room for at least `units`; null if memory is short.
LPWSTR Allocate(const std::u16string& text, std::size_t units)
{
    const std::size_t room = std::max(text.size() + 1, units) * sizeof(WCHAR);
    void* const memory = std::malloc(room);
    if (memory != nullptr)
        std::memcpy(memory, text.c_str(), (text.size() + 1) * sizeof(WCHAR));
    return static_cast<LPWSTR>(memory);
}

DWORD Fail(DWORD error)
{
    SetLastError(error);
    return 0;
}

} // namespace

extern "C" DWORD FormatMessageW(DWORD flags, LPCVOID source, DWORD id, DWORD, LPWSTR buffer,
                                DWORD size, va_list* arguments)
try
{
    if ((flags & FORMAT_MESSAGE_ALLOCATE_BUFFER) == 0)
        return Fail(ERROR_INVALID_PARAMETER);
    // Under this flag the parameter is the place for the pointer.
    LPWSTR& out = *reinterpret_cast<LPWSTR*>(buffer);
    out = nullptr;
    const std::optional<std::u16string> text = Format(flags, source, id, arguments);
    if (!text)
        return Fail(ERROR_INVALID_PARAMETER);
    if (text->empty())
        return Fail(ERROR_NO_WORK_DONE);
    out = Allocate(*text, size);
    return out == nullptr ? Fail(ERROR_NOT_ENOUGH_MEMORY) : static_cast<DWORD>(text->size());
}
catch (const std::bad_alloc&)
{
    return Fail(ERROR_NOT_ENOUGH_MEMORY);
}

extern "C" HLOCAL LocalFree(HLOCAL memory)
{
    std::free(memory);
    return nullptr;
}
