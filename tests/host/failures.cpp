// What becomes of failed calls, and of a program that can't go on.
#include "errors.h"
#include "output.h"
#include "program.h"
#include "support/loadedmodule.h"

#include <gtest/gtest.h>

#include <new>

namespace tarnwell::host
{

namespace
{

// Texts come from the module.
class Failures : public testing::Test
{
protected:
    static Failure FailureOf(HRESULT status)
    {
        try
        {
            Call([&] { return status; });
        }
        catch (const Failure& failure)
        {
            return failure;
        }
        ADD_FAILURE() << "not thrown";
        return {};
    }

    static void LeaveText(const char16_t* text)
    {
        ComPtr<ICreateErrorInfo> info;
        ASSERT_EQ(::CreateErrorInfo(info.Out()), S_OK);
        ASSERT_EQ(info->SetDescription(const_cast<OLECHAR*>(Bstr(text).Get())), S_OK);
        ASSERT_EQ(::SetErrorInfo(0, info.As<IErrorInfo>().Get()), S_OK);
    }

    const test::LoadedModule module_;
};

TEST_F(Failures, HaveTheTextThatTheCallLeft)
{
    try
    {
        Call([&] {
            LeaveText(u"the call's own");
            return E_INVALIDARG;
        });
        FAIL() << "not thrown";
    }
    catch (const Failure& failure)
    {
        EXPECT_EQ(failure.message, u"the call's own");
        EXPECT_EQ(failure.status, E_INVALIDARG);
    }
}

TEST_F(Failures, NeverHaveTheTextOfAnEarlierOne)
{
    LeaveText(u"stale");
    EXPECT_EQ(FailureOf(E_INVALIDARG).message, u"The call failed.");
}

TEST_F(Failures, WithoutATextHaveOneByTheirStatus)
{
    EXPECT_EQ(FailureOf(E_NOTIMPL).message, u"The file system doesn't offer this operation.");
    EXPECT_EQ(FailureOf(CLASS_E_CLASSNOTAVAILABLE).message,
              u"The module doesn't make this file system.");
    EXPECT_EQ(FailureOf(E_NOINTERFACE).message,
              u"The object doesn't have the interface that is needed.");
    EXPECT_EQ(FailureOf(E_OUTOFMEMORY).message, u"Out of memory.");
    EXPECT_EQ(FailureOf(E_FAIL).message, u"The call failed.");
}

TEST(Program, LetsNothingOutOfItsStart)
{
    EXPECT_EQ(RunProgram([]() -> std::vector<std::u16string> { throw std::bad_alloc(); }), 1);
}

TEST(Masking, LeavesNoControlCharacter)
{
    const std::u16string text = u"a\x1B[2J\tb\r\n\u009Bc\x7F\u00e4";
    EXPECT_EQ(Masked(text, LineFeeds::Kept), u"a?[2J?b?\n?c?\u00e4");
    EXPECT_EQ(Masked(text, LineFeeds::Masked), u"a?[2J?b???c?\u00e4");
}

} // namespace

} // namespace tarnwell::host
