// FTP with servers that are slow of mind, broken or hostile.
#include "platform/ftp.h"
#include "platform/posix/internet/ftpconnection.h"
#include "support/ftp/scriptedserver.h"

#include <gmock/gmock.h>

#include <thread>

namespace tarnwell::test
{
namespace
{

using posix::FtpConnection;
using posix::FtpPatience;
using posix::ListedEntry;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

constexpr FtpPatience impatient{.connecting = std::chrono::milliseconds(2000),
                                .reply = std::chrono::seconds(1),
                                .data = std::chrono::milliseconds(100)};

class OddFtp : public testing::Test
{
protected:
    FtpConnection Direct() const
    {
        return FtpConnection({.host = "127.0.0.1",
                              .port = static_cast<unsigned>(server.Port()),
                              .user = "ftp",
                              .password = "secret"},
                             impatient);
    }

    ScriptedFtpServer server;
};

// ---- Greetings and replies ----

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

TEST_F(OddFtp, NobodyWaitsForAGoodBye)
{
    server.Answer("QUIT", {});
    FtpClient client(server.Port());
    ASSERT_TRUE(client.IsConnected());
    client.Close();
    // It would be here for the time of a reply, and this test with it.
    SUCCEED();
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

// ---- The login folder ----

// What is used lies in the login folder, and the root has the same names.
class OddFtpEntry : public OddFtp
{
protected:
    OddFtpEntry()
    {
        server.MakeFolder("/sub");
        server.MakeFolder("/home");
        server.MakeFolder("/home/sub");
        server.WriteFile("/sub/wrong", "");
        server.WriteFile("/home/sub/right", "");
        server.BeginAt("/home");
    }

    // Leaves the login folder ahead of each.
    void ExpectRelativePathsBeginThere()
    {
        server.WriteFile("/a", "wrong");
        server.WriteFile("/home/a", "right");
        const FtpClient client(server.Port());
        ASSERT_TRUE(client.IsConnected()) << client.Error();
        for (int i = 0; i < 3; ++i)
            EXPECT_THAT(client.List(u"sub/*").Names(), ElementsAre(u"right"));
        EXPECT_NE(client.List(u"*").Find(u"a"), nullptr);
        EXPECT_EQ(client.List(u"*").Find(u"home"), nullptr);
        client.List(u"sub/*");
        EXPECT_EQ(client.Read(u"a"), "right");
        client.List(u"sub/*");
        EXPECT_EQ(client.Write(u"b", "1"), 0U);
        EXPECT_TRUE(server.File("/home/b").has_value());
        client.List(u"sub/*");
        EXPECT_TRUE(FtpDeleteFileW(client.Get(), Wide(u"a")));
        EXPECT_FALSE(server.File("/home/a").has_value());
        EXPECT_EQ(server.File("/a"), "wrong");
        EXPECT_FALSE(server.File("/b").has_value());
    }
};

TEST_F(OddFtpEntry, IsReturnedToByItsName)
{
    ExpectRelativePathsBeginThere();
    EXPECT_EQ(server.Logins(), 1);
}

TEST_F(OddFtpEntry, IsReturnedToByANewLoginIfTheServerDoesNotNameIt)
{
    for (const char* const reply :
         {"502 not here\r\n", "257 somewhere\r\n", "257 \"home\r\n", "257 \"home\" it is\r\n"})
    {
        SCOPED_TRACE(reply);
        server.Answer("PWD", {reply});
        ExpectRelativePathsBeginThere();
    }
    EXPECT_EQ(server.Count("CWD /"), 0);
}

TEST_F(OddFtpEntry, IsReturnedToByANewLoginIfItsNameIsRefused)
{
    server.Answer("CWD /home", {"550 you may be here but not come here\r\n"});
    ExpectRelativePathsBeginThere();
}

TEST_F(OddFtpEntry, WithoutTheNewLoginNothingIsDone)
{
    server.WriteFile("/a", "wrong");
    server.WriteFile("/home/a", "right");
    server.Answer("PWD", {"502 not here\r\n"});
    const FtpClient client(server.Port());
    client.List(u"sub/*");
    server.Answer("PASS", {"530 not again\r\n"});
    for (int i = 0; i < 2; ++i)
        EXPECT_EQ(ErrorOf(FtpDeleteFileW(client.Get(), Wide(u"a"))),
                  ERROR_INTERNET_INCORRECT_PASSWORD);
    EXPECT_EQ(server.Count("DELE"), 0);
    server.BehaveAgain("PASS");
    EXPECT_EQ(client.Read(u"a"), "right");
}

// ---- Listings ----

TEST_F(OddFtp, TenThousandLinesAreTenThousandEntries)
{
    server.MakeFolder("/sub");
    for (int i = 0; i < 10000; ++i)
        server.WriteFile("/sub/file" + std::to_string(i), "");
    const FtpClient client(server.Port());
    EXPECT_EQ(client.List(u"sub/*").records.size(), 10000U);
    server.OfferFacts();
    EXPECT_EQ(FtpClient(server.Port()).List(u"sub/*").records.size(), 10000U);
}

FtpAnswer Sends(const std::string& listing)
{
    return {.first = "150 here\r\n", .data = listing, .last = "226 done\r\n"};
}

TEST_F(OddFtp, FactsComeOutAsTheSameInstant)
{
    server.Answer("MLSD", Sends("type=file;size=5000000000;modify=20200131150405.5; a\r\n"
                                "type=file; b\r\n"
                                "type=OS.unix=slink:/x;perm=r; c\r\n"));
    const FtpClient client(server.Port());
    const Listing listing = client.List(u"*");
    const WIN32_FIND_DATAW* const a = listing.Find(u"a");
    const WIN32_FIND_DATAW* const b = listing.Find(u"b");
    const WIN32_FIND_DATAW* const c = listing.Find(u"c");
    ASSERT_TRUE(a != nullptr && b != nullptr && c != nullptr);
    EXPECT_EQ(SizeOf(*a), 5000000000U);
    FILETIME time = {};
    ASSERT_TRUE(LocalFileTimeToFileTime(&a->ftLastWriteTime, &time));
    EXPECT_EQ((std::uint64_t{time.dwHighDateTime} << 32) | time.dwLowDateTime, 132249566455000000U);
    EXPECT_EQ(WriteTimeOf(*b), 0U);
    EXPECT_EQ(b->dwFileAttributes, FILE_ATTRIBUTE_NORMAL);
    EXPECT_EQ(c->dwFileAttributes, FILE_ATTRIBUTE_REPARSE_POINT | FILE_ATTRIBUTE_READONLY);
}

TEST_F(OddFtp, FactsThatAreRefusedAfterAllAreNotNeeded)
{
    server.OfferFacts();
    server.WriteFile("/a", "1");
    server.Answer("MLSD", {"550 not today\r\n"});
    const FtpClient client(server.Port());
    EXPECT_THAT(client.List(u"*").Names(), ElementsAre(u"a"));
    server.BehaveAgain("MLSD");
    EXPECT_THAT(client.List(u"*").Names(), ElementsAre(u"a"));
    EXPECT_EQ(server.Count("LIST"), 1) << "the refusal was of that day only";
    server.Answer("MLSD", {"502 not at all\r\n"});
    client.List(u"*");
    client.List(u"*");
    EXPECT_EQ(server.Count("MLSD"), 3) << "what the server doesn't know isn't asked again";
}

TEST_F(OddFtp, WithoutTheOptionThereIsThePlainListing)
{
    server.WriteFile("/a", "1");
    server.Answer("LIST -a", {"501 what is -a\r\n"});
    const FtpClient client(server.Port());
    EXPECT_THAT(client.List(u"*").Names(), ElementsAre(u"a"));
    server.Answer("LIST -a", Sends(""));
    EXPECT_THAT(client.List(u"*").Names(), ElementsAre(u"a"));
    server.Answer("LIST -a", {"450 no such file\r\n"});
    EXPECT_THAT(client.List(u"*").Names(), ElementsAre(u"a"));
}

TEST_F(OddFtp, DosListingsAndDotsAreRead)
{
    server.Answer("LIST", Sends("01-31-20  03:04PM       <DIR>          sub\r\n"
                                "01-31-20  03:04PM             1234 a b\r\n"));
    EXPECT_THAT(FtpClient(server.Port()).List(u"*").Names(), UnorderedElementsAre(u"sub", u"a b"));
    server.Answer("LIST", Sends("total 4\r\ndrwxr-xr-x 2 f f 5 Jan  2 10:30 .\r\n"
                                "drwxr-xr-x 2 f f 5 Jan  2 10:30 ..\r\n"));
    EXPECT_EQ(FtpClient(server.Port()).List(u"*").error, ERROR_NO_MORE_FILES);
}

TEST_F(OddFtp, NamesThatLeadElsewhereMakeNoItem)
{
    server.Answer("LIST", Sends("-rw-r--r-- 1 f f 5 Jan  2 10:30 ../../etc/passwd\r\n"
                                "-rw-r--r-- 1 f f 5 Jan  2 10:30 /etc/passwd\r\n"
                                "-rw-r--r-- 1 f f 5 Jan  2 10:30 \x1b[31mred\r\n"
                                "-rw-r--r-- 1 f f 5 Jan  2 10:30 " +
                                std::string(300, 'x') +
                                "\r\n"
                                "-rw-r--r-- 1 f f 5 Jan  2 10:30 good\r\n"));
    const FtpClient client(server.Port());
    EXPECT_THAT(client.List(u"*").Names(), ElementsAre(u"\u001b[31mred", u"good"));
}

TEST_F(OddFtp, AListingThatBreaksOffIsNoShorterFolder)
{
    const std::string line = "-rw-r--r-- 1 f f 5 Jan  2 10:30 a\r\n";
    const FtpClient client(server.Port());
    server.Answer(
        "LIST",
        {.first = "150 here\r\n", .data = line, .last = "426 sorry\r\n", .breaksData = true});
    Listing listing = client.List(u"*");
    EXPECT_TRUE(listing.records.empty());
    EXPECT_THAT(listing.error,
                testing::AnyOf(ERROR_INTERNET_CONNECTION_RESET, ERROR_INTERNET_EXTENDED_ERROR));
    server.Answer("LIST", {.first = "150 here\r\n", .data = line, .last = "451 disk trouble\r\n"});
    listing = client.List(u"*");
    EXPECT_TRUE(listing.records.empty());
    EXPECT_EQ(listing.error, ERROR_INTERNET_EXTENDED_ERROR);
    EXPECT_EQ(ReadLastReply().code, 451U);
    server.Answer("LIST", {.first = "150 here\r\n", .data = line, .hangsUp = true});
    listing = client.List(u"*");
    EXPECT_TRUE(listing.records.empty());
    EXPECT_EQ(listing.error, ERROR_INTERNET_CONNECTION_RESET);
}

TEST_F(OddFtp, AListingOfAGigabyteIsGivenUp)
{
    server.Answer("LIST", {.first = "150 here\r\n",
                           .data = std::string(1048576, 'x'),
                           .last = "226 done\r\n",
                           .times = 1024});
    const FtpClient client(server.Port());
    EXPECT_EQ(client.List(u"*").error, ERROR_NOT_ENOUGH_MEMORY);
    server.BehaveAgain("LIST");
    EXPECT_EQ(client.Write(u"a", "1"), 0U);
    EXPECT_THAT(client.List(u"*").Names(), ElementsAre(u"a"));
}

TEST_F(OddFtp, EveryListingIsOfTheFolderAsItIsNow)
{
    server.MakeFolder("/sub");
    server.WriteFile("/sub/a", "1");
    const FtpClient client(server.Port());
    EXPECT_THAT(client.List(u"sub/*").Names(), ElementsAre(u"a"));
    server.WriteFile("/sub/b", "1");
    EXPECT_THAT(client.List(u"sub/*").Names(), UnorderedElementsAre(u"a", u"b"));
    EXPECT_EQ(server.Count("CWD sub"), 2);
}

// ---- Data ----

TEST_F(OddFtp, ALyingPassiveAddressIsIgnored)
{
    server.WriteFile("/a", "12345");
    server.ClaimAddress("10,255,255,1");
    const FtpClient client(server.Port());
    EXPECT_EQ(client.Read(u"a"), "12345");
}

TEST_F(OddFtp, ADownloadThatBreaksOffIsNoShorterFile)
{
    const FtpClient client(server.Port());
    const FtpAnswer endings[] = {
        {.first = "150 here\r\n", .data = "12345", .last = "426 sorry\r\n", .breaksData = true},
        {.first = "150 here\r\n", .data = "12345", .last = "426 sorry\r\n"},
        {.first = "150 here\r\n", .data = "12345", .hangsUp = true},
    };
    for (const FtpAnswer& ending : endings)
    {
        server.Answer("RETR", ending);
        EXPECT_EQ(client.Read(u"a"), std::nullopt);
        EXPECT_THAT(GetLastError(),
                    testing::AnyOf(ERROR_INTERNET_CONNECTION_RESET, ERROR_INTERNET_EXTENDED_ERROR));
    }
    server.BehaveAgain("RETR");
    server.WriteFile("/a", "12345");
    EXPECT_EQ(client.Read(u"a"), "12345") << "the next one isn't touched";
}

TEST_F(OddFtp, ADownloadThatStopsIsATimeOut)
{
    server.Answer("RETR", {.first = "150 here\r\n", .data = "12345", .stalls = true});
    FtpConnection connection = Direct();
    ASSERT_EQ(connection.LogIn(), 0U);
    ASSERT_EQ(connection.BeginDownload("a"), 0U);
    char buffer[16];
    std::size_t count = 0;
    EXPECT_EQ(connection.Read(buffer, count), ERROR_INTERNET_TIMEOUT);
}

TEST_F(OddFtp, AnUploadThatIsRefusedMidwayFails)
{
    server.Answer("STOR", {.first = "150 go on\r\n", .last = "552 disk full\r\n", .takes = 1000});
    const FtpClient client(server.Port());
    const InternetHandle file = client.Open(u"a", GENERIC_WRITE);
    ASSERT_TRUE(file);
    const std::string bytes(100000, 'x');
    DWORD written = 0;
    DWORD error = 0;
    for (int i = 0; i < 1000 && error == 0; ++i)
        error = ErrorOf(InternetWriteFile(file.Get(), bytes.data(), 100000, &written));
    EXPECT_THAT(error,
                testing::AnyOf(ERROR_INTERNET_CONNECTION_RESET, ERROR_INTERNET_EXTENDED_ERROR));
    if (error == ERROR_INTERNET_EXTENDED_ERROR)
    {
        EXPECT_EQ(ReadLastReply().code, 552U);
    }
}

TEST_F(OddFtp, ADownloadLeftInTheMiddleLeavesAUsableConnection)
{
    server.WriteFile("/big", std::string(10000000, 'x'));
    server.WriteFile("/a", "12345");
    const FtpClient client(server.Port());
    {
        const InternetHandle file = client.Open(u"big", GENERIC_READ);
        char buffer[1000];
        DWORD count = 0;
        ASSERT_TRUE(InternetReadFile(file.Get(), buffer, sizeof buffer, &count));
        EXPECT_EQ(count, sizeof buffer);
    }
    EXPECT_EQ(client.Read(u"a"), "12345");
}

// Not even the listing, which the library has for such a path.
TEST_F(OddFtp, AFolderIsNoFile)
{
    server.MakeFolder("/sub");
    server.WriteFile("/sub/a", "12345");
    const FtpClient client(server.Port());
    for (const char16_t* const path : {u"sub", u"sub/", u"/sub/", u"sub//", u"/", u"", u"none/"})
    {
        EXPECT_FALSE(client.Open(path, GENERIC_READ));
        EXPECT_EQ(GetLastError(), ERROR_INTERNET_EXTENDED_ERROR);
        EXPECT_EQ(ReadLastReply().code, 550U) << "the server's own word";
    }
    for (const char16_t* const path : {u"sub", u"sub/", u"/sub/", u"sub//", u"/", u""})
    {
        EXPECT_FALSE(client.Open(path, GENERIC_WRITE));
        EXPECT_EQ(GetLastError(), ERROR_INTERNET_EXTENDED_ERROR);
        EXPECT_EQ(ReadLastReply().code, 553U) << "the server's own word";
    }
    EXPECT_EQ(server.Count("LIST"), 0);
    EXPECT_EQ(client.Read(u"sub/a"), "12345");
    EXPECT_EQ(server.Logins(), 1);
}

TEST_F(OddFtp, AFileReadToItsEndKeepsTheConnection)
{
    server.WriteFile("/a", "12345");
    const FtpClient client(server.Port());
    for (int i = 0; i < 10; ++i)
        EXPECT_EQ(client.Read(u"a"), "12345");
    EXPECT_EQ(server.Logins(), 1);
}

// ---- What is never sent ----

TEST_F(OddFtp, ControlCharactersInAPathAreRefusedUnsent)
{
    const FtpClient client(server.Port());
    const std::size_t before = server.Commands().size();
    WIN32_FIND_DATAW record;
    for (const char16_t* const path : {u"a\r\nDELE b", u"a\nb", u"\ta", u"a\u0001", u"a\u007f"})
    {
        EXPECT_EQ(ErrorOf(FtpDeleteFileW(client.Get(), Wide(path))), ERROR_INVALID_PARAMETER);
        EXPECT_EQ(ErrorOf(FtpCreateDirectoryW(client.Get(), Wide(path))), ERROR_INVALID_PARAMETER);
        EXPECT_EQ(ErrorOf(FtpRemoveDirectoryW(client.Get(), Wide(path))), ERROR_INVALID_PARAMETER);
        EXPECT_FALSE(client.Open(path, GENERIC_READ));
        EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
        EXPECT_FALSE(client.Open(path, GENERIC_WRITE));
        EXPECT_EQ(FtpFindFirstFileW(client.Get(), Wide(path), &record, 0, 0), nullptr);
        EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
    }
    EXPECT_EQ(server.Commands().size(), before);
    EXPECT_EQ(FtpClient(server.Port(), {.user = u"a\r\nDELE b"}).Error(), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(FtpClient(server.Port(), {.password = u"a\r\nb"}).Error(), ERROR_INVALID_PARAMETER);
}

TEST_F(OddFtp, TheEnvironmentChoosesNoProxyAndNoPassword)
{
    ASSERT_EQ(setenv("ftp_proxy", "http://127.0.0.1:9", 1), 0);
    ASSERT_EQ(setenv("all_proxy", "http://127.0.0.1:9", 1), 0);
    const FtpClient client(server.Port());
    unsetenv("ftp_proxy");
    unsetenv("all_proxy");
    EXPECT_TRUE(client.IsConnected()) << client.Error();
}

TEST_F(OddFtp, WithoutAUserTheAnonymousOneIsMeant)
{
    const FtpClient client(server.Port(), {.user = u"", .password = u""});
    EXPECT_TRUE(client.IsConnected());
    EXPECT_EQ(server.Count("USER anonymous"), 1);
}

TEST_F(OddFtp, HostsThatAreNoneAreNotResolved)
{
    const InternetHandle root(InternetOpenW(Wide(u"FTP"), 0, nullptr, nullptr, 0));
    for (const char16_t* const host : {u"", u"127.0.0.1/x", u"a@127.0.0.1", u"127.0.0.1#", u"a b"})
    {
        EXPECT_EQ(InternetConnectW(root.Get(), Wide(host), 21, Wide(u"a"), Wide(u"b"),
                                   INTERNET_SERVICE_FTP, INTERNET_FLAG_PASSIVE, 0),
                  nullptr);
        EXPECT_EQ(GetLastError(), ERROR_INTERNET_NAME_NOT_RESOLVED);
    }
}

// ---- Threads ----

TEST_F(OddFtp, EightThreadsHaveAConnectionEach)
{
    server.WriteFile("/a", std::string(100000, 'x'));
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i)
    {
        threads.emplace_back([this, i] {
            const FtpClient client(server.Port());
            const std::u16string name = u"t" + std::u16string(1, static_cast<char16_t>(u'0' + i));
            for (int round = 0; round < 20; ++round)
            {
                EXPECT_EQ(client.Read(u"a")->size(), 100000U);
                EXPECT_EQ(client.Write(name, "12345"), 0U);
                EXPECT_NE(client.List(u"*").Find(name), nullptr);
                EXPECT_FALSE(client.Open(u"none", GENERIC_READ));
                EXPECT_EQ(ReadLastReply().code, 550U);
                EXPECT_TRUE(FtpDeleteFileW(client.Get(), Wide(name)));
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(server.Logins(), 8);
}

} // namespace
} // namespace tarnwell::test
