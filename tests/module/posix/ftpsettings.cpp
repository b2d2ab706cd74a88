// The user's settings for FTP, out of their file, as they reach the connections.
#include "module/ftptest.h"
#include "support/environmentvalue.h"
#include "support/ftp/connectproxy.h"
#include "support/ftp/scriptedserver.h"
#include "support/tempfolder.h"

namespace tarnwell::test
{
namespace
{

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::Ge;
using testing::IsEmpty;
using testing::SizeIs;

class FtpSettings : public FtpModuleTest
{
protected:
    FtpSettings()
    {
        server.MakeFolder("/d");
        server.WriteFile("/d/x", "content");
        Use(server.Host());
    }

    // A settings file in a folder for such.
    static void Write(const fs::path& folder, const std::string& text)
    {
        fs::create_directories(folder / "tarnwell");
        WriteBytes((folder / "tarnwell" / "ftp.conf").u16string(), text);
    }
    void Set(const std::string& text) const
    {
        Write(folder_.Path(), text);
    }
    std::string ProxyAddress() const
    {
        return "127.0.0.1:" + std::to_string(proxy.Port());
    }
    std::string Tunnel() const
    {
        return "CONNECT 127.0.0.1:" + std::to_string(server.Port()) + " HTTP/1.1";
    }
    void ExpectEverythingWorks() const
    {
        EXPECT_THAT(Names(u"d"), ElementsAre(u"x"));
        EXPECT_EQ(Content(Address(u"d/x")), "content");
        EXPECT_THAT(Put(u"new", std::string(300000, 'n')), Succeeded());
        EXPECT_EQ(server.File("/new")->size(), 300000U);
    }

private:
    const TempFolder folder_;
    const EnvironmentValue settings_{"XDG_CONFIG_HOME", folder_.Path().c_str()};

protected:
    ScriptedFtpServer server;
    ConnectProxy proxy;
};

TEST_F(FtpSettings, AProxyCarriesCommandsAndData)
{
    Set("UseProxy = REG_DWORD 1\nProxy = REG_SZ http=nowhere:1;ftp=http://" + ProxyAddress());
    ExpectEverythingWorks();
    // For the commands, and for each transfer.
    ASSERT_THAT(proxy.Requests(), SizeIs(static_cast<std::size_t>(1 + server.Count("EPSV"))));
    EXPECT_EQ(proxy.Requests().front(), Tunnel());
    EXPECT_EQ(server.Logins(), 1);
    EXPECT_EQ(server.Count("PORT") + server.Count("EPRT"), 0);
}

TEST_F(FtpSettings, AProxyThatIsNotSwitchedOnIsLeftAlone)
{
    Set("UseProxy = REG_DWORD 0\nProxy = REG_SZ " + ProxyAddress());
    ExpectEverythingWorks();
    EXPECT_THAT(proxy.Requests(), IsEmpty());
}

TEST_F(FtpSettings, SomeHostsAreReachedWithoutTheProxy)
{
    Set("UseProxy = REG_DWORD 1\nProxyBypassList = REG_SZ <local>;127.*\nProxy = REG_SZ " +
        ProxyAddress());
    ExpectEverythingWorks();
    EXPECT_THAT(proxy.Requests(), IsEmpty());
}

TEST_F(FtpSettings, AProxyThatRefusesIsAFailureAndNothingGoesRoundIt)
{
    Set("UseProxy = REG_DWORD 1\nProxy = REG_SZ " + ProxyAddress());
    proxy.Refuse();
    const Outcome outcome = FailedOpen(Address(u"d/x"));
    ASSERT_TRUE(outcome.error);
    EXPECT_TRUE(outcome.error->text.starts_with(u"Unable to connect to the remote server."));
    EXPECT_THAT(proxy.Requests(), testing::Each(Tunnel()));
    EXPECT_THAT(proxy.Requests(), SizeIs(Ge(1U)));
    EXPECT_EQ(server.Connections(), 0);
}

TEST_F(FtpSettings, TheServerOpensDataConnectionsIfThatIsSet)
{
    Set("UseActive = REG_DWORD 1");
    ExpectEverythingWorks();
    EXPECT_EQ(server.Count("EPSV") + server.Count("PASV"), 0);
    EXPECT_GE(server.Count("EPRT") + server.Count("PORT"), 3);
}

// The next connection has them, and one that stands keeps what it had.
TEST_F(FtpSettings, AreReadAtEachConnection)
{
    EXPECT_EQ(Content(Address(u"d/x")), "content");
    Set("UseActive = REG_DWORD 1");
    EXPECT_EQ(Content(Address(u"d/x")), "content");
    EXPECT_EQ(server.Count("EPRT"), 0);
    ComPtr<IFileStream> stream;
    ASSERT_THAT(Open(Address(u"d/x"), stream), Succeeded());
    EXPECT_EQ(Names(u"d").size(), 1U) << "over another connection";
    EXPECT_GE(server.Count("EPRT"), 1);
}

TEST_F(FtpSettings, LieInTheHomeFolderUnlessAnotherIsNamed)
{
    const TempFolder home;
    const EnvironmentValue variable("HOME", home.Path().c_str());
    Write(home.Path() / ".config", "UseActive = REG_DWORD 1");
    EXPECT_EQ(Content(Address(u"d/x")), "content");
    EXPECT_EQ(server.Count("EPRT"), 0) << "another folder is named";
    for (const char* const none : {static_cast<const char*>(nullptr), "", "not/absolute"})
    {
        const EnvironmentValue unnamed("XDG_CONFIG_HOME", none);
        ScriptedFtpServer fresh;
        fresh.WriteFile("/x", "content");
        Use(fresh.Host());
        EXPECT_EQ(Content(Address(u"x")), "content");
        EXPECT_EQ(fresh.Count("EPRT"), 1);
    }
}

} // namespace
} // namespace tarnwell::test
