// FTP with a server that behaves well.
#include "platform/ftp.h"
#include "support/ftp/scriptedserver.h"
#include "support/wine.h"

#include <gmock/gmock.h>

namespace tarnwell::test
{
namespace
{

using testing::UnorderedElementsAre;

TEST(Ftp, AFileGoesUpAndComesBack)
{
    const ScriptedFtpServer server;
    const FtpClient client(server.Port());
    ASSERT_TRUE(client.IsConnected()) << client.Error();
    std::string bytes(300000, '\0');
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<char>(i * 7 + i / 251);
    EXPECT_EQ(client.Write(u"a.bin", bytes), 0U);
    EXPECT_EQ(client.Read(u"a.bin"), bytes);
    EXPECT_EQ(server.File("/a.bin"), bytes);
    EXPECT_EQ(server.Logins(), 1);
}

// Smaller ones than come at once over the connection, and larger.
TEST(Ftp, AFileIsReadInPiecesOfAnySize)
{
    ScriptedFtpServer server;
    std::string bytes(3'000'000, '\0');
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<char>(i * 7 + i / 251);
    server.WriteFile("/a.bin", bytes);
    const FtpClient client(server.Port());
    const InternetHandle file = client.Open(u"a.bin", GENERIC_READ);
    ASSERT_TRUE(file) << GetLastError();
    constexpr DWORD sizes[] = {1, 1000, 16384, 70001, 0, 300000};
    std::vector<char> buffer(300000);
    std::string read;
    DWORD count = 1;
    for (std::size_t i = 0; read.size() < bytes.size() && i < bytes.size(); ++i)
    {
        ASSERT_TRUE(InternetReadFile(file.Get(), buffer.data(), sizes[i % 6], &count));
        ASSERT_LE(count, sizes[i % 6]);
        read.append(buffer.data(), count);
    }
    EXPECT_TRUE(read == bytes) << "in " << read.size() << " bytes";
    ASSERT_TRUE(InternetReadFile(file.Get(), buffer.data(), 1, &count));
    EXPECT_EQ(count, 0U);
}

TEST(Ftp, AFolderIsListed)
{
    ScriptedFtpServer server;
    server.MakeFolder("/sub");
    server.MakeFolder("/sub/inner");
    server.WriteFile("/sub/file.txt", "12345");
    const FtpClient client(server.Port());
    const Listing listing = client.List(u"sub/*");
    EXPECT_THAT(listing.Names(), UnorderedElementsAre(u"inner", u"file.txt"));
    EXPECT_EQ(listing.error, ERROR_NO_MORE_FILES);
    const WIN32_FIND_DATAW* const file = listing.Find(u"file.txt");
    const WIN32_FIND_DATAW* const inner = listing.Find(u"inner");
    ASSERT_TRUE(file != nullptr && inner != nullptr);
    EXPECT_EQ(SizeOf(*file), 5U);
    EXPECT_EQ(file->dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY, 0U);
    EXPECT_NE(inner->dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY, 0U);
    EXPECT_NE(WriteTimeOf(*file), 0U);
}

TEST(Ftp, FoldersAreMadeAndRemovedAndFilesDeleted)
{
    ScriptedFtpServer server;
    const FtpClient client(server.Port());
    EXPECT_TRUE(FtpCreateDirectoryW(client.Get(), Wide(u"sub")));
    EXPECT_TRUE(server.HasFolder("/sub"));
    EXPECT_EQ(client.Write(u"sub/file", "1"), 0U);
    EXPECT_TRUE(FtpDeleteFileW(client.Get(), Wide(u"sub/file")));
    EXPECT_FALSE(server.File("/sub/file").has_value());
    EXPECT_TRUE(FtpRemoveDirectoryW(client.Get(), Wide(u"sub")));
    EXPECT_FALSE(server.HasFolder("/sub"));
}

TEST(Ftp, ARefusalHasTheServersWords)
{
    ScriptedFtpServer server;
    server.Answer("DELE", {"550-it stays\r\n550 because I say so\r\n"});
    const FtpClient client(server.Port());
    EXPECT_FALSE(FtpDeleteFileW(client.Get(), Wide(u"file")));
    EXPECT_EQ(GetLastError(), ERROR_INTERNET_EXTENDED_ERROR);
    const LastReply reply = ReadLastReply();
    EXPECT_NE(reply.text.find(u"550 because I say so"), std::u16string::npos);
    if (IsUnderWine())
        GTEST_SKIP() << "Wine gives the last line only, and a code of its own";
    EXPECT_EQ(reply.code, 550U);
    EXPECT_EQ(reply.text, u"550-it stays\r\n550 because I say so\r\n");
}

TEST(Ftp, WhatIsNotThereCannotBeOpened)
{
    const ScriptedFtpServer server;
    const FtpClient client(server.Port());
    EXPECT_FALSE(client.Open(u"none", GENERIC_READ));
    EXPECT_EQ(GetLastError(), ERROR_INTERNET_EXTENDED_ERROR);
}

TEST(Ftp, WithoutAServerThereIsNoConnection)
{
    int port = 0;
    {
        const ScriptedFtpServer server;
        port = server.Port();
    }
    const FtpClient client(port);
    EXPECT_FALSE(client.IsConnected());
    EXPECT_EQ(client.Error(), ERROR_INTERNET_CANNOT_CONNECT);
}

TEST(Ftp, RefusedUsersAreToldFromRefusedPasswords)
{
    if (IsUnderWine())
        GTEST_SKIP() << "Wine calls both ERROR_INTERNET_LOGIN_FAILURE";
    const ScriptedFtpServer server;
    EXPECT_EQ(FtpClient(server.Port(), {.user = u"nobody"}).Error(),
              ERROR_INTERNET_INCORRECT_USER_NAME);
    EXPECT_EQ(FtpClient(server.Port(), {.password = u"wrong"}).Error(),
              ERROR_INTERNET_INCORRECT_PASSWORD);
}

TEST(Ftp, AnEmptyFolderHasNoMoreFiles)
{
    if (IsUnderWine())
        GTEST_SKIP() << "Wine gives error 0";
    ScriptedFtpServer server;
    server.MakeFolder("/sub");
    const FtpClient client(server.Port());
    const Listing listing = client.List(u"sub/*");
    EXPECT_TRUE(listing.records.empty());
    EXPECT_EQ(listing.error, ERROR_NO_MORE_FILES);
}

TEST(Ftp, NamesWithBlanksAreNames)
{
    if (IsUnderWine())
        GTEST_SKIP() << "Wine cuts them";
    const ScriptedFtpServer server;
    const FtpClient client(server.Port());
    EXPECT_EQ(client.Write(u"a b ", "1"), 0U);
    EXPECT_THAT(client.List(u"*").Names(), UnorderedElementsAre(u"a b "));
    EXPECT_EQ(client.Read(u"a b "), "1");
}

TEST(Ftp, NoHandleIsAnInvalidOne)
{
    if (IsUnderWine())
        GTEST_SKIP() << "Wine calls it a handle of the wrong kind";
    WIN32_FIND_DATAW record;
    DWORD count = 0;
    char byte = 0;
    EXPECT_EQ(FtpFindFirstFileW(nullptr, Wide(u"*"), &record, 0, 0), nullptr);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
    EXPECT_EQ(ErrorOf(FtpCreateDirectoryW(nullptr, Wide(u"a"))), ERROR_INVALID_HANDLE);
    EXPECT_EQ(ErrorOf(FtpRemoveDirectoryW(nullptr, Wide(u"a"))), ERROR_INVALID_HANDLE);
    EXPECT_EQ(ErrorOf(FtpDeleteFileW(nullptr, Wide(u"a"))), ERROR_INVALID_HANDLE);
    EXPECT_EQ(ErrorOf(InternetReadFile(nullptr, &byte, 1, &count)), ERROR_INVALID_HANDLE);
    EXPECT_EQ(ErrorOf(InternetWriteFile(nullptr, &byte, 1, &count)), ERROR_INVALID_HANDLE);
    EXPECT_EQ(ErrorOf(InternetFindNextFileW(nullptr, &record)), ERROR_INVALID_HANDLE);
    EXPECT_EQ(ErrorOf(InternetCloseHandle(nullptr)), ERROR_INVALID_HANDLE);
}

TEST(Ftp, ATransferKeepsItsConnectionBusyAndAlive)
{
    ScriptedFtpServer server;
    server.WriteFile("/a", "12345");
    FtpClient client(server.Port());
    const InternetHandle file = client.Open(u"a", GENERIC_READ);
    ASSERT_TRUE(file);
    EXPECT_EQ(ErrorOf(FtpDeleteFileW(client.Get(), Wide(u"a"))), ERROR_FTP_TRANSFER_IN_PROGRESS);
    if (IsUnderWine())
        GTEST_SKIP() << "Wine ends a transfer with its connection's handle";
    client.Close();
    char buffer[16];
    DWORD count = 0;
    EXPECT_TRUE(InternetReadFile(file.Get(), buffer, sizeof buffer, &count));
    EXPECT_EQ(std::string_view(buffer, count), "12345");
}

} // namespace
} // namespace tarnwell::test
