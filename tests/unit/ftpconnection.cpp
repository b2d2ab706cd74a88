// The user's settings, what the two handles are opened with, and the server's replies.
#include "ftp/ftpconnection.h"

#include "addressed/uri.h"
#include "ftp/ftpreply.h"
#include "ftp/ftpsettings.h"
#include "unit/ftptest.h"

namespace tarnwell::test
{
namespace
{

using testing::ElementsAre;
using Value = FakeInternet::Value;

Value Text(std::u16string_view text, DWORD type = REG_SZ)
{
    return {type, RegistryText(text)};
}

Value Number(std::uint32_t number)
{
    return {REG_DWORD, std::string(reinterpret_cast<const char*>(&number), sizeof number)};
}

class FtpConnection : public FtpTest
{
protected:
    using Values = std::map<std::u16string, Value>;

    std::u16string ProxyOf(const Value& value)
    {
        internet.settings = Values{{u"Proxy", value}};
        return ReadFtpProxy().servers;
    }

    // How the root handle is opened.
    std::u16string Opened(const Values& values)
    {
        internet.settings = values;
        internet.ForgetCalls();
        OpenInternetHandle();
        return internet.Calls().at(0);
    }

    std::u16string Connected(const FtpLogon& logon)
    {
        const InternetHandle root = OpenInternetHandle();
        internet.ForgetCalls();
        ConnectInternetHandle(root, logon);
        return internet.Calls().at(0);
    }
};

TEST_F(FtpConnection, WithoutAKeyEverythingIsUnset)
{
    EXPECT_FALSE(ReadFtpProxy().isUsed);
    EXPECT_FALSE(ReadUseActive());
    OpenInternetHandle();
    EXPECT_THAT(internet.Calls(u"open"), ElementsAre(u"open FTP|0|(null)|(null)|0"));
    EXPECT_EQ(Connected({u"h", noPort, u"u", u"p"}), u"connect h|21|u|p|passive");
}

TEST_F(FtpConnection, TextIsTakenAsItStands)
{
    EXPECT_EQ(ProxyOf(Text(u"proxy:1")), u"proxy:1");
    EXPECT_EQ(ProxyOf(Text(u"%TEMP%", REG_EXPAND_SZ)), u"%TEMP%");
    EXPECT_EQ(ProxyOf({REG_SZ, ""}), u"");
    EXPECT_EQ(ProxyOf({REG_SZ, RegistryText(u"one") + RegistryText(u"two")}), u"one");
}

TEST_F(FtpConnection, IllFormedTextIsIgnored)
{
    EXPECT_EQ(ProxyOf(Text(u"proxy", REG_BINARY)), u"");
    EXPECT_EQ(ProxyOf(Text(u"proxy", REG_DWORD)), u"");
    EXPECT_EQ(ProxyOf({REG_SZ, RegistryText(u"odd") + "x"}), u"");
    EXPECT_EQ(ProxyOf({REG_SZ, std::string("a\0b\0", 4)}), u"") << "no terminator";
}

TEST_F(FtpConnection, TextMayFillTheBufferAndNoMore)
{
    const std::u16string longest(511, u'p');
    EXPECT_EQ(ProxyOf(Text(longest)), longest);
    EXPECT_EQ(ProxyOf({REG_SZ, std::string(1024, 'p')}), u"") << "no terminator";
    EXPECT_EQ(ProxyOf(Text(longest + u"p")), u"") << "1026 bytes";
}

TEST_F(FtpConnection, AProxyIsUsedIfItIsSwitchedOnAndThere)
{
    EXPECT_EQ(Opened({{u"UseProxy", Number(1)}, {u"Proxy", Text(u"ftp=p:1")}}),
              u"open FTP|3|ftp=p:1|(null)|0");
    EXPECT_EQ(Opened({{u"UseProxy", Number(0x10000)},
                      {u"Proxy", Text(u"p")},
                      {u"ProxyBypassList", Text(u"<local>;*.x")}}),
              u"open FTP|3|p|<local>;*.x|0");
    const std::u16string direct = u"open FTP|0|(null)|(null)|0";
    EXPECT_EQ(Opened({{u"UseProxy", Number(1)}, {u"ProxyBypassList", Text(u"x")}}), direct);
    EXPECT_EQ(Opened({{u"UseProxy", Number(0)}, {u"Proxy", Text(u"p")}}), direct);
    EXPECT_EQ(Opened({{u"Proxy", Text(u"p")}, {u"ProxyBypassList", Text(u"x")}}), direct);
    EXPECT_EQ(Opened({{u"UseProxy", Text(u"1")}, {u"Proxy", Text(u"p")}}), direct);
    EXPECT_EQ(Opened({{u"UseProxy", {REG_BINARY, "\1\0\0\0"}}, {u"Proxy", Text(u"p")}}), direct);
    EXPECT_EQ(Opened({{u"UseProxy", {REG_DWORD, "12345"}}, {u"Proxy", Text(u"p")}}), direct);
}

TEST_F(FtpConnection, DataConnectionsArePassiveUnlessSetOtherwise)
{
    const FtpLogon logon{u"h", noPort, u"u", u"p"};
    internet.settings = Values{{u"UseActive", Number(1)}};
    EXPECT_EQ(Connected(logon), u"connect h|21|u|p|0");
    internet.settings = Values{{u"UseActive", Number(0)}};
    EXPECT_EQ(Connected(logon), u"connect h|21|u|p|passive");
    internet.settings = Values{{u"UseActive", Text(u"1")}};
    EXPECT_EQ(Connected(logon), u"connect h|21|u|p|passive");
}

// A number is told by its type; one of fewer bytes has zeros above them.
TEST_F(FtpConnection, NumbersMayBeShort)
{
    const FtpLogon logon{u"h", noPort, u"u", u"p"};
    internet.settings = Values{{u"UseActive", {REG_DWORD, "\1"}}};
    EXPECT_EQ(Connected(logon), u"connect h|21|u|p|0");
    internet.settings = Values{{u"UseActive", {REG_DWORD, ""}}};
    EXPECT_EQ(Connected(logon), u"connect h|21|u|p|passive");
}

TEST_F(FtpConnection, SettingsAreReadAtEachConnection)
{
    EXPECT_EQ(Connected({u"h", 2121, u"", u""}), u"connect h|2121|||passive")
        << "empty texts stay empty texts";
    internet.settings = Values{{u"UseActive", Number(7)}};
    EXPECT_EQ(Connected({u"h", 65534, u"", u""}), u"connect h|65534|||0");
}

TEST_F(FtpConnection, NothingButOneLineIsSent)
{
    const InternetHandle root = OpenInternetHandle();
    for (const FtpLogon& logon :
         {FtpLogon{u"h", noPort, u"u\r\nDELE x", u"p"}, FtpLogon{u"h", noPort, u"u", u"p\nx"},
          FtpLogon{u"h\tx", noPort, u"u", u"p"}, FtpLogon{u"h", noPort, u"u\x7F", u"p"}})
    {
        EXPECT_THAT(FailureOf([&] { ConnectInternetHandle(root, logon); }),
                    Threw(0x80070057, u"Unable to connect to the remote server.\n\n"));
    }
    EXPECT_THAT(internet.Calls(u"connect"), testing::IsEmpty());
}

TEST_F(FtpConnection, AFailureHasItsOwnMessage)
{
    internet.responseFails = true;
    internet.Fail("InternetOpenW", ERROR_INVALID_PARAMETER);
    EXPECT_THAT(FailureOf([] { OpenInternetHandle(); }),
                Threw(0x80070057, u"Unable to open an Internet connection."));
    const InternetHandle root = OpenInternetHandle();
    internet.Fail("InternetConnectW", ERROR_INTERNET_CANNOT_CONNECT);
    EXPECT_THAT(FailureOf([&] {
                    ConnectInternetHandle(root, {u"h", noPort, u"u", u"p"});
                }),
                Threw(0x80072EFD, u"Unable to connect to the remote server."));
}

class FtpReply : public FtpTest
{
protected:
    bool SaysExists(const std::u16string& reply)
    {
        internet.reply = reply;
        return ResponseSaysExists();
    }
    std::optional<FtpFailure> Thrown(DWORD error)
    {
        return FailureOf([error] { ThrowInternetError(error, u"What happened."); });
    }
};

TEST_F(FtpReply, IsTrimmed)
{
    internet.reply = u"\r\n\t 550 No such file. \t\r\n";
    EXPECT_EQ(ReadLastResponse(), u"550 No such file.");
    internet.reply = u" \r\n";
    EXPECT_EQ(ReadLastResponse(), u"");
}

TEST_F(FtpReply, IsEmptyIfItCannotBeRead)
{
    internet.reply = std::u16string(1023, u'x');
    EXPECT_EQ(ReadLastResponse(), u"") << "longer than the room for it";
    internet.reply = u"exists";
    internet.responseFails = true;
    EXPECT_EQ(ReadLastResponse(), u"");
    EXPECT_FALSE(ResponseSaysExists());
}

TEST_F(FtpReply, SaysThatAFolderIsThereInThreeWays)
{
    EXPECT_TRUE(SaysExists(u"550 a: File exists\r\n"));
    EXPECT_TRUE(SaysExists(u"550 Create directory operation failed.\r\n"));
    EXPECT_TRUE(SaysExists(u"521 \"a\" is there"));
    EXPECT_TRUE(SaysExists(u"521-more"));
    EXPECT_TRUE(SaysExists(u"521"));
}

TEST_F(FtpReply, SaysItInNoOther)
{
    EXPECT_FALSE(SaysExists(u"550 a: File Exists"));
    EXPECT_FALSE(SaysExists(u"550 create directory operation failed"));
    EXPECT_FALSE(SaysExists(u"5210 no"));
    EXPECT_FALSE(SaysExists(u"550 521"));
    EXPECT_FALSE(SaysExists(u" 521 leading blank"));
    EXPECT_FALSE(SaysExists(u""));
}

TEST_F(FtpReply, GivesFailuresItsLastLine)
{
    internet.reply = u"550-First.\r\n550-Second.\r\n550 Third and last. \r\n";
    EXPECT_THAT(Thrown(ERROR_INTERNET_EXTENDED_ERROR),
                Threw(extendedStatus, u"What happened.\n\n550 Third and last."));
}

TEST_F(FtpReply, IsLeftOutWhereItCannotBeRead)
{
    internet.responseFails = true;
    EXPECT_THAT(Thrown(12014), Threw(0x80072EEE, u"What happened."));
}

TEST_F(FtpReply, OfNothingLeavesAnEmptyLine)
{
    EXPECT_THAT(Thrown(12031), Threw(0x80072EFF, u"What happened.\n\n"));
}

TEST_F(FtpReply, AnErrorOfZeroStaysZero)
{
    internet.responseFails = true;
    EXPECT_THAT(Thrown(0), Threw(0, u"What happened."));
    EXPECT_THAT(Thrown(0x80004005), Threw(0x80004005, u"What happened."));
}

} // namespace
} // namespace tarnwell::test
