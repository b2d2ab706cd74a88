#include "json.h"

#include "text16.h"

#include <gtest/gtest.h>

namespace tarnwell::host
{

namespace
{

TEST(JsonText, EscapesWhatHasTo)
{
    EXPECT_EQ(JsonText(u"a\"b\\c/d"), u"\"a\\\"b\\\\c/d\"");
    EXPECT_EQ(JsonText(std::u16string_view(u"\0\n\x1F\x7F", 4)),
              u"\"\\u0000\\u000a\\u001f\\u007f\"");
    EXPECT_EQ(JsonText(u"é日\U0001F600"), u"\"é日\U0001F600\"");
}

TEST(JsonText, EscapesLoneSurrogates)
{
    const char16_t text[] = {0xDCFF, 0xD83D, u'x', 0xDC00, 0xD83D};
    EXPECT_EQ(JsonText({text, std::size(text)}), u"\"\\udcff\\ud83dx\\udc00\\ud83d\"");
}

// A terminal may obey them.
TEST(JsonText, EscapesAllControlCharacters)
{
    EXPECT_EQ(JsonText(u"\u0080\u009b\u009f\u00a0"), u"\"\\u0080\\u009b\\u009f\u00a0\"");
}

TEST(JsonObject, KeepsTheOrder)
{
    JsonObject object;
    object.Text(u"b", u"x").Number(u"a", UINT64_MAX).Boolean(u"c", true).Null(u"d");
    object.Object(u"e", JsonObject().Boolean(u"f", false));
    EXPECT_EQ(
        object.Str(),
        u"{\"b\":\"x\",\"a\":18446744073709551615,\"c\":true,\"d\":null,\"e\":{\"f\":false}}");
}

TEST(ToUtf8, NamesGoThroughAndTheRestIsReplaced)
{
    EXPECT_EQ(ToUtf8(FromUtf8("caf\xE9 \xF0\x9F\x98\x80")), "caf\xE9 \xF0\x9F\x98\x80");
    const char16_t text[] = {u'a', 0xD83D, u'b', 0xDC00};
    EXPECT_EQ(ToUtf8({text, std::size(text)}), "a\xEF\xBF\xBD"
                                               "b\xEF\xBF\xBD");
}

} // namespace

} // namespace tarnwell::host
