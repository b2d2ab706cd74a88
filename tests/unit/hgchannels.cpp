// What Mercurial's command server says, in any pieces.
#include "mercurial/hgchannels.h"

#include "mercurial/hgstrict.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace tarnwell::test
{
namespace
{

using namespace std::literals;
using testing::ElementsAre;
using testing::IsEmpty;

struct Read
{
    // A channel and all of its message, or the number of a wish.
    std::vector<std::pair<char, std::string>> messages;
    bool isBroken;
    bool isBetween;
};

Read ReadInPieces(const std::string& bytes, std::size_t piece)
{
    HgChannels channels;
    Read read{};
    bool isNew = true;
    for (std::size_t at = 0; at < bytes.size(); at += piece)
    {
        const std::string fed = bytes.substr(at, piece);
        channels.Feed(fed);
        while (const std::optional<HgPiece> next = channels.Next())
        {
            if (isNew)
                read.messages.emplace_back(next->channel, "");
            read.messages.back().second += next->bytes;
            if (next->channel == 'I' || next->channel == 'L')
                read.messages.back().second = std::to_string(next->wanted);
            isNew = next->isWhole;
        }
    }
    read.isBroken = channels.IsBroken();
    read.isBetween = channels.IsBetween();
    return read;
}

TEST(HgChannels, AreReadInPiecesOfAnySize)
{
    const std::string bytes = "o\0\0\0\5hello"s + "e\0\0\0\1!"s + "o\0\0\0\0"s + "I\0\0\x10\0"s +
                              "L\0\0\0\7"s + "o\0\0\1\0"s + std::string(256, 'x') +
                              "r\0\0\0\4\0\0\0\1"s;
    for (const std::size_t piece : {1U, 2U, 3U, 7U, 100U, 1000U})
    {
        const Read read = ReadInPieces(bytes, piece);
        EXPECT_THAT(read.messages,
                    ElementsAre(std::pair{'o', "hello"s}, std::pair{'e', "!"s}, std::pair{'o', ""s},
                                std::pair{'I', "4096"s}, std::pair{'L', "7"s},
                                std::pair{'o', std::string(256, 'x')}, std::pair{'r', "\0\0\0\1"s}))
            << piece;
        EXPECT_FALSE(read.isBroken);
        EXPECT_TRUE(read.isBetween);
    }
    for (const std::size_t size : {1U, 4U, 5U, 9U})
        EXPECT_FALSE(ReadInPieces(bytes.substr(0, size), 3).isBetween) << size;
}

TEST(HgChannels, ThatMustBeUnderstoodAndArentAreNone)
{
    const Read read = ReadInPieces("m\0\0\0\1xX\0\0\0\1yo\0\0\0\1z"s, 100);
    EXPECT_THAT(read.messages, ElementsAre(std::pair{'m', "x"s}));
    EXPECT_TRUE(read.isBroken);
    for (const char* const text : {"<a><b/>", "{\"a\": 1}", "\xFF\xFF\xFF\xFF\xFF\xFF"})
        EXPECT_TRUE(ReadInPieces(text, 1).isBroken) << text;
}

TEST(HgChannels, TakeCommands)
{
    EXPECT_EQ(HgCommandMessage({"log", "-r", "\"x\""}), "runcommand\n\0\0\0\12log\0-r\0\"x\""s);
    EXPECT_EQ(HgCommandMessage({""}), "runcommand\n\0\0\0\0"s);
    EXPECT_EQ(HgCommandMessage({"a", ""}), "runcommand\n\0\0\0\2a\0"s);
    EXPECT_EQ(HgCommandMessage({std::string(300, 'a')}).substr(11, 4), "\0\0\1\54"s);
}

TEST(HgChannels, EndWithANumber)
{
    EXPECT_EQ(ReadHgResult("\0\0\0\0"s), 0);
    EXPECT_EQ(ReadHgResult("\0\0\0\xFF"s), 255);
    EXPECT_EQ(ReadHgResult("\xFF\xFF\xFF\xFF"s), -1);
    for (const std::string& bad : {""s, "\0\0\0"s, "\0\0\0\0\0"s})
        EXPECT_FALSE(ReadHgResult(bad));
}

TEST(HgChannels, BeginWithWhatTheServerCan)
{
    EXPECT_TRUE(IsHgGreeting("capabilities: getencoding runcommand\nencoding: UTF-8\npid: 1"));
    EXPECT_TRUE(IsHgGreeting("capabilities: runcommand"));
    for (const char* const bad :
         {"", "capabilities: getencoding\nencoding: runcommand", "capabilities: runcommands",
          "encoding: UTF-8\ncapabilities: runcommand"})
        EXPECT_FALSE(IsHgGreeting(bad)) << bad;
}

TEST(HgNamesInItsLanguages, HaveNoMeaning)
{
    EXPECT_EQ(HgQuoted("v1"), "\"v1\"");
    EXPECT_EQ(HgQuoted("a\"b"), "\"a\\x22b\"");
    EXPECT_EQ(HgQuoted("{x}\\\n\xFF%'"), "\"\\x7bx\\x7d\\x5c\\x0a\\xff\\x25\\x27\"");
    EXPECT_EQ(HgPathPattern("set:x"), "path:set:x");
    EXPECT_EQ(HgFilesPattern("set:x"), "rootfilesin:set:x");
}

// The client of one system takes it for what separates names.
TEST(HgNamesInItsLanguages, ABackslashIsPartOfAName)
{
    EXPECT_EQ(HgPathPattern("a.b\\c d\xC3\xA9/e"), "re:^a\\.b\\\\c\\ d\xC3\xA9\\/e(?:/|$)");
    EXPECT_EQ(HgFilesPattern("a\\b"), "re:^a\\\\b/[^/]+$");
}

TEST(HgVersions, AreNewEnoughToLeaveSettingsAlone)
{
    for (const char* const version : {"Mercurial Distributed SCM (version 6.3.2)\n",
                                      "x (version 5.9rc0)", "(version 10.0)", "(version 6)"})
        EXPECT_TRUE(LeavesHgSettings(version)) << version;
    for (const char* const version :
         {"", "Mercurial Distributed SCM (version 5.8.1)\n", "(version 4.9.1)", "(version unknown)",
          "version 6.3.2", "(version "})
        EXPECT_FALSE(LeavesHgSettings(version)) << version;
}

} // namespace
} // namespace tarnwell::test
