// The login folder, in which relative paths begin whatever was done before.
#include "platform/posix/oddftp.h"

namespace tarnwell::test
{
namespace
{

using testing::ElementsAre;

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

} // namespace
} // namespace tarnwell::test
