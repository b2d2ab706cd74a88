// Downloads and uploads that break, stop or are left.
#include "platform/posix/oddftp.h"

namespace tarnwell::test
{
namespace
{

using posix::FtpConnection;

TEST_F(OddFtp, ALyingPassiveAddressIsIgnored)
{
    server.WriteFile("/a", "12345");
    server.ClaimAddress("10,255,255,1");
    const FtpClient client(server.Port());
    EXPECT_EQ(client.Read(u"a"), "12345");
}

// What a file gives up to its first failure; an end is none.
std::string ReadUntilItFails(const InternetHandle& file)
{
    std::string bytes;
    char buffer[16];
    DWORD count = 0;
    while (InternetReadFile(file.Get(), buffer, sizeof buffer, &count))
    {
        if (count == 0)
            return "an end";
        bytes.append(buffer, count);
    }
    return bytes;
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
        const InternetHandle file = client.Open(u"a", GENERIC_READ);
        ASSERT_TRUE(file) << "it has begun";
        EXPECT_THAT(ReadUntilItFails(file), testing::AnyOf("", "12345"));
        EXPECT_THAT(GetLastError(),
                    testing::AnyOf(ERROR_INTERNET_CONNECTION_RESET, ERROR_INTERNET_EXTENDED_ERROR));
    }
    server.BehaveAgain("RETR");
    server.WriteFile("/a", "67890");
    EXPECT_EQ(client.Read(u"a"), "67890") << "nothing is left for the next one";
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

// Which nobody is told, and which isn't taken for the answer to what comes next.
TEST_F(OddFtp, AnUploadEndsWithTheServersLastWord)
{
    const FtpClient client(server.Port());
    EXPECT_TRUE(client.Open(u"empty", GENERIC_WRITE)) << "and closed, unwritten";
    EXPECT_EQ(server.File("/empty"), "");
    server.Answer("STOR", {.first = "150 go on\r\n", .last = "552 disk full\r\n", .takes = 1});
    for (int i = 0; i < 3; ++i)
    {
        EXPECT_TRUE(client.Open(u"refused", GENERIC_WRITE));
        EXPECT_EQ(client.Read(u"empty"), "");
    }
    EXPECT_EQ(server.Logins(), 1);
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

} // namespace
} // namespace tarnwell::test
