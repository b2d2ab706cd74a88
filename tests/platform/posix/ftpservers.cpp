// FTP with real servers: the same on all of them.
#include "platform/ftp.h"
#include "support/ftp/posix/realserver.h"

#include <tarnwell/text.h>

#include <gmock/gmock.h>

#include <fstream>

namespace tarnwell::test
{
namespace
{

using testing::UnorderedElementsAre;

class FtpServers : public testing::TestWithParam<FtpServerKind>
{
protected:
    std::string Stored(const std::string& path) const
    {
        return ReadBytes((server.Folder() / path).u16string());
    }

    // On this server no folder with a star is made by any client, but used like others.
    void MakeFolder(const std::u16string& path) const
    {
        if (GetParam() == FtpServerKind::Proftpd && path.find(u'*') != std::u16string::npos)
            std::filesystem::create_directory(server.Folder() / *EncodeName(path));
        else
            EXPECT_TRUE(FtpCreateDirectoryW(client.Get(), Wide(path)));
    }

    const RealFtpServer server{GetParam()};
    const FtpClient client{server.Port()};
};

INSTANTIATE_TEST_SUITE_P(Real, FtpServers, testing::ValuesIn(allFtpServers),
                         testing::PrintToStringParamName());

TEST_P(FtpServers, AFileGoesUpAndComesBack)
{
    ASSERT_TRUE(client.IsConnected()) << client.Error();
    std::string bytes(1000000, '\0');
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<char>(i * 7 + i / 251);
    EXPECT_EQ(client.Write(u"a.bin", bytes), 0U);
    EXPECT_EQ(Stored("a.bin"), bytes);
    EXPECT_EQ(client.Read(u"a.bin"), bytes);
    EXPECT_EQ(client.Write(u"empty", ""), 0U);
    EXPECT_EQ(Stored("empty"), "");
    EXPECT_EQ(client.Read(u"empty"), "");
    EXPECT_EQ(server.Logins(), 1);
}

TEST_P(FtpServers, FoldersAreMadeListedAndRemoved)
{
    EXPECT_TRUE(FtpCreateDirectoryW(client.Get(), Wide(u"sub")));
    EXPECT_TRUE(FtpCreateDirectoryW(client.Get(), Wide(u"sub/inner")));
    EXPECT_EQ(client.Write(u"sub/file.txt", "12345"), 0U);
    const Listing listing = client.List(u"sub/*");
    EXPECT_THAT(listing.Names(), UnorderedElementsAre(u"inner", u"file.txt"));
    EXPECT_EQ(listing.error, ERROR_NO_MORE_FILES);
    const WIN32_FIND_DATAW* const file = listing.Find(u"file.txt");
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(SizeOf(*file), 5U);
    EXPECT_EQ(file->dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY, 0U);
    EXPECT_EQ(client.List(u"sub/inner/*").error, ERROR_NO_MORE_FILES);

    EXPECT_FALSE(FtpRemoveDirectoryW(client.Get(), Wide(u"sub")));
    EXPECT_EQ(GetLastError(), ERROR_INTERNET_EXTENDED_ERROR);
    EXPECT_EQ(ReadLastReply().code, 550U);
    EXPECT_TRUE(FtpDeleteFileW(client.Get(), Wide(u"sub/file.txt")));
    EXPECT_TRUE(FtpRemoveDirectoryW(client.Get(), Wide(u"sub/inner")));
    EXPECT_TRUE(FtpRemoveDirectoryW(client.Get(), Wide(u"sub")));
    EXPECT_FALSE(std::filesystem::exists(server.Folder() / "sub"));
    EXPECT_EQ(server.Logins(), 1) << "a refusal keeps the connection";
}

TEST_P(FtpServers, DotFilesAreListed)
{
    EXPECT_TRUE(FtpCreateDirectoryW(client.Get(), Wide(u"sub")));
    EXPECT_EQ(client.Write(u"sub/.hidden", "1"), 0U);
    EXPECT_THAT(client.List(u"sub/*").Names(), UnorderedElementsAre(u".hidden"));
}

TEST_P(FtpServers, TheEntryItselfIsFound)
{
    EXPECT_EQ(client.Write(u"file", "123"), 0U);
    EXPECT_TRUE(FtpCreateDirectoryW(client.Get(), Wide(u"sub")));
    EXPECT_EQ(client.Write(u"sub/file", "12"), 0U);
    const Listing inner = client.List(u"sub/file");
    ASSERT_EQ(inner.records.size(), 1U);
    EXPECT_EQ(SizeOf(inner.records[0]), 2U);
    EXPECT_EQ(client.List(u"file").records.size(), 1U);
    EXPECT_EQ(client.List(u"sub").records.size(), 1U);
    EXPECT_EQ(client.List(u"sub/").records.size(), 1U) << "without the / at the end";
    EXPECT_EQ(client.List(u"").records.size(), 1U) << "the login folder";
    for (const char16_t* const missing : {u"none", u"sub/none", u"none/file", u"none/none/none"})
        EXPECT_EQ(client.List(missing).error, ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(client.List(u"none/*").error, ERROR_INTERNET_EXTENDED_ERROR);
}

TEST_P(FtpServers, RefusedFilesHaveTheServersWords)
{
    EXPECT_FALSE(client.Open(u"none", GENERIC_READ));
    EXPECT_EQ(GetLastError(), ERROR_INTERNET_EXTENDED_ERROR);
    const LastReply reply = ReadLastReply();
    EXPECT_EQ(reply.code, 550U);
    EXPECT_EQ(reply.text.substr(0, 4), u"550 ");
    EXPECT_FALSE(client.Open(u"none/file", GENERIC_WRITE));
    EXPECT_EQ(GetLastError(), ERROR_INTERNET_EXTENDED_ERROR);
    EXPECT_FALSE(FtpDeleteFileW(client.Get(), Wide(u"none")));
    EXPECT_EQ(client.Write(u"file", "1"), 0U);
    EXPECT_EQ(ReadLastReply().code, 0U) << "cleared by what succeeds";
    EXPECT_EQ(server.Logins(), 1);
}

TEST_P(FtpServers, AWrongPasswordIsToldFromAWrongName)
{
    const FtpClient wrong(server.Port(), {.password = u"bad"});
    EXPECT_EQ(wrong.Error(), ERROR_INTERNET_INCORRECT_PASSWORD);
    EXPECT_EQ(ReadLastReply().code, 530U);
}

TEST_P(FtpServers, ActiveConnectionsWorkAsWell)
{
    const FtpClient active(server.Port(), {.flags = 0});
    ASSERT_TRUE(active.IsConnected()) << active.Error();
    EXPECT_EQ(active.Write(u"a", "12345"), 0U);
    EXPECT_EQ(active.Read(u"a"), "12345");
    EXPECT_THAT(active.List(u"*").Names(), UnorderedElementsAre(u"a"));
}

// By exactly that name, whatever is in it.
TEST_P(FtpServers, NamesGoThereAndBack)
{
    const std::string names[] = {
        " leading", "trailing ",   "two  blanks", "-dash",        "#1",         "100%",
        "%41",      "star*",       "what?",       "[a]",          "a;b",        "\"q\"",
        "it's",     "back\\slash", "gr\u00fcn",   "\u65e5\u672c", "\U0001F600", "bad\xfe\x80",
        "~",        "~ftp",        "a:b",         "$HOME",        "a -> b",     "...",
        "{x,y}",    "&amp;",       "|",           "  two",        "`x`",        "=",
        "!",        "a\u00a0b",    "-a",          "bad\xe4",
    };
    ASSERT_TRUE(FtpCreateDirectoryW(client.Get(), Wide(u"sub")));
    for (const std::string& name : names)
    {
        SCOPED_TRACE(name);
        for (const std::u16string& path : {DecodeName(name), u"sub/" + DecodeName(name)})
        {
            EXPECT_EQ(client.Write(path, name), 0U);
            EXPECT_EQ(client.Read(path), name);
            EXPECT_TRUE(std::filesystem::exists(server.Folder() / *EncodeName(path)));
        }
        EXPECT_NE(client.List(u"sub/*").Find(DecodeName(name)), nullptr);
        EXPECT_NE(client.List(u"*").Find(DecodeName(name)), nullptr);
        for (const std::u16string& path : {DecodeName(name), u"sub/" + DecodeName(name)})
        {
            EXPECT_TRUE(FtpDeleteFileW(client.Get(), Wide(path)));
            EXPECT_FALSE(std::filesystem::exists(server.Folder() / *EncodeName(path)));
            MakeFolder(path);
            EXPECT_EQ(client.Write(path + u"/inner", name), 0U);
            EXPECT_EQ(client.Read(path + u"/inner"), name);
            EXPECT_THAT(client.List(path + u"/*").Names(), UnorderedElementsAre(u"inner"));
            EXPECT_EQ(client.List(path + u"/inner").records.size(), 1U);
            EXPECT_TRUE(FtpDeleteFileW(client.Get(), Wide(path + u"/inner")));
            EXPECT_TRUE(FtpRemoveDirectoryW(client.Get(), Wide(path)));
            EXPECT_FALSE(std::filesystem::exists(server.Folder() / *EncodeName(path)));
        }
    }
}

TEST_P(FtpServers, TimesAndSizesAreThoseOfTheFiles)
{
    EXPECT_EQ(client.Write(u"old", "1"), 0U);
    // 2020-02-29 12:34:00 UTC; lists without seconds.
    constexpr std::int64_t moment = 1582979640;
    std::filesystem::last_write_time(
        server.Folder() / "old",
        std::chrono::file_clock::from_sys(std::chrono::sys_seconds(std::chrono::seconds(moment))));
    EXPECT_EQ(client.Write(u"big", ""), 0U);
    std::filesystem::resize_file(server.Folder() / "big", 0x100000005);
    const Listing listing = client.List(u"*");
    const WIN32_FIND_DATAW* const big = listing.Find(u"big");
    const WIN32_FIND_DATAW* const old = listing.Find(u"old");
    ASSERT_TRUE(big != nullptr && old != nullptr);
    EXPECT_EQ(SizeOf(*big), 0x100000005U);
    FILETIME time = {};
    ASSERT_TRUE(LocalFileTimeToFileTime(&old->ftLastWriteTime, &time));
    const std::uint64_t ticks = (std::uint64_t{time.dwHighDateTime} << 32) | time.dwLowDateTime;
    constexpr std::uint64_t secondsTo1970 = 11644473600;
    const std::int64_t seconds = static_cast<std::int64_t>(ticks / 10000000 - secondsTo1970);
    // Where only a list without clocks is to be had, the day stands.
    if (GetParam() == FtpServerKind::Vsftpd)
        EXPECT_EQ(seconds / 86400, moment / 86400);
    else
        EXPECT_EQ(seconds, moment);
}

} // namespace
} // namespace tarnwell::test
