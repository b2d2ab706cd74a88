// Texts: with inserts filled in, and the system's.
#include "platform/texts.h"

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

// Nothing if the call failed.
std::optional<std::u16string> Fill(const std::u16string& message,
                                   const std::vector<std::u16string>& inserts = {})
{
    std::u16string text = u"before";
    SetLastError(ERROR_SUCCESS);
    if (FillInserts(message, inserts, text))
        return WithLineFeeds(text);
    EXPECT_NE(GetLastError(), DWORD{ERROR_SUCCESS});
    EXPECT_EQ(text, u"");
    return std::nullopt;
}

std::optional<std::u16string> SystemWords(DWORD code)
{
    std::u16string text = u"before";
    const BOOL isFound = FindSystemText(code, text);
    EXPECT_EQ(isFound != 0, !text.empty());
    return isFound ? std::optional(text) : std::nullopt;
}

TEST(Inserts, PlainTextStays)
{
    EXPECT_THAT(Fill(u"Nothing to fill in."), Optional(Eq(u"Nothing to fill in.")));
}

TEST(Inserts, GoWhereTheyAreNamed)
{
    EXPECT_THAT(Fill(u"\"%2\" before \"%1\", and %2 again", {u"one", u"two"}),
                Optional(Eq(u"\"two\" before \"one\", and two again")));
}

TEST(Inserts, MayBeSkipped)
{
    EXPECT_THAT(Fill(u"%1\n\n%3", {u"a", u"b", u"c"}), Optional(Eq(u"a\n\nc")));
}

TEST(Inserts, AreNotLookedInto)
{
    EXPECT_THAT(Fill(u"<%1>", {u"100%1 %n%0 !s! \n\r\t"}),
                Optional(Eq(u"<100%1 %n%0 !s! \n\r\t>")));
}

TEST(Inserts, EmptyOnesLeaveNothing)
{
    EXPECT_THAT(Fill(u"%1 %2", {u"before", u""}), Optional(Eq(u"before ")));
}

TEST(Inserts, NineAreTheMost)
{
    EXPECT_THAT(Fill(u"%9%1", {u"1", u"2", u"3", u"4", u"5", u"6", u"7", u"8", u"9"}),
                Optional(Eq(u"91")));
}

TEST(Inserts, ALonePercentAtTheEndFails)
{
    EXPECT_EQ(Fill(u"half%"), std::nullopt);
}

TEST(Inserts, AnEmptyResultIsNoText)
{
    EXPECT_EQ(Fill(u""), std::nullopt);
    EXPECT_EQ(Fill(u"%1", {u""}), std::nullopt);
}

TEST(Inserts, MayBeLong)
{
    const std::u16string insert(20000, u'x');
    EXPECT_THAT(Fill(u"%1%1", {insert}), Optional(Eq(insert + insert)));
}

TEST(SystemText, IsOneLine)
{
    for (const DWORD code :
         {ERROR_FILE_NOT_FOUND, ERROR_PATH_NOT_FOUND, ERROR_ACCESS_DENIED, ERROR_DISK_FULL})
    {
        const std::optional<std::u16string> text = SystemWords(code);
        ASSERT_TRUE(text) << code;
        EXPECT_EQ(text->find_first_of(u"\r\n"), std::u16string::npos) << code;
    }
}

TEST(SystemText, AnErrorAndItsStatusHaveTheSame)
{
    constexpr DWORD errorStatus = 0x80070000;
    for (const DWORD code : {ERROR_FILE_NOT_FOUND, ERROR_ACCESS_DENIED, ERROR_INVALID_PARAMETER})
        EXPECT_EQ(SystemWords(code), SystemWords(errorStatus | code)) << code;
}

TEST(SystemText, DifferentErrorsHaveDifferentOnes)
{
    EXPECT_NE(SystemWords(ERROR_FILE_NOT_FOUND), SystemWords(ERROR_ACCESS_DENIED));
}

TEST(SystemText, TheGeneralStatusesHaveOne)
{
    for (const HRESULT status : {E_NOTIMPL, E_FAIL, E_INVALIDARG})
        EXPECT_TRUE(SystemWords(static_cast<DWORD>(status))) << status;
}

TEST(SystemText, UnknownCodesHaveNone)
{
    for (const DWORD code : {0x0000FFF7U, 0x8007FFF7U, 0xC0FFEE00U})
        EXPECT_EQ(SystemWords(code), std::nullopt) << code;
}

} // namespace

} // namespace tarnwell::test
