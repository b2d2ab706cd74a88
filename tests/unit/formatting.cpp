// Messages with their inserts and with the system's text.
#include "frame/messages.h"
#include "frame/status.h"
#include "support/errorinfo.h"

#include <gmock/gmock.h>

namespace tarnwell::test
{

namespace
{

TEST(Formatting, PlainMessage)
{
    EXPECT_EQ(FormatMessageById(MessageId::NullPointer),
              u"Internal error (null pointer argument).");
}

TEST(Formatting, InsertsAreFilledIn)
{
    EXPECT_EQ(FormatMessageById(MessageId::CopyFailed, {u"a", u"b"}),
              u"Failed to copy \"a\" to \"b\".");
}

TEST(Formatting, InsertsAreNotLookedInto)
{
    EXPECT_EQ(FormatMessageById(MessageId::ItemFailed, {u"100%1 %n%2\n"}),
              u"Failed to open \"100%1 %n%2\n\".");
}

TEST(Formatting, AServerResponseSkipsItsSecondInsert)
{
    const std::u16string text =
        FormatMessageById(MessageId::ServerResponse, {u"first", u"second", u"third"});
    EXPECT_EQ(WithLineFeeds(text), u"first\n\nthird");
}

TEST(Formatting, LongInsertsAreWhole)
{
    const std::u16string insert(20000, u'x');
    EXPECT_EQ(FormatMessageById(MessageId::ItemFailed, {insert}),
              u"Failed to open \"" + insert + u"\".");
}

TEST(Formatting, AnUnknownIdHasNoText)
{
    EXPECT_EQ(FormatMessageById(static_cast<MessageId>(101)), u"");
    EXPECT_EQ(FormatMessageById(static_cast<MessageId>(5000)), u"");
}

TEST(Formatting, TheSystemTextFollowsBehindOneBlank)
{
    const std::u16string start = u"Failed to open \"x\". ";
    const std::u16string text = FormatMessageWithStatus(
        MessageId::ItemFailed, StatusFromError(ERROR_FILE_NOT_FOUND), {u"x"});
    EXPECT_TRUE(text.starts_with(start));
    EXPECT_GT(text.size(), start.size());
    EXPECT_EQ(text.find_first_of(u"\r\n"), std::u16string::npos);
}

TEST(Formatting, AnUnknownStatusLeavesTheBlank)
{
    EXPECT_EQ(
        FormatMessageWithStatus(MessageId::ItemFailed, static_cast<HRESULT>(0x8ABC1234), {u"x"}),
        u"Failed to open \"x\". ");
}

TEST(Formatting, StatusesOfTheModuleItselfHaveASystemText)
{
    for (const HRESULT status : {E_NOTIMPL, E_FAIL, E_INVALIDARG, E_OUTOFMEMORY})
    {
        const std::u16string text = FormatMessageWithStatus(MessageId::SupportObjectFailed, status);
        EXPECT_NE(text.back(), u' ') << status;
    }
}

} // namespace

} // namespace tarnwell::test
