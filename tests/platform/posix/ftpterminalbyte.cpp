// Names with the byte FF, which some servers take for the beginning of a command to a terminal.
#include "platform/posix/oddftp.h"
#include "support/ftp/posix/realserver.h"

#include <tarnwell/text.h>

#include <algorithm>

namespace tarnwell::test
{
namespace
{

using testing::ElementsAre;
using testing::UnorderedElementsAreArray;

constexpr const char* interruption = "NO\xFF\xF4OP";
constexpr const char* doubledInterruption = "NO\xFF\xFF\xF4OP";
// "a", FF, "b".
const std::u16string name = {u'a', u'\xDCFF', u'b'};

class OddFtpTerminal : public OddFtp
{
protected:
    // What was sent since the login, without what asks for a data connection.
    std::vector<std::string> Sent() const
    {
        std::vector<std::string> sent = server.Commands();
        const auto isAside = [](const std::string& line) {
            for (const char* const word : {"USER", "PASS", "PWD", "EPSV", "TYPE", "QUIT"})
            {
                if (line.starts_with(word))
                    return true;
            }
            return false;
        };
        std::erase_if(sent, isAside);
        return sent;
    }
};

TEST_F(OddFtpTerminal, OtherNamesCostNoQuestion)
{
    const FtpClient client(server.Port());
    EXPECT_EQ(client.Write(u"\xDCFE", "1"), 0U);
    EXPECT_THAT(Sent(), ElementsAre("STOR \xFE"));
}

TEST_F(OddFtpTerminal, IsIgnoredByServersThatDoNotKnowAnInterruption)
{
    const FtpClient client(server.Port());
    EXPECT_EQ(client.Write(name, "1"), 0U);
    EXPECT_EQ(client.Read(name), "1");
    EXPECT_TRUE(FtpDeleteFileW(client.Get(), Wide(name)));
    EXPECT_TRUE(FtpCreateDirectoryW(client.Get(), Wide(name)));
    EXPECT_EQ(client.List(name + u"/*").error, ERROR_NO_MORE_FILES);
    EXPECT_TRUE(FtpRemoveDirectoryW(client.Get(), Wide(name)));
    EXPECT_THAT(Sent(), ElementsAre(interruption,
                                    "STOR a\xFF"
                                    "b",
                                    "RETR a\xFF"
                                    "b",
                                    "DELE a\xFF"
                                    "b",
                                    "MKD a\xFF"
                                    "b",
                                    "CWD a\xFF"
                                    "b",
                                    "MLSD", "LIST -a", "LIST", "CWD /",
                                    "RMD a\xFF"
                                    "b"));
}

// Such as those that drop it there, because some clients send it ahead of "ABOR".
TEST_F(OddFtpTerminal, IsNotDoubledForServersThatKnowAnInterruptionAheadOfCommandsOnly)
{
    for (const char* const ahead : {"\xFF\xF4", "\xFF\xF4\xFF\xF2"})
        server.Answer(std::string(ahead) + "NOOP", {"200 yes?\r\n"});
    const FtpClient client(server.Port());
    EXPECT_EQ(client.Write(name, "1"), 0U);
    EXPECT_EQ(server.Count("STOR a\xFF"
                           "b"),
              1);
}

TEST_F(OddFtpTerminal, IsDoubledForServersThatObeyOne)
{
    server.Answer(interruption, {"200 yes?\r\n"});
    const FtpClient client(server.Port());
    EXPECT_TRUE(FtpCreateDirectoryW(client.Get(), Wide(name)));
    client.List(name + u"/*");
    client.Write(name + u"/\xDCFF\xDCFF", "1");
    client.Read(name);
    const std::vector<std::string> sent = Sent();
    EXPECT_THAT(std::vector(sent.begin(), sent.begin() + 3),
                ElementsAre(interruption, doubledInterruption,
                            "MKD a\xFF\xFF"
                            "b"));
    EXPECT_EQ(server.Count("CWD a\xFF\xFF"
                           "b"),
              1);
    EXPECT_EQ(server.Count("STOR a\xFF\xFF"
                           "b/\xFF\xFF\xFF\xFF"),
              1);
    EXPECT_EQ(server.Count("RETR a\xFF\xFF"
                           "b"),
              1);
    EXPECT_EQ(server.Count("NO\xFF"), 2) << "asked once";
}

TEST_F(OddFtpTerminal, IsRefusedUnsentWhereNoSpellingIsReadRightly)
{
    server.Answer(interruption, {"200 yes?\r\n"});
    server.Answer(doubledInterruption, {"200 yes?\r\n"});
    const FtpClient client(server.Port());
    EXPECT_EQ(ErrorOf(FtpDeleteFileW(client.Get(), Wide(name))), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(client.Write(name, "1"), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(client.List(name + u"/*").error, ERROR_INVALID_PARAMETER);
    for (const char* const word : {"DELE", "STOR", "CWD"})
        EXPECT_EQ(server.Count(word), 0) << word;
    EXPECT_TRUE(FtpCreateDirectoryW(client.Get(), Wide(u"sub"))) << "other names are served";
}

TEST_F(OddFtpTerminal, IsNotSentWhileTheAnswerTellsNothing)
{
    const FtpClient client(server.Port());
    for (const char* const answer : {"450 busy\r\n", "530 who are you?\r\n", "550 no\r\n"})
    {
        server.Answer(interruption, {answer});
        EXPECT_EQ(ErrorOf(FtpDeleteFileW(client.Get(), Wide(name))), ERROR_INTERNET_EXTENDED_ERROR);
        EXPECT_EQ(std::to_string(ReadLastReply().code), std::string(answer).substr(0, 3));
    }
    EXPECT_EQ(server.Count("DELE"), 0);
    server.BehaveAgain(interruption);
    server.WriteFile("/a\xFF"
                     "b",
                     "1");
    EXPECT_TRUE(FtpDeleteFileW(client.Get(), Wide(name)));
}

// Where the login folder has it in its name, that name may be written in either way.
TEST_F(OddFtpTerminal, OfTheLoginFolderIsNeverSent)
{
    server.MakeFolder("/in\xFF"
                      "to");
    server.MakeFolder("/in\xFF"
                      "to/sub");
    server.WriteFile("/in\xFF"
                     "to/a",
                     "1");
    server.BeginAt("/in\xFF"
                   "to");
    const FtpClient client(server.Port());
    EXPECT_EQ(client.List(u"sub/*").error, ERROR_NO_MORE_FILES);
    EXPECT_EQ(client.Read(u"a"), "1");
    EXPECT_EQ(server.Count("CWD /"), 0);
    EXPECT_EQ(server.Logins(), 2) << "a new login is there as well";
}

TEST_F(OddFtpTerminal, IsNotSentInALogon)
{
    EXPECT_EQ(FtpClient(server.Port(), {.user = name}).Error(), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(FtpClient(server.Port(), {.password = name}).Error(), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(server.Connections(), 0);
}

// ---- Real servers ----

class FtpServersTerminal : public testing::TestWithParam<FtpServerKind>
{
protected:
    std::vector<std::string> Stored() const
    {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(server.Folder()))
            names.push_back(entry.path().filename().string());
        return names;
    }

    const RealFtpServer server{GetParam()};
    const FtpClient client{server.Port()};
};

INSTANTIATE_TEST_SUITE_P(Real, FtpServersTerminal, testing::ValuesIn(allFtpServers),
                         testing::PrintToStringParamName());

// What each of them makes of the bytes as they are, which is why they are spelt for them.
TEST_P(FtpServersTerminal, ReadTheByteInTheirOwnWay)
{
    posix::FtpConnection connection({.host = "127.0.0.1",
                                     .port = static_cast<unsigned>(server.Port()),
                                     .user = "ftp",
                                     .password = "secret"});
    ASSERT_EQ(connection.LogIn(), 0U);
    // In the word of the command, so that nothing spells them.
    for (const char* const folder : {"MKD x\xFFy", "MKD x\xFF\xFFy", "MKD x\xFF\xF4z"})
        connection.Command(folder, "1");
    const std::vector<std::string> obeying{"x\xFFy 1", "xz 1"};
    const std::vector<std::string> ignoring{"x\xFFy 1", "x\xFF\xFFy 1", "x\xFF\xF4z 1"};
    EXPECT_THAT(Stored(), UnorderedElementsAreArray(
                              GetParam() == FtpServerKind::Proftpd ? obeying : ignoring));
}

// With all that another reading could make of them beside them.
TEST_P(FtpServersTerminal, StoreListReadAndDeleteExactlyTheName)
{
    std::vector<std::string> names{"ab",           "a",     "b",         "x\xFF\xFFz",
                                   "x\xFFz",       "xz",    "\xFF",      "\xFF\xFF",
                                   "\xFF\xFF\xFF", "e\xFF", "e\xFF\xFF", "e"};
    // Behind it, what would be commands, and what wouldn't.
    for (const unsigned byte : {0x20U, 0x62U, 0x80U, 0xE4U, 0xEFU, 0xF0U, 0xF1U, 0xF2U, 0xF3U,
                                0xF4U, 0xF8U, 0xFAU, 0xFBU, 0xFCU, 0xFDU, 0xFEU})
    {
        names.push_back(std::string("a\xFF") + static_cast<char>(byte));
        names.push_back(std::string("a\xFF") + static_cast<char>(byte) + "b");
    }
    for (const std::string& each : names)
        EXPECT_EQ(client.Write(DecodeName(each), each), 0U);
    EXPECT_THAT(Stored(), UnorderedElementsAreArray(names));
    std::vector<std::string> listed;
    for (const std::u16string& each : client.List(u"*").Names())
        listed.push_back(EncodeName(each).value());
    EXPECT_THAT(listed, UnorderedElementsAreArray(names));
    std::reverse(names.begin(), names.end());
    while (!names.empty())
    {
        const std::u16string last = DecodeName(names.back());
        EXPECT_EQ(client.Read(last), names.back());
        EXPECT_TRUE(FtpDeleteFileW(client.Get(), Wide(last)));
        names.pop_back();
        EXPECT_THAT(Stored(), UnorderedElementsAreArray(names));
    }
    EXPECT_EQ(server.Logins(), 1);
}

TEST_P(FtpServersTerminal, HaveFoldersOfSuchNames)
{
    const std::u16string folder = name + u"\xDCFF";
    ASSERT_TRUE(FtpCreateDirectoryW(client.Get(), Wide(folder)));
    EXPECT_EQ(client.Write(folder + u"/" + name, "1"), 0U);
    EXPECT_THAT(client.List(folder + u"/*").Names(), ElementsAre(name));
    EXPECT_EQ(client.List(folder + u"/" + name).records.size(), 1U);
    EXPECT_EQ(client.Read(folder + u"/" + name), "1");
    EXPECT_FALSE(FtpRemoveDirectoryW(client.Get(), Wide(folder)));
    EXPECT_TRUE(FtpDeleteFileW(client.Get(), Wide(folder + u"/" + name)));
    EXPECT_TRUE(FtpRemoveDirectoryW(client.Get(), Wide(folder)));
    EXPECT_THAT(Stored(), testing::IsEmpty());
}

// By itself and behind a letter.
TEST_P(FtpServersTerminal, HaveEveryByteThatIsNoText)
{
    std::vector<std::string> names;
    for (unsigned byte = 0x80; byte <= 0xFF; ++byte)
    {
        names.emplace_back(1, static_cast<char>(byte));
        names.push_back("b" + names.back());
    }
    for (const std::string& each : names)
        EXPECT_EQ(client.Write(DecodeName(each), each), 0U);
    EXPECT_THAT(Stored(), UnorderedElementsAreArray(names));
    EXPECT_EQ(client.List(u"*").records.size(), names.size());
    for (const std::string& each : names)
    {
        EXPECT_EQ(client.Read(DecodeName(each)), each);
        EXPECT_TRUE(FtpDeleteFileW(client.Get(), Wide(DecodeName(each))));
    }
    EXPECT_THAT(Stored(), testing::IsEmpty());
}

} // namespace
} // namespace tarnwell::test
