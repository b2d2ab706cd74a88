// Perforce on Linux: names as bytes, and clients that do what no ordinary one does.
#include "module/perforcetest.h"
#include "support/posix/standinclient.h"

namespace tarnwell::test
{
namespace
{

using testing::SizeIs;

class PerforceNames : public PerforceServerTest
{
};

TEST_F(PerforceNames, OfBytesAreListedAndOpened)
{
    for (const std::string name : {"\xC3\xA4.txt", "\xE6\x97\xA5.txt", "\xF0\x9F\x98\x80.txt"})
        server_->Submit(name, name);
    const auto items = List(server_->Address());
    ASSERT_THAT(items, SizeIs(3));
    EXPECT_EQ(items[0].name, u"\u00c3\u00a4.txt#1") << "a character for each byte";
    for (const Facts& facts : items)
    {
        EXPECT_EQ(Content(facts.path).size(), facts.size);
        EXPECT_EQ(FileFacts(facts.path), facts);
        EXPECT_THAT(Revisions(facts.path), SizeIs(1));
    }
}

TEST_F(PerforceNames, ThatAreTypedAreOpened)
{
    for (const auto& [name, typed] :
         {std::pair{"\xC3\xA4.txt", u"\u00e4.txt"}, std::pair{"\xE6\x97\xA5.txt", u"\u65e5.txt"},
          std::pair{"\xF0\x9F\x98\x80", u"\U0001F600"}})
    {
        server_->Submit(name, name);
        const std::u16string address = server_->Address() + u"/" + std::u16string(typed);
        EXPECT_EQ(Content(address), name);
        const auto list = Revisions(address);
        ASSERT_THAT(list, SizeIs(1));
        EXPECT_EQ(Content(list[0].uri), name);
    }
}

TEST_F(PerforceNames, ThatAreListedStandBesideTypedOnes)
{
    server_->Submit("\xC3\xB6/\xE6\x97\xA5.txt", "x");
    const auto folders = List(server_->Address());
    ASSERT_THAT(folders, SizeIs(1));
    EXPECT_EQ(Content(folders[0].path + u"/\u65e5.txt"), "x");
}

class PerforceBytes : public PerforceClientTest
{
protected:
    PerforceBytes() : PerforceClientTest("only the stand-in prints what it is told to") {}
};

TEST_F(PerforceBytes, OfALabelReachTheClient)
{
    List(folder_ + u"@\u00e4");
    EXPECT_EQ(depot_.Runs().back(), "dirs|//depot/base/*@\xC3\xA4");
}

// Lines end in a line feed alone here, and a carriage return in front of one is none of a name's.
TEST_F(PerforceBytes, OfBothLineEndsAreTheSame)
{
    depot_.PrintBytes("fstat", "... depotFile //a\r\n\r\n... depotFile //b\n\n... depotFile //c\n");
    const auto items = List(folder_);
    ASSERT_THAT(items, SizeIs(3));
    EXPECT_EQ(items[0].path, u"p4:////a#0");
    EXPECT_EQ(items[2].path, u"p4:////c#0");
}

// Whatever a client does with the file that it is to write, named "$TARGET" here.
class OddPerforceClients : public PerforceTest
{
protected:
    Outcome FailureWith(const std::string& body) const
    {
        const StandInClient client("p4",
                                   "while [ \"$1\" != -o ]; do shift; done; TARGET=$2\n" + body);
        return FailedOpen(address_);
    }

    const std::u16string address_ = u"p4:////depot/a";
    const TempFolder folder_;
};

TEST_F(OddPerforceClients, WhatIsNoFileIsNeverShown)
{
    WriteBytes(folder_ / u"secret", "secret");
    const std::string secret = (folder_.Path() / "secret").string();
    for (const std::string& body :
         {"ln -sf '" + secret + "' \"$TARGET\"", std::string("rm \"$TARGET\"; mkfifo \"$TARGET\""),
          std::string("rm \"$TARGET\"; mkdir \"$TARGET\""), std::string("rm \"$TARGET\"")})
    {
        const Outcome outcome = FailureWith(body);
        EXPECT_THAT(outcome,
                    FailedSomehow(u"Failed to open \"" + address_ + u"\" for reading or writing."));
    }
    EXPECT_EQ(ReadBytes(folder_ / u"secret"), "secret");
}

TEST_F(OddPerforceClients, NothingIsLeftOfOneThatComplains)
{
    const Outcome outcome =
        FailureWith("echo half >\"$TARGET\"; chmod 400 \"$TARGET\"; echo no >&2; exit 1");
    EXPECT_EQ(outcome.status, E_FAIL);
    EXPECT_TRUE(WithLineFeeds(outcome.error->text).starts_with(P4Failed(address_, u"no ")));
}

TEST_F(OddPerforceClients, WritesWhereNobodyElseCanRead)
{
    const StandInClient client(
        "p4", "while [ \"$1\" != -o ]; do shift; done; stat -c %a \"$(dirname \"$2\")\" >\"$2\"");
    EXPECT_EQ(Content(address_), "700\n");
}

// Whatever it has written by then is not content.
TEST_F(OddPerforceClients, ThatASignalEndsHaveFailed)
{
    for (const std::string words : {"", "echo 'no such file(s)' >&2; "})
    {
        const Outcome outcome = FailureWith("echo half >\"$TARGET\"; " + words + "kill -9 $$");
        EXPECT_THAT(outcome, Failed(Win32Status(1067),
                                    u"An error occurred while communicating with Perforce."));
    }
    const StandInClient client("p4", "kill -9 $$");
    EXPECT_THAT(FailedList(address_),
                Failed(Win32Status(1067), u"An error occurred while communicating with Perforce."));
    EXPECT_FALSE(HasRevisions(address_));
}

TEST_F(OddPerforceClients, GetNoInputAndMayTalkOnTheSide)
{
    const StandInClient client("p4", "while [ \"$1\" != -o ]; do shift; done\n"
                                     "cat >\"$2\"; yes | head -c 1000000; echo done >>\"$2\"");
    EXPECT_EQ(Content(address_), "done\n");
}

} // namespace
} // namespace tarnwell::test
