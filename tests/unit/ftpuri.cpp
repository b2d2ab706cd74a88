// Addresses on FTP servers.
#include "ftp/ftpuri.h"

#include "unit/ftptest.h"

namespace tarnwell::test
{
namespace
{

TEST(FtpUri, HasAllParts)
{
    const UriParts parts = FTPUri(u"ftp://user:pw@host:2121/a/b c.txt").GetParts();
    EXPECT_EQ(parts.scheme, u"ftp");
    EXPECT_EQ(parts.user, u"user");
    EXPECT_EQ(parts.password, u"pw");
    EXPECT_EQ(parts.host, u"host");
    EXPECT_EQ(parts.port, 2121);
    EXPECT_EQ(parts.path, u"a/b c.txt") << "relative to the login folder";
    EXPECT_EQ(FTPUri(u"ftp://host").GetPort(), noPort);
}

TEST(FtpUri, OnlyTheSchemeInSmallLettersIsTaken)
{
    for (const char16_t* const text :
         {u"FTP://host/x", u"Ftp://host/x", u"ftps://host/x", u"ft://host/x", u"p4://host/x"})
    {
        try
        {
            const FTPUri uri(text);
            ADD_FAILURE() << "taken";
        }
        catch (const ComException& failure)
        {
            EXPECT_EQ(failure.code, 0x80070057U);
            EXPECT_EQ(failure.message, u"Invalid Perforce URI \"" + std::u16string(text) + u"\".");
            EXPECT_EQ(std::u16string(failure.file), u"ftpobjects");
        }
    }
}

TEST(FtpUri, WhatIsNoAddressFailsAsAnyAddressDoes)
{
    for (const char16_t* const text : {u"", u"nothing", u"c:\\x", u"ftp://host/a\nb"})
    {
        try
        {
            const FTPUri uri(text);
            ADD_FAILURE() << "taken";
        }
        catch (const ComException& failure)
        {
            EXPECT_EQ(failure.code, 0x80070057U);
            EXPECT_TRUE(failure.message.starts_with(u"Can't parse the URI"));
        }
    }
}

TEST(FtpUri, ParentsAndChildrenAreOfItsKind)
{
    const FTPUri uri(u"ftp://u:p@host:21/a/b");
    const auto parent = uri.GetParent();
    EXPECT_EQ(parent->GetText(), u"ftp://u:p@host:21/a");
    EXPECT_NE(dynamic_cast<const FTPUri*>(parent.get()), nullptr);
    EXPECT_THROW(uri.Create(u"http://host/a"), ComException);
    EXPECT_EQ(dynamic_cast<const FTPUri*>(uri.Clone().get()), nullptr) << "a plain one, as ever";
}

} // namespace
} // namespace tarnwell::test
