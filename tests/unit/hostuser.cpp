// What the module asks of the host object, and how it gets on without.
#include "frame/hostuser.h"
#include "frame/exception.h"
#include "support/fakehost.h"
#include "support/thrown.h"

#include <gmock/gmock.h>

namespace tarnwell::test
{

namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

class User : public HostUIUser
{
};

class HostUse : public testing::Test
{
protected:
    HostUse()
    {
        user.SetHostObject(host->Unknown());
    }
    ~HostUse() override
    {
        user.SetHostObject(nullptr);
        EXPECT_EQ(host->References(), 1U);
    }

    ComPtr<FakeHost> host = FakeHost::Make();
    User user;
};

void ExpectSame(const Credentials& left, const Credentials& right)
{
    EXPECT_EQ(left.user, right.user);
    EXPECT_EQ(left.password, right.password);
    EXPECT_EQ(left.host, right.host);
}

TEST_F(HostUse, AnAddressWithUserIsNotAskedAbout)
{
    for (const Credentials& given : {Credentials{u"u", u"p", u"h"}, Credentials{u"u", u"", u"h"},
                                     Credentials{u"u", u"**", u""}})
        ExpectSame(user.ResolveCredentials(given, serverCredentials), given);
    EXPECT_THAT(host->Calls(), IsEmpty());
}

TEST_F(HostUse, AStarAsPasswordAsks)
{
    host->credentials = {S_OK, u"user", u"password", u"server"};
    ExpectSame(user.ResolveCredentials({u"u", u"*", u"h"}, serverCredentials),
               {u"user", u"password", u"server"});
    EXPECT_THAT(host->Calls(), ElementsAre(u"GetCredentials|0|h|u"));
}

TEST_F(HostUse, AnAddressWithoutUserAsksWhateverItsPassword)
{
    host->credentials = {S_OK, u"user", u"password", u"server"};
    for (const std::u16string password : {u"", u"p", u"*"})
        ExpectSame(user.ResolveCredentials({u"", password, u"h"}, perforceCredentials),
                   {u"user", u"password", u"server"});
    EXPECT_THAT(host->Calls(), ElementsAre(u"GetCredentials|1|h|", u"GetCredentials|1|h|",
                                           u"GetCredentials|1|h|"));
}

TEST_F(HostUse, NullAnswersAreEmptyAndNotTheInputs)
{
    host->credentials = {S_OK, std::nullopt, std::nullopt, std::nullopt};
    ExpectSame(user.ResolveCredentials({u"u", u"*", u"h"}, serverCredentials), {});
}

TEST_F(HostUse, ASuccessOtherThanZeroCountsAsAnswer)
{
    host->credentials = {S_FALSE, u"user", u"", u"server"};
    ExpectSame(user.ResolveCredentials({u"", u"", u"h"}, serverCredentials),
               {u"user", u"", u"server"});
}

void ExpectRefused(const User& user, const Credentials& given)
{
    const Thrown thrown = ThrownBy([&] { user.ResolveCredentials(given, serverCredentials); });
    EXPECT_EQ(thrown.status, E_ACCESSDENIED);
    EXPECT_TRUE(thrown.text.starts_with(
        u"User name and password credentials might be required to access the server."));
    EXPECT_EQ(thrown.source, u"misc");
}

TEST_F(HostUse, AFailureIsReportedToTheHostAndThrown)
{
    // The texts of a failed answer are freed and don't count.
    host->credentials = {E_FAIL, u"user", u"password", u"server"};
    ExpectRefused(user, {u"u", u"*", u"h"});
    EXPECT_THAT(host->Calls(),
                ElementsAre(u"GetCredentials|0|h|u", u"ReportMissingCredentials|0|h|u"));
}

TEST_F(HostUse, AFailureLeavesPerforceWithItsAddress)
{
    host->credentials = {E_FAIL, u"user", u"password", u"server"};
    ExpectSame(user.ResolveCredentials({u"u", u"*", u"h"}, perforceCredentials),
               {u"u", u"*", u"h"});
    EXPECT_THAT(host->Calls(),
                ElementsAre(u"GetCredentials|1|h|u", u"ReportMissingCredentials|1|h|u"));
}

TEST_F(HostUse, AHostWithoutCredentialsGivesNone)
{
    host->hasCredentials = false;
    ExpectRefused(user, {u"", u"", u"h"});
    ExpectSame(user.ResolveCredentials({u"", u"", u"h"}, perforceCredentials), {u"", u"", u"h"});
    EXPECT_THAT(host->Calls(), IsEmpty());
}

TEST_F(HostUse, NoHostGivesNoCredentials)
{
    user.SetHostObject(nullptr);
    EXPECT_EQ(host->References(), 1U) << "a new host replaces the earlier one";
    ExpectRefused(user, {u"", u"", u"h"});
    ExpectSame(user.ResolveCredentials({u"", u"", u"h"}, perforceCredentials), {u"", u"", u"h"});
    ExpectSame(user.ResolveCredentials({u"u", u"", u"h"}, serverCredentials), {u"u", u"", u"h"});
}

TEST_F(HostUse, RefusedCredentialsAreReported)
{
    user.ReportCredentialsRefused(u"530 no");
    EXPECT_THAT(host->Calls(), ElementsAre(u"ForgetCredentials|530 no"));
}

TEST_F(HostUse, NobodyToReportToIsNoError)
{
    host->hasCredentials = false;
    EXPECT_NO_THROW(user.ReportCredentialsRefused(u"530 no"));
    user.SetHostObject(nullptr);
    EXPECT_NO_THROW(user.ReportCredentialsRefused(u"530 no"));
}

TEST_F(HostUse, TheOwnerWindowIsTheHosts)
{
    const HWND window = reinterpret_cast<HWND>(std::uintptr_t{0x1234});
    host->window = window;
    EXPECT_EQ(OwnerWindow(host.As<IHostWindow>().Get()), window);
    EXPECT_EQ(OwnerWindow(nullptr), nullptr);
}

TEST_F(HostUse, ASettingIsTrueForAnyValueButZero)
{
    const auto ask = [&](VARIANT_BOOL value) {
        host->setting = value;
        return BooleanSetting(host->Unknown(), u"IterateStreams");
    };
    EXPECT_TRUE(ask(VARIANT_TRUE));
    EXPECT_TRUE(ask(1));
    EXPECT_FALSE(ask(VARIANT_FALSE));
    EXPECT_THAT(host->Calls(), ElementsAre(u"GetBooleanSetting|IterateStreams",
                                           u"GetBooleanSetting|IterateStreams",
                                           u"GetBooleanSetting|IterateStreams"));
}

TEST_F(HostUse, ASettingThatIsMissingIsFalse)
{
    EXPECT_FALSE(BooleanSetting(host->Unknown(), u"IterateStreams")) << "left as it was";
    host->setting = VARIANT_TRUE;
    host->settingStatus = E_FAIL;
    EXPECT_TRUE(BooleanSetting(host->Unknown(), u"IterateStreams"))
        << "the call's own result isn't looked at";
    host->hasSettings = false;
    EXPECT_FALSE(BooleanSetting(host->Unknown(), u"IterateStreams"));
    EXPECT_FALSE(BooleanSetting(nullptr, u"IterateStreams"));
}

} // namespace

} // namespace tarnwell::test
