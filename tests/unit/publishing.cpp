// Failures on their way into the thread's error information.
#include "frame/publish.h"
#include "support/errorinfo.h"

#include <tarnwell/classes.h>
#include <tarnwell/items.h>

#include <gmock/gmock.h>

#include <thread>

namespace tarnwell::test
{

namespace
{

constexpr const GUID& classId = CLSID_Win32File;
constexpr const GUID& interfaceId = IID_IFile;

class Publishing : public testing::Test
{
protected:
    Publishing()
    {
        ClearError();
    }
};

TEST_F(Publishing, ErrorHoldsTextAndInterface)
{
    EXPECT_EQ(PublishError(classId, u"text", interfaceId, E_FAIL), E_FAIL);
    const auto error = TakeError();
    ASSERT_TRUE(error);
    EXPECT_EQ(error->text, u"text");
    EXPECT_TRUE(error->interfaceId == interfaceId);
    EXPECT_EQ(error->source, u"") << "no class keys are written, so that there is no source";
    EXPECT_FALSE(TakeError()) << "it is taken out once";
}

TEST_F(Publishing, AZeroStatusIsReplaced)
{
    EXPECT_EQ(PublishError(classId, u"text", interfaceId, S_OK), DISP_E_EXCEPTION);
    EXPECT_EQ(TakeErrorText(), u"text");
}

TEST_F(Publishing, AnEmptyTextIsPublishedByPublishError)
{
    EXPECT_EQ(PublishError(classId, u"", interfaceId, E_FAIL), E_FAIL);
    EXPECT_EQ(TakeErrorText(), u"");
}

TEST_F(Publishing, ATextEndsAtItsFirstNull)
{
    const std::u16string text(u"ab\0cd", 5);
    EXPECT_EQ(PublishError(classId, text, interfaceId, E_FAIL), E_FAIL);
    EXPECT_EQ(TakeErrorText(), u"ab");
}

TEST_F(Publishing, ALaterErrorReplacesAnEarlierOne)
{
    PublishError(classId, u"first", interfaceId, E_FAIL);
    PublishError(classId, u"second", interfaceId, E_FAIL);
    EXPECT_EQ(TakeErrorText(), u"second");
}

TEST_F(Publishing, TheErrorBelongsToTheThread)
{
    std::thread([] { PublishError(classId, u"elsewhere", interfaceId, E_FAIL); }).join();
    EXPECT_FALSE(TakeError());
}

TEST_F(Publishing, ExceptionEndsWithItsPosition)
{
    const ComException exception(E_FAIL, u"text", {u"misc", 42});
    EXPECT_EQ(PublishException(exception, classId, interfaceId), E_FAIL);
    const auto error = TakeError();
    ASSERT_TRUE(error);
    EXPECT_EQ(error->text, u"text [misc@42]");
    EXPECT_TRUE(error->interfaceId == interfaceId);
}

TEST_F(Publishing, ExceptionWithoutFileHasNoBracket)
{
    PublishException(ComException(E_FAIL, u"text", {nullptr, 42}), classId, interfaceId);
    EXPECT_EQ(TakeErrorText(), u"text");
}

TEST_F(Publishing, ExceptionWithAPositionOnlyPublishesThat)
{
    PublishException(ComException(E_FAIL, u"", {u"misc", 1}), classId, interfaceId);
    EXPECT_EQ(TakeErrorText(), u" [misc@1]");
}

TEST_F(Publishing, ExceptionWithNothingToSayPublishesNothing)
{
    EXPECT_EQ(PublishException(ComException(E_FAIL, u"", {nullptr, 0}), classId, interfaceId),
              E_FAIL);
    EXPECT_FALSE(TakeError());
}

TEST_F(Publishing, ExceptionWithAZeroCodeIsAFailureAllTheSame)
{
    EXPECT_EQ(PublishException(ComException(S_OK, u"text", {nullptr, 0}), classId, interfaceId),
              DISP_E_EXCEPTION);
}

TEST_F(Publishing, ExceptionsAreCopiedWhole)
{
    const ComException first(E_FAIL, u"text", {u"misc", 7});
    const ComException second = first;
    EXPECT_EQ(second.code, static_cast<std::uint32_t>(E_FAIL));
    EXPECT_EQ(second.message, u"text");
    EXPECT_EQ(std::u16string(second.file), u"misc");
    EXPECT_EQ(second.line, 7U);
}

TEST_F(Publishing, PositionsNameTheLineOfTheCaller)
{
    const std::uint32_t line = __LINE__ + 1;
    const SourcePosition here = At(u"misc");
    EXPECT_EQ(here.line, line);
}

TEST_F(Publishing, MessagesAreFormatted)
{
    constexpr Reporter reporter{classId, interfaceId};
    EXPECT_EQ(PublishMessage(reporter, MessageId::ItemFailed, E_INVALIDARG, {u"x"}), E_INVALIDARG);
    EXPECT_EQ(TakeErrorText(), u"Failed to open \"x\".");

    EXPECT_EQ(PublishFailure(reporter, MessageId::ItemFailed, E_INVALIDARG, {u"x"}), E_INVALIDARG);
    EXPECT_EQ(TakeErrorText(),
              FormatMessageWithStatus(MessageId::ItemFailed, E_INVALIDARG, {u"x"}));
}

TEST_F(Publishing, AMessageWithoutATextIsPublishedEmpty)
{
    constexpr Reporter reporter{classId, interfaceId};
    constexpr auto without = static_cast<MessageId>(171);
    EXPECT_EQ(PublishMessage(reporter, without, E_FAIL), E_FAIL);
    const auto error = TakeError();
    ASSERT_TRUE(error);
    EXPECT_EQ(error->text, u"");
    EXPECT_TRUE(error->interfaceId == interfaceId);

    EXPECT_EQ(PublishMessage(reporter, without, S_OK), DISP_E_EXCEPTION);
    EXPECT_EQ(TakeErrorText(), u"");

    EXPECT_EQ(PublishFailure(reporter, without, E_ACCESSDENIED), E_ACCESSDENIED);
    const std::u16string text = TakeErrorText();
    EXPECT_TRUE(text.starts_with(u' ')) << "the blank in front of the system's text";
    EXPECT_GT(text.size(), 1U);
}

} // namespace

} // namespace tarnwell::test
