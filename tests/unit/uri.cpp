// Addresses by the common grammar: their parts, their parents, and how they are composed.
#include "frame/uri.h"
#include "frame/exception.h"

#include <gtest/gtest.h>

#include <thread>

namespace tarnwell::test
{
namespace
{

struct AddressCase
{
    const char* name;
    std::u16string text;
    std::u16string scheme, user, password, host;
    std::uint16_t port;
    std::u16string path;
    std::u16string parent;
};

void PrintTo(const AddressCase& address, std::ostream* out)
{
    *out << address.name;
}

class Addresses : public testing::TestWithParam<AddressCase>
{
};

TEST_P(Addresses, AreTakenApart)
{
    const AddressCase& expected = GetParam();
    const Uri uri(expected.text);
    EXPECT_EQ(uri.GetScheme(), expected.scheme);
    EXPECT_EQ(uri.GetUser(), expected.user);
    EXPECT_EQ(uri.GetPassword(), expected.password);
    EXPECT_EQ(uri.GetHost(), expected.host);
    EXPECT_EQ(uri.GetPort(), expected.port);
    EXPECT_EQ(uri.GetPath(), expected.path);
    const UriParts parts = uri.GetParts();
    EXPECT_EQ(parts.user + parts.password + parts.host + parts.path,
              expected.user + expected.password + expected.host + expected.path);
    EXPECT_EQ(uri.GetParent()->GetText(), expected.parent);
}

INSTANTIATE_TEST_SUITE_P(
    Uri, Addresses,
    testing::Values(AddressCase{"Whole", u"ftp://user:pw@host:21/a/b.txt", u"ftp", u"user", u"pw",
                                u"host", 21, u"a/b.txt", u"ftp://user:pw@host:21/a"},
                    AddressCase{"HostOnly", u"ftp://host", u"ftp", u"", u"", u"host", noPort, u"",
                                u"ftp://host/"},
                    AddressCase{"HostAndSlash", u"ftp://host/", u"ftp", u"", u"", u"host", noPort,
                                u"", u"ftp://host/"},
                    AddressCase{"OneLevel", u"ftp://host/a", u"ftp", u"", u"", u"host", noPort,
                                u"a", u"ftp://host/"},
                    AddressCase{"PasswordWithoutUserIsLost", u"ftp://:pw@host/a", u"ftp", u"",
                                u"pw", u"host", noPort, u"a", u"ftp://host/"},
                    AddressCase{"SchemeAsWritten", u"FTP://Host/A", u"FTP", u"", u"", u"Host",
                                noPort, u"A", u"FTP://Host/"},
                    AddressCase{"PortIsCut", u"ftp://host:70000/a", u"ftp", u"", u"", u"host", 4464,
                                u"a", u"ftp://host:4464/"},
                    AddressCase{"PortSaturates", u"ftp://host:99999999999/a", u"ftp", u"", u"",
                                u"host", noPort, u"a", u"ftp://host/"},
                    AddressCase{"Unicode", u"svn://h/\u00e4\U0001F600/b", u"svn", u"", u"", u"h",
                                noPort, u"\u00e4\U0001F600/b", u"svn://h/\u00e4\U0001F600"}),
    [](const auto& info) { return info.param.name; });

TEST(Uri, WhatDoesNotMatchFailsAtEveryQuestion)
{
    for (const char16_t* text :
         {u"nothing", u"", u"ftp:/host", u"ftp://h/a\nb", u"ftp://h/a\u2028b"})
    {
        const Uri uri(text);
        EXPECT_EQ(uri.GetText(), text);
        try
        {
            uri.GetScheme();
            ADD_FAILURE() << "matched";
        }
        catch (const ComException& exception)
        {
            EXPECT_EQ(static_cast<HRESULT>(exception.code), E_INVALIDARG);
            EXPECT_EQ(exception.message, u"Can't parse the URI \"" + std::u16string(text) + u"\".");
            EXPECT_EQ(std::u16string(exception.file), u"uri");
            EXPECT_EQ(exception.line, 159U);
        }
        EXPECT_THROW(uri.GetPath(), ComException);
        EXPECT_THROW(uri.GetParent(), ComException);
    }
}

TEST(Uri, GroupsThatDoNotExistAreEmpty)
{
    const Uri uri(u"ftp://host/a");
    EXPECT_EQ(uri.GetGroup(10), u"a");
    EXPECT_EQ(uri.GetGroup(11), u"");
    EXPECT_EQ(uri.GetGroup(-1), u"");
}

TEST(Uri, CredentialsAreLeftOut)
{
    EXPECT_EQ(Uri(u"ftp://u:p@h:21/a").WithoutCredentials()->GetText(), u"ftp://h:21/a");
    EXPECT_EQ(Uri(u"ftp://u:p@h/a").ForDisplay()->GetText(), u"ftp://h/a");
    EXPECT_EQ(Uri(u"ftp://u:p@h/a").ForComparison()->GetText(), u"ftp://h/a");
    EXPECT_EQ(Uri(u"ftp://host").WithoutCredentials()->GetText(), u"ftp://host/");
    EXPECT_EQ(Uri(u"ftp://u:p@h/a").Clone()->GetText(), u"ftp://u:p@h/a");
}

TEST(Uri, HostAndPort)
{
    EXPECT_EQ(Uri(u"ftp://h:21/a").GetHostAndPort(), u"h:21");
    EXPECT_EQ(Uri(u"ftp://h/a").GetHostAndPort(), u"h");
}

TEST(Uri, PathStandsAloneWithoutHost)
{
    UriParts parts;
    parts.scheme = u"x";
    parts.user = u"dropped";
    parts.password = u"dropped";
    parts.path = u"a/b";
    EXPECT_EQ(Uri({}).Compose(parts)->GetText(), u"x://a/b");
}

TEST(Uri, LooksLikeOneWithASchemeOfTwoLetters)
{
    EXPECT_TRUE(LooksLikeUri(u"ftp://host"));
    EXPECT_TRUE(LooksLikeUri(u"ab://"));
    EXPECT_FALSE(LooksLikeUri(u"c://x"));
    EXPECT_FALSE(LooksLikeUri(u"c:\\x"));
    EXPECT_FALSE(LooksLikeUri(u"/a/b"));
    EXPECT_FALSE(LooksLikeUri(u""));
}

TEST(Uri, OneQuestionIsOneMatch)
{
    const Uri uri(u"ftp://host/a/b");
    const std::uint64_t before = PatternMatchCount();
    uri.GetParent();
    EXPECT_EQ(PatternMatchCount() - before, 1U);
}

TEST(Uri, HostileAddressesGetAnAnswer)
{
    constexpr std::size_t million = 1000000;
    for (const char16_t* piece : {u"a", u":", u"@", u"/", u"a:", u"@:", u"::@@//"})
    {
        std::u16string text = u"ftp://";
        while (text.size() < million)
            text += piece;
        EXPECT_EQ(Uri(text).GetScheme(), u"ftp");
        text += u'\n';
        const Uri ended(text);
        try
        {
            EXPECT_EQ(ended.GetScheme(), u"ftp");
        }
        catch (const ComException& exception)
        {
            EXPECT_EQ(static_cast<HRESULT>(exception.code), E_INVALIDARG);
        }
    }
}

} // namespace
} // namespace tarnwell::test
