#include "json.h"

#include "text16.h"

#include <cstdio>

namespace tarnwell::host
{

namespace
{

std::u16string Escaped(char16_t unit)
{
    char text[7];
    std::snprintf(text, sizeof text, "\\u%04x", static_cast<unsigned>(unit));
    return FromUtf8(text);
}

} // namespace

std::u16string JsonText(std::u16string_view text)
{
    std::u16string result = u"\"";
    for (std::size_t i = 0; i < text.size(); ++i)
    {
        const char16_t unit = text[i];
        if (unit == u'"' || unit == u'\\')
        {
            result += u'\\';
            result += unit;
        }
        else if (IsHighSurrogate(unit) && i + 1 < text.size() && IsLowSurrogate(text[i + 1]))
        {
            result += unit;
            result += text[++i];
        }
        else if (unit < 0x20 || (unit >= 0x7F && unit < 0xA0) || IsHighSurrogate(unit) ||
                 IsLowSurrogate(unit))
        {
            result += Escaped(unit);
        }
        else
        {
            result += unit;
        }
    }
    return result + u"\"";
}

JsonObject& JsonObject::Text(std::u16string_view name, std::u16string_view value)
{
    return Member(name, JsonText(value));
}

JsonObject& JsonObject::Number(std::u16string_view name, std::uint64_t value)
{
    return Member(name, Decimal(value));
}

JsonObject& JsonObject::Boolean(std::u16string_view name, bool value)
{
    return Member(name, value ? u"true" : u"false");
}

JsonObject& JsonObject::Null(std::u16string_view name)
{
    return Member(name, u"null");
}

JsonObject& JsonObject::Object(std::u16string_view name, const JsonObject& value)
{
    return Member(name, value.Str());
}

bool JsonObject::Empty() const
{
    return members_.empty();
}

std::u16string JsonObject::Str() const
{
    return u"{" + members_ + u"}";
}

std::u16string JsonObject::Line() const
{
    return Str() + u"\n";
}

JsonObject& JsonObject::Member(std::u16string_view name, std::u16string_view value)
{
    if (!members_.empty())
        members_ += u',';
    members_ += JsonText(name);
    members_ += u':';
    members_ += value;
    return *this;
}

} // namespace tarnwell::host
