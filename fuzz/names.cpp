// Any bytes as a file's name, and as the text of one: names come back as they were, whatever they
// are.
#include "support/target.h"

#include <tarnwell/text.h>

#include <cstdint>

namespace tarnwell::fuzz
{

namespace
{

bool IsPair(std::u16string_view text)
{
    return text.size() > 1 && (text[0] & 0xFC00) == 0xD800 && (text[1] & 0xFC00) == 0xDC00;
}

// Whether each unit that is no character of its own stands for a byte beyond ASCII.
bool IsName(std::u16string_view text)
{
    for (std::size_t i = 0; i < text.size(); ++i)
    {
        if ((text[i] & 0xF800) != 0xD800)
            continue;
        if (IsPair(text.substr(i)))
            ++i;
        else if (text[i] < 0xDC80 || text[i] > 0xDCFF)
            return false;
    }
    return true;
}

void CheckBytes(std::string_view bytes)
{
    const std::u16string text = DecodeName(bytes);
    Expect(text.size() <= bytes.size(), "a name has no more units than bytes");
    Expect(IsName(text), "a name's text has no unit that stands for nothing");
    Expect(EncodeName(text) == bytes, "a name turns back into its bytes");
    std::u16string appended = u"/";
    AppendDecodedName(appended, bytes);
    Expect(appended == u"/" + text, "a name is the same behind another");
    const bool isSeparated = bytes.find('/') != std::string_view::npos;
    Expect((text.find(u'/') != std::u16string::npos) == isSeparated &&
               (text.find(u'\0') == std::u16string::npos) ==
                   (bytes.find('\0') == std::string_view::npos),
           "separators and ends come from nothing else");
}

void CheckText(std::u16string_view text)
{
    const std::optional<std::string> bytes = EncodeName(text);
    Expect(bytes.has_value() == IsName(text), "a text is a name if all of its units are of one");
    if (!bytes)
        return;
    // Units that stand for bytes may turn into a character together, but never into other bytes.
    Expect(EncodeName(DecodeName(*bytes)) == bytes, "a text names one file");
}

} // namespace

void Try(std::string_view bytes)
{
    CheckBytes(bytes);
    std::u16string text;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2)
        text += static_cast<char16_t>(static_cast<std::uint8_t>(bytes[i]) |
                                      static_cast<std::uint8_t>(bytes[i + 1]) << 8);
    CheckText(text);
}

} // namespace tarnwell::fuzz
