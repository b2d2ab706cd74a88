// FormatMessageW, in the two ways in which it is used: filling the inserts of a text, and giving
// the system's text for a code.
#include "platform/win32.h"

#include "platform/wide.h"

#include <gmock/gmock.h>

#include <optional>
#include <string>
#include <vector>

namespace tarnwell::test
{

namespace
{

using testing::Eq;
using testing::Optional;

// The two systems end lines differently.
std::u16string WithLineFeeds(std::u16string_view text)
{
    std::u16string result;
    for (std::size_t i = 0; i < text.size(); ++i)
    {
        if (text[i] != u'\r' || i + 1 == text.size() || text[i + 1] != u'\n')
            result += text[i];
    }
    return result;
}

std::optional<std::u16string> Take(WCHAR* text, DWORD length)
{
    if (text == nullptr)
        return std::nullopt;
    EXPECT_EQ(Units(text).size(), length);
    std::u16string result(Units(text));
    LocalFree(text);
    return result;
}

// Nothing if the call failed.
std::optional<std::u16string> Fill(const std::u16string& message,
                                   const std::vector<const char16_t*>& inserts = {},
                                   DWORD minimumUnits = 0)
{
    std::vector<DWORD_PTR> arguments;
    for (const char16_t* const insert : inserts)
        arguments.push_back(reinterpret_cast<DWORD_PTR>(insert));
    WCHAR* text = nullptr;
    SetLastError(ERROR_SUCCESS);
    const DWORD length = FormatMessageW(
        FORMAT_MESSAGE_FROM_STRING | FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_ARGUMENT_ARRAY,
        Wide(message), 0, 0, reinterpret_cast<WCHAR*>(&text), minimumUnits,
        reinterpret_cast<va_list*>(arguments.data()));
    if (length == 0)
    {
        EXPECT_NE(GetLastError(), DWORD{ERROR_SUCCESS});
        return std::nullopt;
    }
    const auto result = Take(text, length);
    return result ? std::optional(WithLineFeeds(*result)) : std::nullopt;
}

std::optional<std::u16string> SystemWords(DWORD code)
{
    WCHAR* text = nullptr;
    SetLastError(ERROR_SUCCESS);
    const DWORD length = FormatMessageW(
        FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_IGNORE_INSERTS,
        nullptr, code, 0, reinterpret_cast<WCHAR*>(&text), 0, nullptr);
    EXPECT_EQ(length == 0, GetLastError() != DWORD{ERROR_SUCCESS});
    return length == 0 ? std::nullopt : Take(text, length);
}

TEST(MessageFormat, PlainTextStays)
{
    EXPECT_THAT(Fill(u"Nothing to fill in."), Optional(Eq(u"Nothing to fill in.")));
}

TEST(MessageFormat, InsertsGoWhereTheyAreNamed)
{
    EXPECT_THAT(Fill(u"\"%2\" before \"%1\", and %2 again", {u"one", u"two"}),
                Optional(Eq(u"\"two\" before \"one\", and two again")));
}

TEST(MessageFormat, AnInsertMayBeSkipped)
{
    EXPECT_THAT(Fill(u"%1\n\n%3", {u"a", u"b", u"c"}), Optional(Eq(u"a\n\nc")));
}

TEST(MessageFormat, InsertsAreNotLookedInto)
{
    EXPECT_THAT(Fill(u"<%1>", {u"100%1 %n%0 !s! \n\r\t"}),
                Optional(Eq(u"<100%1 %n%0 !s! \n\r\t>")));
}

TEST(MessageFormat, EmptyInsertsLeaveNothing)
{
    EXPECT_THAT(Fill(u"%1 %2", {u"before", u""}), Optional(Eq(u"before ")));
}

TEST(MessageFormat, NullInsertsAreNamedSo)
{
    EXPECT_THAT(Fill(u"<%1>", {nullptr}), Optional(Eq(u"<(null)>")));
}

TEST(MessageFormat, TwoDigitsNameOneInsert)
{
    std::vector<const char16_t*> inserts(99, u"-");
    inserts[0] = u"first";
    inserts[9] = u"tenth";
    inserts[98] = u"last";
    EXPECT_THAT(Fill(u"%10 %99 %1", inserts), Optional(Eq(u"tenth last first")));
    EXPECT_THAT(Fill(u"%100", inserts), Optional(Eq(u"tenth0")));
}

TEST(MessageFormat, TextFormatIsAccepted)
{
    EXPECT_THAT(Fill(u"<%1!s!>!", {u"text"}), Optional(Eq(u"<text>!")));
}

TEST(MessageFormat, AnUnclosedFormatFails)
{
    EXPECT_EQ(Fill(u"%1!s", {u"text"}), std::nullopt);
}

TEST(MessageFormat, EscapesStandForThemselves)
{
    EXPECT_THAT(Fill(u"100%% %. %! a% b%tc"), Optional(Eq(u"100% . ! a b\tc")));
}

TEST(MessageFormat, LineEndsOfAllKindsAreLineEnds)
{
    EXPECT_THAT(Fill(u"a\nb\r\nc%nd"), Optional(Eq(u"a\nb\nc\nd")));
}

TEST(MessageFormat, ABareReturnIsOne)
{
    EXPECT_THAT(Fill(u"a%rb"), Optional(Eq(u"a\rb")));
}

TEST(MessageFormat, PercentZeroEndsTheText)
{
    EXPECT_THAT(Fill(u"seen%0 unseen"), Optional(Eq(u"seen")));
}

TEST(MessageFormat, ALonePercentAtTheEndFails)
{
    EXPECT_EQ(Fill(u"half%"), std::nullopt);
}

TEST(MessageFormat, AnEmptyResultIsNoText)
{
    EXPECT_EQ(Fill(u""), std::nullopt);
    EXPECT_EQ(Fill(u"%1", {u""}), std::nullopt);
}

TEST(MessageFormat, TextsBeyondTheMinimumFit)
{
    const std::u16string insert(20000, u'x');
    EXPECT_THAT(Fill(u"%1%1", {insert.c_str()}, 2048), Optional(Eq(insert + insert)));
}

TEST(MessageFormat, SystemTextsEndWithALineEnd)
{
    for (const DWORD code :
         {ERROR_FILE_NOT_FOUND, ERROR_PATH_NOT_FOUND, ERROR_ACCESS_DENIED, ERROR_DISK_FULL})
    {
        const std::optional<std::u16string> text = SystemWords(code);
        ASSERT_TRUE(text) << code;
        EXPECT_TRUE(text->ends_with(u"\r\n")) << code;
        EXPECT_GT(text->size(), 2U) << code;
        EXPECT_EQ(text->find(u'\r'), text->size() - 2) << code;
    }
}

TEST(MessageFormat, AnErrorAndItsStatusHaveTheSameText)
{
    constexpr DWORD errorStatus = 0x80070000;
    for (const DWORD code : {ERROR_FILE_NOT_FOUND, ERROR_ACCESS_DENIED, ERROR_INVALID_PARAMETER})
        EXPECT_EQ(SystemWords(code), SystemWords(errorStatus | code)) << code;
}

TEST(MessageFormat, DifferentErrorsHaveDifferentTexts)
{
    EXPECT_NE(SystemWords(ERROR_FILE_NOT_FOUND), SystemWords(ERROR_ACCESS_DENIED));
}

TEST(MessageFormat, TheGeneralStatusesHaveTexts)
{
    for (const HRESULT status : {E_NOTIMPL, E_FAIL, E_INVALIDARG})
        EXPECT_TRUE(SystemWords(static_cast<DWORD>(status))) << status;
}

TEST(MessageFormat, UnknownCodesHaveNoText)
{
    for (const DWORD code : {0x0000FFF7U, 0x8007FFF7U, 0xC0FFEE00U})
        EXPECT_EQ(SystemWords(code), std::nullopt) << code;
}

} // namespace

} // namespace tarnwell::test
