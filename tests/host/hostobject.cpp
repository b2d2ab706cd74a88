#include "hostobject.h"

#include "itemlist.h"
#include "support/loadedmodule.h"

#include <gtest/gtest.h>

namespace tarnwell::host
{

namespace
{

// Texts come from the module.
class HostObjectTest : public testing::Test
{
protected:
    struct Answer
    {
        HRESULT status;
        std::u16string user;
        std::u16string password;
        std::u16string host;
    };

    Answer Ask(const CommandLine& line)
    {
        const auto credentials = MakeHostObject(line).As<IHostCredentials>();
        Bstr user;
        Bstr password;
        Bstr host;
        const Bstr askedHost(u"server");
        const Bstr askedUser(u"joe");
        const HRESULT status = credentials->GetCredentials(0, askedHost.Get(), askedUser.Get(),
                                                           user.Out(), password.Out(), host.Out());
        return {status, std::u16string(user.View()), std::u16string(password.View()),
                std::u16string(host.View())};
    }

    const test::LoadedModule module_;
    CommandLine line_;
};

TEST_F(HostObjectTest, AnswersForServersThatLetEverybodyIn)
{
    const Answer answer = Ask(line_);
    EXPECT_EQ(answer.status, S_OK);
    EXPECT_EQ(answer.user, u"");
    EXPECT_EQ(answer.password, u"");
    EXPECT_EQ(answer.host, u"server");
}

TEST_F(HostObjectTest, AnswersWithTheOptions)
{
    line_.user = u"ann";
    line_.password = u"secret";
    line_.server = u"other:2121";
    const Answer answer = Ask(line_);
    EXPECT_EQ(answer.user, u"ann");
    EXPECT_EQ(answer.password, u"secret");
    EXPECT_EQ(answer.host, u"other:2121");
}

TEST_F(HostObjectTest, PasswordAloneIsForTheUserThatWasAskedFor)
{
    line_.password = u"secret";
    EXPECT_EQ(Ask(line_).user, u"joe");
}

TEST_F(HostObjectTest, Declines)
{
    line_.noCredentials = true;
    line_.user = u"ann";
    const Answer answer = Ask(line_);
    EXPECT_TRUE(FAILED(answer.status));
    EXPECT_EQ(answer.user, u"");
}

TEST_F(HostObjectTest, HasNoWindow)
{
    HWND window = reinterpret_cast<HWND>(this);
    EXPECT_EQ(MakeHostObject(line_).As<IHostWindow>()->GetWindow(&window), S_OK);
    EXPECT_EQ(window, nullptr);
}

TEST_F(HostObjectTest, StreamsByOption)
{
    const Bstr name(u"IterateStreams");
    VARIANT_BOOL value = VARIANT_TRUE;
    const auto without = MakeHostObject(line_).As<IHostSettings>();
    EXPECT_EQ(without->GetBooleanSetting(name.Get(), &value), S_OK);
    EXPECT_EQ(value, VARIANT_FALSE);

    line_.streams = true;
    const auto with = MakeHostObject(line_).As<IHostSettings>();
    EXPECT_EQ(with->GetBooleanSetting(name.Get(), &value), S_OK);
    EXPECT_EQ(value, VARIANT_TRUE);

    const Bstr other(u"Other");
    EXPECT_TRUE(FAILED(with->GetBooleanSetting(other.Get(), &value)));
    EXPECT_EQ(value, VARIANT_FALSE);
}

TEST_F(HostObjectTest, ItsInterfacesAreOneObject)
{
    const ComPtr<IUnknown> object = MakeHostObject(line_);
    EXPECT_EQ(object.As<IHostSettings>().As<IUnknown>().Get(), object.As<IUnknown>().Get());
    EXPECT_FALSE(object.As<IFile>());
}

TEST_F(HostObjectTest, ItemListGivesItsAddresses)
{
    const ComPtr<IItemList> list = MakeItemList({u"a", u"b c"});
    std::int32_t count = 0;
    Bstr path;
    EXPECT_EQ(list->GetCount(&count), S_OK);
    EXPECT_EQ(count, 2);
    EXPECT_EQ(list->GetItem(1, path.Out()), S_OK);
    EXPECT_EQ(path.View(), u"b c");
    EXPECT_EQ(list->GetItem(2, path.Out()), E_INVALIDARG);
    EXPECT_EQ(list->GetItem(-1, path.Out()), E_INVALIDARG);
}

} // namespace

} // namespace tarnwell::host
