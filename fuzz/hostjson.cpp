// Any text in the sample host's JSON, and on a terminal.
#include "json.h"
#include "output.h"
#include "support/target.h"
#include "text16.h"

#include <string>

namespace tarnwell::fuzz
{

namespace
{

unsigned HexDigit(char16_t digit)
{
    Expect((digit >= u'0' && digit <= u'9') || (digit >= u'a' && digit <= u'f'), "digits");
    return digit <= u'9' ? digit - u'0' : digit - u'a' + 10U;
}

bool IsControl(char16_t unit)
{
    return unit < 0x20 || (unit >= 0x7F && unit < 0xA0);
}

// What a reader makes of it.
std::u16string Read(std::u16string_view json)
{
    Expect(json.size() >= 2 && json.front() == u'"' && json.back() == u'"', "quotes around it");
    json = json.substr(1, json.size() - 2);
    std::u16string text;
    while (!json.empty())
    {
        std::size_t taken = 1;
        Expect(json[0] != u'"' && !IsControl(json[0]), "nothing stands plainly that must not");
        if (json[0] != u'\\')
        {
            text += json[0];
        }
        else if (json.size() >= 6 && json[1] == u'u')
        {
            unsigned unit = 0;
            for (std::size_t i = 2; i < 6; ++i)
                unit = unit * 16 + HexDigit(json[i]);
            text += static_cast<char16_t>(unit);
            taken = 6;
        }
        else
        {
            Expect(json.size() >= 2 && (json[1] == u'"' || json[1] == u'\\'), "known escapes");
            text += json[1];
            taken = 2;
        }
        json.remove_prefix(taken);
    }
    return text;
}

// All units there are, not only those of names.
std::u16string UnitsIn(std::string_view bytes)
{
    std::u16string units;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2)
        units += static_cast<char16_t>(static_cast<unsigned char>(bytes[i]) |
                                       static_cast<unsigned char>(bytes[i + 1]) << 8);
    return units;
}

} // namespace

void Try(std::string_view bytes)
{
    for (const std::u16string& text : {UnitsIn(bytes), host::FromUtf8(bytes)})
    {
        const std::u16string json = host::JsonText(text);
        Expect(Read(json) == text, "a text comes back");
        Expect(host::FromUtf8(host::ToUtf8(json)) == json, "it is valid UTF-8");
        const std::u16string shown = host::Masked(text, host::LineFeeds::Masked);
        Expect(shown.size() == text.size(), "a mask for each");
        for (const char16_t unit : shown)
            Expect(!IsControl(unit), "no control character reaches a terminal");
    }
}

} // namespace tarnwell::fuzz
