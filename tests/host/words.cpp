// The table of texts, and what is made of it and of the tables of commands and options.
#include "words.h"
#include "commands.h"
#include "completion.h"
#include "manual.h"
#include "options.h"
#include "usage.h"

#include <gtest/gtest.h>

#include <algorithm>

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

struct Inserts
{
    bool first;
    bool second;
    bool other;

    friend bool operator==(const Inserts&, const Inserts&) = default;
};

Inserts InsertsOf(std::string_view text)
{
    const bool first = text.find("{0}") != std::string_view::npos;
    const bool second = text.find("{1}") != std::string_view::npos;
    const auto braces = std::count(text.begin(), text.end(), '{');
    return {first, second, braces > first + second};
}

TEST(Words, EachHasBothLanguagesWithTheSameInserts)
{
    for (const Row& row : rows)
    {
        EXPECT_EQ(row.english.empty(), row.japanese.empty()) << row.english;
        EXPECT_EQ(InsertsOf(row.english), InsertsOf(row.japanese)) << row.english;
        EXPECT_FALSE(InsertsOf(row.english).other) << row.english;
    }
}

class Japanese : public testing::Test
{
protected:
    Japanese()
    {
        ChooseLanguage(Language::Japanese);
    }
    ~Japanese() override
    {
        ChooseLanguage(Language::English);
    }
};

TEST_F(Japanese, IsSpokenWhereChosen)
{
    EXPECT_EQ(Say(Word::NoSuchCommand, {u"{1}"}), u"コマンド \"{1}\" はありません。")
        << "what is filled in is left alone";
    EXPECT_NE(HelpText({}, 80).find(u"使い方: tarnwell-host"), std::u16string::npos);
    EXPECT_NE(ManualPage().find(u".SH \"コマンド\""), std::u16string::npos);
}

CommandLine HelpOn(const char16_t* command)
{
    CommandLine line;
    line.command = u"help";
    line.operands = {command};
    return line;
}

TEST(Help, OfEachCommandHasItsOptionsAndExamples)
{
    for (const Command& command : Commands())
    {
        const std::u16string text = HelpText(HelpOn(command.name), 80);
        EXPECT_FALSE(command.examples.empty());
        for (const Example& example : command.examples)
            EXPECT_NE(text.find(LineOf(example)), std::u16string::npos);
        for (const OwnOption& own : command.own)
        {
            EXPECT_NE(FindOption(own.name), nullptr);
            EXPECT_NE(text.find(own.name), std::u16string::npos);
        }
    }
    EXPECT_THROW(HelpText(HelpOn(u"no command"), 80), UsageError);
}

TEST(Help, KeepsToTheWidth)
{
    const std::u16string text = HelpText({}, 70);
    for (std::size_t start = 0; start < text.size();)
    {
        const std::size_t end = text.find(u'\n', start);
        EXPECT_LE(end - start, 70U);
        start = end + 1;
    }
}

TEST(Help, ManualAndCompletionNameAllThereIs)
{
    const std::u16string manual = ManualPage();
    const std::u16string completion = BashCompletion();
    for (const char16_t* place :
         {u"{options}", u"{values}", u"{valued}", u"{own}", u"{commands}", u"{schemes}"})
        EXPECT_EQ(completion.find(place), std::u16string::npos) << "all places are filled";
    for (const Command& command : Commands())
    {
        EXPECT_NE(manual.find(u"\\fB" + std::u16string(command.name)), std::u16string::npos);
        EXPECT_NE(completion.find(command.name), std::u16string::npos);
    }
    for (const Option& option : Options())
        EXPECT_NE(completion.find(option.name), std::u16string::npos);
    EXPECT_NE(manual.find(u"\\fB\\-\\-json\\fR"), std::u16string::npos);
}

} // namespace
} // namespace tarnwell::host
