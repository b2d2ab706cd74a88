// The program's texts, in the language of the module's.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace tarnwell::host
{

enum class Word
{
#define WORD(name, english, japanese) name,
#include "helpwords.inc"
#include "words.inc"
#undef WORD
};

enum class Language
{
    English,
    Japanese,
};

// English before the first call.
void ChooseLanguage(Language language);

// UTF-8, and needs no memory.
std::string_view Utf8Of(Word word);

// With what is filled in for {0} and {1}.
std::u16string Say(Word word, std::initializer_list<std::u16string_view> parts = {});

// A text that is told when the language is known.
struct Saying
{
    Word word;
    std::vector<std::u16string> parts;
};
std::u16string Say(const Saying& saying);

} // namespace tarnwell::host
