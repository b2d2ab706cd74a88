// Values on command lines, as they stand there and as a client gets them.
#include "runner/commandline.h"

#include "support/clientcall.h"

#include <gmock/gmock.h>

namespace tarnwell::test
{
namespace
{

TEST(QuotedValue, StandsAsItIsWithoutQuotes)
{
    for (const std::u16string value :
         {u"", u"a", u"a b", u"C:\\dir\\file name.txt", u"\\\\server\\share\\a", u"#--config=x",
          u"line\nfeed\tand tab", u"'a' $b %c% ^ & | < > * ?", u"\u65e5\xD83D\xDE00\xDC80"})
        EXPECT_EQ(Quoted(value), u"\"" + value + u"\"");
}

TEST(QuotedValue, EscapesQuotesAndTheBackslashesBeforeThem)
{
    EXPECT_EQ(Quoted(u"\""), u"\"\\\"\"");
    EXPECT_EQ(Quoted(u"a\"b"), u"\"a\\\"b\"");
    EXPECT_EQ(Quoted(u"\"\""), u"\"\\\"\\\"\"");
    EXPECT_EQ(Quoted(u"a\\\"b"), u"\"a\\\\\\\"b\"");
    EXPECT_EQ(Quoted(u"a\\\\\"b"), u"\"a\\\\\\\\\\\"b\"");
    EXPECT_EQ(Quoted(u"a\\b\"c"), u"\"a\\b\\\"c\"") << "only those before a quote";
    EXPECT_EQ(Quoted(u"x\" --config \"alias.log=!touch F"),
              u"\"x\\\" --config \\\"alias.log=!touch F\"");
}

TEST(QuotedValue, DoublesTheBackslashesAtTheEnd)
{
    EXPECT_EQ(Quoted(u"secret\\"), u"\"secret\\\\\"");
    EXPECT_EQ(Quoted(u"C:\\"), u"\"C:\\\\\"");
    EXPECT_EQ(Quoted(u"a\\\\"), u"\"a\\\\\\\\\"");
    EXPECT_EQ(Quoted(u"\\a\\"), u"\"\\a\\\\\"");
}

// Every short text of the units that mean something, in runs of a few hundred arguments.
TEST(QuotedValue, IsOneArgumentOfAClient)
{
    constexpr std::u16string_view units = u"a\\\" ";
    constexpr std::size_t longest = 4;
    std::vector<std::u16string> values{u""};
    for (std::size_t start = 0, length = 0; length < longest; ++length)
    {
        const std::size_t end = values.size();
        for (; start < end; ++start)
        {
            for (const char16_t unit : units)
                values.push_back(values[start] + unit);
        }
    }
    ASSERT_EQ(values.size(), 341U);
    std::u16string line = u"arguments";
    std::u16string expected;
    for (const std::u16string& value : values)
    {
        line += u" " + Quoted(value);
        expected.append(value) += u'\0';
    }
    const auto output = NewOutputFile();
    EXPECT_EQ(RunClient(childClient, CallOfChild(line, *output)).exitCode, 0);
    EXPECT_EQ(Printed(*output), expected);
}

} // namespace
} // namespace tarnwell::test
