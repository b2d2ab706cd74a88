#include "words.h"

#include "text16.h"

#include <span>

namespace tarnwell::host
{

namespace
{

struct Row
{
    std::string_view english;
    std::string_view japanese;
};

const Row rows[] = {
#define WORD(name, english, japanese) {english, japanese},
#include "helpwords.inc"
#include "words.inc"
#undef WORD
};

Language chosen = Language::English;

std::u16string Filled(Word word, std::span<const std::u16string_view> parts)
{
    const std::u16string text = FromUtf8(Utf8Of(word));
    std::u16string filled;
    for (std::size_t i = 0; i < text.size(); ++i)
    {
        if (text[i] != u'{')
        {
            filled += text[i];
            continue;
        }
        // One digit and the other brace.
        filled += parts[static_cast<std::size_t>(text[i + 1] - u'0')];
        i += 2;
    }
    return filled;
}

} // namespace

void ChooseLanguage(Language language)
{
    chosen = language;
}

std::string_view Utf8Of(Word word)
{
    const Row& row = rows[static_cast<std::size_t>(word)];
    return chosen == Language::Japanese ? row.japanese : row.english;
}

std::u16string Say(Word word, std::initializer_list<std::u16string_view> parts)
{
    return Filled(word, {parts.begin(), parts.size()});
}

std::u16string Say(const Saying& saying)
{
    const std::vector<std::u16string_view> parts(saying.parts.begin(), saying.parts.end());
    return Filled(saying.word, parts);
}

} // namespace tarnwell::host
