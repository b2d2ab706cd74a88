// Command lines taken apart, case by case.
#include "platform/posix/processes/commandline.h"

#include <gmock/gmock.h>

namespace tarnwell::posix
{
namespace
{

using Parts = std::vector<std::u16string>;

struct Row
{
    std::u16string_view line;
    Parts parts;
};

void ExpectSplit(const std::vector<Row>& rows)
{
    for (const auto& [line, parts] : rows)
        EXPECT_EQ(SplitCommandLine(line), parts) << testing::PrintToString(line);
}

TEST(CommandLine, ProgramHasRulesOfItsOwn)
{
    ExpectSplit({
        {u"", {u""}},
        {u"git", {u"git"}},
        {u"\"git\"", {u"git"}},
        {u"\"git\" log", {u"git", u"log"}},
        {u"\"my git\" log", {u"my git", u"log"}},
        {u"my\" \"git log", {u"my git", u"log"}},
        {u"\"a\\\" b", {u"a\\", u"b"}},
        {u"a\\\\\"b c\" d", {u"a\\\\b c", u"d"}},
        {u"\"open to the end", {u"open to the end"}},
        {u"\"a\"\"b\" c", {u"ab", u"c"}},
        {u"\"\" a", {u"", u"a"}},
        // Blanks in front end an empty name.
        {u" git log", {u"", u"git", u"log"}},
        {u"git\tlog", {u"git", u"log"}},
        {u"git\nlog a", {u"git\nlog", u"a"}},
    });
}

TEST(CommandLine, BlanksAndTabsSeparate)
{
    ExpectSplit({
        {u"p a b", {u"p", u"a", u"b"}},
        {u"p  a \t b\t", {u"p", u"a", u"b"}},
        {u"p ", {u"p"}},
        {u"p \t ", {u"p"}},
        {u"p a\nb", {u"p", u"a\nb"}},
        {u"p a\r\nb\vc\fd\u00a0e\u3000f", {u"p", u"a\r\nb\vc\fd\u00a0e\u3000f"}},
    });
}

TEST(CommandLine, QuotesHoldTogether)
{
    ExpectSplit({
        {u"p \"a b\" c", {u"p", u"a b", u"c"}},
        {u"p a\" \"b", {u"p", u"a b"}},
        {u"p \"a\"b\"c\"", {u"p", u"abc"}},
        {u"p \"a\nb\" \"c\td\"", {u"p", u"a\nb", u"c\td"}},
        {u"p --format=\"%H %s\"", {u"p", u"--format=%H %s"}},
        {u"p \"\"", {u"p", u""}},
        {u"p \"\" a \"\"", {u"p", u"", u"a", u""}},
        {u"p a\"\"", {u"p", u"a"}},
        {u"p a\"\"b", {u"p", u"ab"}},
        {u"p \"", {u"p", u""}},
        {u"p \"a b", {u"p", u"a b"}},
        {u"p 'a b'", {u"p", u"'a", u"b'"}},
    });
}

TEST(CommandLine, DoubledQuoteWithinQuotesIsOne)
{
    ExpectSplit({
        {u"p \"a\"\"b\"", {u"p", u"a\"b"}},
        {u"p \"a\"\"b c\" d", {u"p", u"a\"b c", u"d"}},
        {u"p \"\"\"\"", {u"p", u"\""}},
        {u"p \"\"\"a b\"\"\"", {u"p", u"\"a b\""}},
        {u"p \"\"a b\"\"", {u"p", u"a", u"b"}},
        {u"p \"a\\\\\"\"b\"", {u"p", u"a\\\"b"}},
    });
}

TEST(CommandLine, BackslashesCountOnlyBeforeAQuote)
{
    ExpectSplit({
        {u"p a\\b \\\\c d\\", {u"p", u"a\\b", u"\\\\c", u"d\\"}},
        {u"p \\ a", {u"p", u"\\", u"a"}},
        {u"p a\\ b", {u"p", u"a\\", u"b"}},
        {u"p \"a\\ b\"", {u"p", u"a\\ b"}},
        {u"p \\\"", {u"p", u"\""}},
        {u"p a\\\"b c", {u"p", u"a\"b", u"c"}},
        {u"p \\\\\"a b\"", {u"p", u"\\a b"}},
        {u"p \\\\\\\"a b", {u"p", u"\\\"a", u"b"}},
        {u"p \\\\\\\\\"a b\" c", {u"p", u"\\\\a b", u"c"}},
        {u"p \"a\\\"b\" c", {u"p", u"a\"b", u"c"}},
        {u"p \"a\\\\\" b", {u"p", u"a\\", u"b"}},
        {u"p \"a\\\\\\\" b", {u"p", u"a\\\" b"}},
        {u"p \"a\\", {u"p", u"a\\"}},
    });
}

// What the rules make of a text in quotes is the text, whatever stands in it.
TEST(CommandLine, EveryQuotedTextComesBack)
{
    constexpr std::u16string_view units = u"a\\\" \t\n";
    constexpr int longest = 5;
    Parts texts{u""};
    for (std::size_t start = 0, length = 0; length < longest; ++length)
    {
        const std::size_t end = texts.size();
        for (; start < end; ++start)
        {
            for (const char16_t unit : units)
                texts.push_back(texts[start] + unit);
        }
    }
    for (const std::u16string& text : texts)
    {
        std::u16string quoted = u"\"";
        for (std::size_t i = 0; i < text.size(); ++i)
        {
            const std::size_t next = std::min(text.find_first_not_of(u'\\', i), text.size());
            const bool beforeQuote = next == text.size() || text[next] == u'"';
            const bool isEscaped = text[i] == u'"' || (text[i] == u'\\' && beforeQuote);
            quoted.append(isEscaped ? 1 : 0, u'\\') += text[i];
        }
        quoted += u'"';
        ASSERT_EQ(SplitCommandLine(u"p " + quoted + u" z"), (Parts{u"p", text, u"z"}))
            << testing::PrintToString(text);
    }
    EXPECT_EQ(texts.size(), 9331U);
}

} // namespace
} // namespace tarnwell::posix
