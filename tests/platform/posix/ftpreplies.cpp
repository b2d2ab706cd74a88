// Replies of FTP servers that come late, in pieces, without end or not at all, and connections that
// end.
#include "platform/posix/oddftp.h"

#include <memory>
#include <thread>

namespace tarnwell::test
{
namespace
{

using posix::FtpConnection;
using posix::FtpPatience;
using testing::ElementsAre;

TEST_F(OddFtp, AServerThatIsFullSaysSoItself)
{
    server.Answer("", {.first = "421 too many users\r\n", .hangsUp = true});
    const FtpClient client(server.Port());
    EXPECT_EQ(client.Error(), ERROR_INTERNET_EXTENDED_ERROR);
    EXPECT_EQ(ReadLastReply().text, u"421 too many users\r\n");
}

TEST_F(OddFtp, RepliesMayHaveManyLines)
{
    server.Answer("", {"220-welcome\r\n 220 to you\r\n220-\r\n220 ready\r\n"});
    server.Answer("PASS", {"230-first\r\nsecond\r\n230-third\r\n230 in\r\n"});
    server.Answer("MKD", {"550-no\r\n   550 not the end\r\n5500 nor this\r\n550 exists\r\n"});
    const FtpClient client(server.Port());
    ASSERT_TRUE(client.IsConnected()) << client.Error();
    EXPECT_FALSE(FtpCreateDirectoryW(client.Get(), Wide(u"a")));
    const LastReply reply = ReadLastReply();
    EXPECT_EQ(reply.code, 550U);
    EXPECT_EQ(reply.text.substr(reply.text.size() - 12), u"550 exists\r\n");
}

TEST_F(OddFtp, RepliesMayComeInPieces)
{
    server.WriteFile("/a", "12345");
    for (const char* const command : {"USER", "PASS", "DELE"})
        server.Answer(command, {.first = command == std::string_view("USER")   ? "331 go on\r\n"
                                         : command == std::string_view("PASS") ? "230 in\r\n"
                                                                               : "550 no\r\n",
                                .inPieces = true});
    const FtpClient client(server.Port());
    ASSERT_TRUE(client.IsConnected()) << client.Error();
    EXPECT_EQ(ErrorOf(FtpDeleteFileW(client.Get(), Wide(u"a"))), ERROR_INTERNET_EXTENDED_ERROR);
    EXPECT_EQ(client.Read(u"a"), "12345");
}

// An account is what servers ask for that none here has: the password alone isn't enough.
TEST_F(OddFtp, ALogonThatWantsAnAccountIsARefusedPassword)
{
    server.Answer("PASS", {"332 which account?\r\n"});
    for (const char* const refusal : {"530 none such\r\n", "500 not known\r\n"})
    {
        server.Answer("ACCT", {refusal});
        EXPECT_EQ(FtpClient(server.Port()).Error(), ERROR_INTERNET_INCORRECT_PASSWORD);
    }
    EXPECT_EQ(server.Logins(), 0);
}

TEST_F(OddFtp, ARefusedUserIsToldFromARefusedPassword)
{
    server.Answer("USER", {"530 not you\r\n"});
    const FtpClient unknown(server.Port());
    EXPECT_EQ(unknown.Error(), ERROR_INTERNET_INCORRECT_USER_NAME);
    EXPECT_EQ(ReadLastReply().text, u"530 not you\r\n");
    server.BehaveAgain("USER");
    server.Answer("PASS", {"530-not\r\n530 this\r\n"});
    const FtpClient known(server.Port());
    EXPECT_EQ(known.Error(), ERROR_INTERNET_INCORRECT_PASSWORD);
    EXPECT_EQ(ReadLastReply().text, u"530-not\r\n530 this\r\n");
    EXPECT_EQ(ReadLastReply().code, 530U);
}

TEST_F(OddFtp, AReplyThatNeverEndsIsCutOff)
{
    server.Answer("DELE",
                  {.first = "550-" + std::string(1000, 'x') + "\r\n", .firstTimes = 100000000});
    const FtpClient client(server.Port());
    EXPECT_EQ(ErrorOf(FtpDeleteFileW(client.Get(), Wide(u"a"))), ERROR_INTERNET_CONNECTION_RESET);
    server.BehaveAgain("DELE");
    EXPECT_EQ(client.Write(u"a", "1"), 0U) << "over a new connection";
    EXPECT_EQ(server.Logins(), 2);
}

TEST_F(OddFtp, ALineOfAHundredMegabytesIsNoHarm)
{
    server.Answer(
        "DELE", {.first = std::string(1000000, '5'), .last = "\r\n550 no\r\n", .firstTimes = 100});
    FtpConnection connection = Direct();
    ASSERT_EQ(connection.LogIn(), 0U);
    EXPECT_NE(connection.Command("DELE", "a"), 0U);
    EXPECT_LE(connection.Reply().text.size(), posix::ReplyReader::longestKept);
}

TEST_F(OddFtp, AServerThatStopsAnsweringIsATimeOut)
{
    FtpConnection connection = Direct();
    ASSERT_EQ(connection.LogIn(), 0U);
    server.Answer("DELE", {});
    EXPECT_EQ(connection.Command("DELE", "a"), ERROR_INTERNET_TIMEOUT);
}

// Whoever waited would be here for an hour, and the server never see an end.
TEST_F(OddFtp, NobodyWaitsForAGoodBye)
{
    server.Answer("QUIT", {});
    auto connection =
        std::make_unique<FtpConnection>(Address(), FtpPatience{.connecting = std::chrono::hours(1),
                                                               .reply = std::chrono::hours(1),
                                                               .data = std::chrono::hours(1)});
    ASSERT_EQ(connection->LogIn(), 0U);
    std::thread leaving([&] { connection.reset(); });
    EXPECT_TRUE(server.SeesTheEndOf(1));
    server.DropConnections();
    leaving.join();
    EXPECT_EQ(server.Count("QUIT"), 1) << "it is told that somebody leaves";
}

// ---- Connections that were dropped ----

TEST_F(OddFtp, AConnectionDroppedWhileIdleIsMadeAnew)
{
    server.MakeFolder("/sub");
    server.WriteFile("/sub/a", "12345");
    const FtpClient client(server.Port());
    EXPECT_THAT(client.List(u"sub/*").Names(), ElementsAre(u"a"));
    server.DropConnections();
    // Until the drop has arrived.
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    EXPECT_THAT(client.List(u"sub/*").Names(), ElementsAre(u"a"));
    EXPECT_EQ(server.Logins(), 2);
    server.DropConnections();
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    EXPECT_EQ(client.Read(u"sub/a"), "12345");
    EXPECT_EQ(server.Logins(), 3);
    EXPECT_EQ(server.Count("USER ftp") + server.Count("PASS secret"), 6) << "as the same user";
    EXPECT_EQ(server.Count("USER ") + server.Count("PASS "), 6);
}

TEST_F(OddFtp, AConnectionThatEndsUnderACommandIsLost)
{
    server.Answer("DELE", {.hangsUp = true});
    const FtpClient client(server.Port());
    EXPECT_EQ(ErrorOf(FtpDeleteFileW(client.Get(), Wide(u"a"))), ERROR_INTERNET_CONNECTION_RESET);
}

// In between, so that the new one is in another folder.
TEST_F(OddFtp, AListingIsNeverThatOfAnotherFolder)
{
    server.MakeFolder("/sub");
    server.WriteFile("/sub/right", "1");
    server.WriteFile("/wrong", "1");
    server.Answer("CWD sub", {.first = "250 fine\r\n", .hangsUp = true});
    const FtpClient client(server.Port());
    const Listing listing = client.List(u"sub/*");
    EXPECT_EQ(listing.Find(u"wrong"), nullptr);
}

} // namespace
} // namespace tarnwell::test
