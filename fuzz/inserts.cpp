// Any text as a message, and any others as what is filled into it: the lines of the input.
#include "platform/texts.h"
#include "support/target.h"

#include <tarnwell/text.h>

#include <algorithm>
#include <optional>
#include <vector>

namespace tarnwell::fuzz
{

namespace
{

constexpr std::size_t mostInserts = 9;

// From the last mark to the first, so that what was filled in isn't seen again.
std::optional<std::u16string> FilledPlainly(std::u16string text,
                                            const std::vector<std::u16string>& inserts)
{
    for (std::size_t i = text.size(); i > 0; --i)
    {
        if (text[i - 1] != u'%')
            continue;
        const std::size_t number = i < text.size() ? std::size_t{text[i]} - u'1' : mostInserts;
        if (number >= inserts.size())
            return std::nullopt;
        text.replace(i - 1, 2, inserts[number]);
    }
    return text;
}

// A percent sign is the first half of one mark, never the second.
bool IsAmbiguous(const std::u16string& text)
{
    return text.find(u"%%") != std::u16string::npos;
}

void CheckModuleText(unsigned id)
{
    for (const LANGID language : {LANGID{2057}, LANGID{1041}, static_cast<LANGID>(id)})
    {
        std::u16string text;
        if (!LoadModuleText(id, language, text))
            continue;
        const std::vector<std::u16string> inserts(mostInserts, u"100%1");
        std::u16string filled;
        Expect(FillInserts(text, inserts, filled) && filled.size() >= text.size(),
               "every text of the module can be filled");
    }
}

} // namespace

void Try(std::string_view bytes)
{
    const std::u16string input = DecodeName(bytes);
    std::vector<std::u16string> lines(1);
    for (const char16_t unit : input)
    {
        if (unit == u'\n' && lines.size() <= mostInserts)
            lines.emplace_back();
        else
            lines.back() += unit;
    }
    const std::u16string text = std::move(lines.front());
    lines.erase(lines.begin());

    std::u16string filled = u"before";
    const bool isFilled = FillInserts(text, lines, filled) != 0;
    Expect(isFilled == !filled.empty(), "what can't be filled is empty");
    if (IsAmbiguous(text))
        Expect(!isFilled, "a percent sign has no other meaning");
    else
        Expect(FilledPlainly(text, lines).value_or(u"") == filled, "each insert is in its places");
    if (bytes.size() > 1)
        CheckModuleText(static_cast<unsigned char>(bytes[0]) |
                        static_cast<unsigned>(static_cast<unsigned char>(bytes[1])) << 8);
}

} // namespace tarnwell::fuzz
