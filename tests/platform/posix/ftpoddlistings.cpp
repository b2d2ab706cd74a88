// Listings that are long, broken off, hostile or of another kind than was promised.
#include "platform/posix/oddftp.h"

namespace tarnwell::test
{
namespace
{

using testing::ElementsAre;
using testing::UnorderedElementsAre;

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

} // namespace
} // namespace tarnwell::test
