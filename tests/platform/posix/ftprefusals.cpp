// What is refused on the way to a listing, and what that says.
#include "platform/posix/oddftp.h"

namespace tarnwell::test
{
namespace
{

using testing::ElementsAre;

// Without asking for a user; in between, so that the new connection is in another folder.
TEST_F(OddFtp, AGreetingThatLogsInIsThatOfANewConnection)
{
    server.MakeFolder("/sub");
    server.WriteFile("/sub/right", "1");
    server.WriteFile("/wrong", "1");
    server.Answer("", {"230 you are in\r\n"});
    const FtpClient client(server.Port());
    server.Answer("CWD sub", {.first = "250 fine\r\n", .hangsUp = true});
    // Whether the first listing meets the lost connection or the new one is a matter of moments;
    // the second finds the connection lost.
    for (int i = 0; i < 2; ++i)
        EXPECT_EQ(client.List(u"sub/*").Find(u"wrong"), nullptr);
    EXPECT_GE(server.Connections(), 2) << "made anew";
}

TEST_F(OddFtp, ARefusedDataConnectionSaysNothingOfTheListing)
{
    server.OfferFacts();
    server.WriteFile("/a", "1");
    const FtpClient client(server.Port());
    server.Answer("EPSV", {"502 not now\r\n"});
    server.Answer("PASV", {"502 not now\r\n"});
    EXPECT_EQ(client.List(u"*").error, ERROR_INTERNET_EXTENDED_ERROR);
    EXPECT_EQ(server.Count("LIST"), 0);
    server.BehaveAgain("EPSV");
    server.BehaveAgain("PASV");
    EXPECT_THAT(client.List(u"*").Names(), ElementsAre(u"a"));
    EXPECT_EQ(server.Count("MLSD"), 1);
    EXPECT_EQ(server.Count("LIST"), 0);
}

TEST_F(OddFtp, FactsThatAreRefusedForNowAreNoEmptyFolder)
{
    server.OfferFacts();
    server.WriteFile("/a", "1");
    server.Answer("MLSD", {"450 busy\r\n"});
    const FtpClient client(server.Port());
    EXPECT_THAT(client.List(u"*").Names(), ElementsAre(u"a"));
    server.BehaveAgain("MLSD");
    EXPECT_THAT(client.List(u"*").Names(), ElementsAre(u"a"));
    EXPECT_EQ(server.Count("MLSD"), 2) << "the command is known all the same";
}

// The platform's record has room for no longer one.
TEST_F(OddFtp, NamesHave259UnitsAtMost)
{
    const std::string longest(259, 'x');
    server.WriteFile("/" + longest, "1");
    server.WriteFile("/" + longest + "x", "1");
    server.WriteFile("/z", "1");
    EXPECT_THAT(FtpClient(server.Port()).List(u"*").Names(),
                ElementsAre(std::u16string(259, u'x'), u"z"));
}

} // namespace
} // namespace tarnwell::test
