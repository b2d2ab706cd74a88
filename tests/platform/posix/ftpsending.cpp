// What is never sent to an FTP server, and to which none is ever spoken; and many threads at once.
#include "platform/posix/oddftp.h"

#include <thread>

namespace tarnwell::test
{
namespace
{

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

TEST_F(OddFtp, AHostMayHaveAName)
{
    posix::FtpServerAddress address = Address();
    address.host = "localhost";
    posix::FtpConnection connection(address);
    ASSERT_EQ(connection.LogIn(), 0U);
    server.WriteFile("/a", "1");
    std::vector<posix::ListedEntry> entries;
    bool isMissing = false;
    EXPECT_EQ(connection.List("", entries, isMissing), 0U);
    EXPECT_EQ(entries.size(), 1U);
    server.DropConnections();
    ASSERT_TRUE(server.SeesTheEndOf(1));
    EXPECT_EQ(connection.Command("MKD", "sub"), 0U) << "and is looked up again";
}

TEST_F(OddFtp, HostsThatAreNoneAreNotResolved)
{
    const InternetHandle root(InternetOpenW(Wide(u"FTP"), 0, nullptr, nullptr, 0));
    // The last is asked for, and has a label that no name can have.
    const std::u16string tooLong = std::u16string(64, u'x') + u".example";
    for (const std::u16string& host :
         {std::u16string(), std::u16string(u"127.0.0.1/x"), std::u16string(u"a@127.0.0.1"),
          std::u16string(u"127.0.0.1#"), std::u16string(u"a b"), tooLong})
    {
        EXPECT_EQ(InternetConnectW(root.Get(), Wide(host), 21, Wide(u"a"), Wide(u"b"),
                                   INTERNET_SERVICE_FTP, INTERNET_FLAG_PASSIVE, 0),
                  nullptr);
        EXPECT_EQ(GetLastError(), ERROR_INTERNET_NAME_NOT_RESOLVED);
    }
}

// By number, as whoever kept one would use it.
TEST_F(OddFtp, AClosedHandleIsAnInvalidOne)
{
    server.WriteFile("/a", "12345");
    FtpClient client(server.Port());
    const HINTERNET closed = client.Get();
    InternetHandle file = client.Open(u"a", GENERIC_READ);
    const HINTERNET closedFile = file.Get();
    WIN32_FIND_DATAW record;
    HINTERNET find = FtpFindFirstFileW(closed, Wide(u"*"), &record, INTERNET_FLAG_RELOAD, 0);
    EXPECT_EQ(find, nullptr) << "the file is open";
    file.Close();
    find = FtpFindFirstFileW(closed, Wide(u"*"), &record, INTERNET_FLAG_RELOAD, 0);
    ASSERT_NE(find, nullptr);
    EXPECT_TRUE(InternetCloseHandle(find));
    client.Close();
    const std::size_t commands = server.Commands().size();
    char byte = 0;
    DWORD count = 0;
    EXPECT_EQ(ErrorOf(InternetReadFile(closedFile, &byte, 1, &count)), ERROR_INVALID_HANDLE);
    EXPECT_EQ(ErrorOf(InternetWriteFile(closedFile, &byte, 1, &count)), ERROR_INVALID_HANDLE);
    EXPECT_EQ(ErrorOf(InternetFindNextFileW(find, &record)), ERROR_INVALID_HANDLE);
    EXPECT_EQ(FtpFindFirstFileW(closed, Wide(u"*"), &record, INTERNET_FLAG_RELOAD, 0), nullptr);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
    EXPECT_EQ(FtpOpenFileW(closed, Wide(u"a"), GENERIC_READ, FTP_TRANSFER_TYPE_BINARY, 0), nullptr);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
    EXPECT_EQ(ErrorOf(FtpDeleteFileW(closed, Wide(u"a"))), ERROR_INVALID_HANDLE);
    EXPECT_EQ(ErrorOf(FtpCreateDirectoryW(closed, Wide(u"a"))), ERROR_INVALID_HANDLE);
    EXPECT_EQ(ErrorOf(FtpRemoveDirectoryW(closed, Wide(u"a"))), ERROR_INVALID_HANDLE);
    for (const HINTERNET handle : {closed, closedFile, find})
        EXPECT_EQ(ErrorOf(InternetCloseHandle(handle)), ERROR_INVALID_HANDLE);
    EXPECT_LE(server.Commands().size(), commands + 1) << "QUIT at most";
}

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
