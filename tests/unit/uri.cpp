// Addresses by the common grammar: their parts, their parents, and how they are composed.
#include "addressed/uri.h"
#include "frame/text.h"
#include "support/thrown.h"
#include "unit/matchcount.h"

#include <gtest/gtest.h>

#include <atomic>
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
                    AddressCase{"NothingButAScheme", u"ab://", u"ab", u"", u"", u"", noPort, u"",
                                u"ab://"},
                    AddressCase{"NoHost", u"svnfile:///c:/a/b", u"svnfile", u"", u"", u"", noPort,
                                u"/c:/a/b", u"svnfile:///c:/a"},
                    AddressCase{"UserWithoutHostIsPath", u"ftp://u:p@/a", u"ftp", u"", u"", u"u",
                                noPort, u":p@/a", u"ftp://u/:p@"},
                    AddressCase{"PasswordWithTheMark", u"ftp://u:p@q:r@host/a", u"ftp", u"u",
                                u"p@q:r", u"host", noPort, u"a", u"ftp://u:p@q:r@host/"},
                    AddressCase{"EmptyPassword", u"ftp://u:@host/a", u"ftp", u"u", u"", u"host",
                                noPort, u"a", u"ftp://u@host/"},
                    AddressCase{"PortThatIsNone", u"ftp://host:x/a", u"ftp", u"", u"", u"host",
                                noPort, u":x/a", u"ftp://host/:x"},
                    AddressCase{"PathOfSlashes", u"ftp://host//a", u"ftp", u"", u"", u"host",
                                noPort, u"/a", u"ftp://host/"},
                    AddressCase{"Unicode", u"svn://h/\u00e4\U0001F600/b", u"svn", u"", u"", u"h",
                                noPort, u"\u00e4\U0001F600/b", u"svn://h/\u00e4\U0001F600"}),
    [](const auto& info) { return info.param.name; });

// A number saturates at the largest one of 32 bits, and then loses all but its low 16.
TEST(Uri, PortsAreCutAfterTheySaturate)
{
    const std::u16string thousandDigits(1000, u'1');
    for (const auto& [digits, port] : {std::pair{std::u16string(u"0"), 0},
                                       {u"21", 21},
                                       {u"0021", 21},
                                       {u"65534", 65534},
                                       {u"65535", 65535},
                                       {u"65536", 0},
                                       {u"70000", 4464},
                                       {u"2147418113", 1},
                                       {u"2147483647", 65535},
                                       {u"2147483648", 65535},
                                       {u"4294967297", 65535},
                                       {u"99999999999", 65535},
                                       {thousandDigits, 65535}})
    {
        const Uri uri(u"ftp://host:" + digits + u"/a");
        EXPECT_EQ(uri.GetPort(), port);
        EXPECT_EQ(uri.GetParts().port, port);
        const std::u16string shown =
            port == noPort ? u"host" : u"host:" + Decimal(static_cast<std::uint64_t>(port));
        EXPECT_EQ(uri.GetHostAndPort(), shown);
        EXPECT_EQ(uri.GetParent()->GetText(), u"ftp://" + shown + u"/");
    }
}

TEST(Uri, PathsHoldNoLineEnd)
{
    for (const char16_t end : {u'\n', u'\r', u'\u2028', u'\u2029'})
    {
        const std::u16string line(1, end);
        EXPECT_THROW(Uri(u"ftp://h/a" + line).GetScheme(), ComException);
        EXPECT_THROW(Uri(u"ftp://h/a" + line + u"b").GetPath(), ComException);
        // The other parts may: their expressions leave out other characters.
        EXPECT_EQ(Uri(u"ftp://u" + line + u":p@h" + line + u"/a").GetHost(), u"h" + line);
        EXPECT_EQ(Uri(u"f" + line + u"p://h/a").GetScheme(), u"f" + line + u"p");
    }
    for (const char16_t other :
         {u'\t', u'\v', u'\f', u'\x7F', u'\x85', u'\u2027', u'\u202A', u'\xD800', u'\xFFFF'})
    {
        const std::u16string path = u"a" + std::u16string(1, other) + u"b";
        EXPECT_EQ(Uri(u"ftp://h/" + path).GetPath(), path);
    }
}

TEST(Uri, NothingHoldsATerminator)
{
    const std::u16string terminator(1, u'\0');
    EXPECT_THROW(Uri(u"ftp://h/a" + terminator + u"b").GetPath(), ComException);
    EXPECT_THROW(Uri(u"ftp://h/a" + terminator).GetScheme(), ComException);
    EXPECT_THROW(Uri(u"ftp://u:p" + terminator + u"@h/a").GetHost(), ComException);
}

TEST(Uri, WhatDoesNotMatchFailsAtEveryQuestion)
{
    for (const char16_t* text : {u"nothing", u"", u"ftp:/user:password@host", u"://host",
                                 u"ftp://h/a\nb", u"ftp://h/a\u2028b"})
    {
        const Uri uri(text);
        EXPECT_EQ(uri.GetText(), text);
        const Thrown thrown = ThrownBy([&] { uri.GetScheme(); });
        EXPECT_EQ(thrown.status, E_INVALIDARG);
        EXPECT_EQ(thrown.text, u"Can't parse the URI \"" + std::u16string(text) + u"\".");
        EXPECT_EQ(thrown.source, u"uri");
        EXPECT_EQ(thrown.line, 159U);
        for (const auto part :
             {&Uri::GetUser, &Uri::GetPassword, &Uri::GetHost, &Uri::GetHostAndPort, &Uri::GetPath})
            EXPECT_THROW((uri.*part)(), ComException);
        EXPECT_THROW(uri.GetPort(), ComException);
        EXPECT_THROW(uri.GetParts(), ComException);
        for (const auto derived : {&Uri::GetParent, &Uri::WithoutCredentials})
            EXPECT_THROW((uri.*derived)(), ComException);
        EXPECT_EQ(uri.Clone()->GetText(), text);
        EXPECT_EQ(uri.Create(u"x")->GetText(), u"x");
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
    EXPECT_EQ(Uri(u"ftp://host:21/a//b").WithoutCredentials()->GetText(), u"ftp://host:21/a//b");
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

TEST(Uri, ComposingDropsWhatCannotStandAlone)
{
    const auto composed = [](UriParts parts) {
        return Uri({}).Compose(parts)->GetText();
    };
    EXPECT_EQ(composed({u"x", u"u", u"p", u"h", 21, u"a"}), u"x://u:p@h:21/a");
    EXPECT_EQ(composed({u"x", u"u", u"", u"h", noPort, u""}), u"x://u@h/");
    EXPECT_EQ(composed({u"x", u"", u"p", u"h", 0, u"a"}), u"x://h:0/a");
    EXPECT_EQ(composed({u"x", u"", u"", u"", 21, u"/a"}), u"x:///a");
    EXPECT_EQ(composed({}), u"://") << "nothing is checked";
}

TEST(Uri, LooksLikeOneWithASchemeOfTwoLetters)
{
    EXPECT_FALSE(LooksLikeUri(u"ab://x/a\ny")) << "what doesn't match is none";
    EXPECT_TRUE(LooksLikeUri(u"ftp://host"));
    EXPECT_TRUE(LooksLikeUri(u"ab://"));
    EXPECT_FALSE(LooksLikeUri(u"c://x"));
    EXPECT_FALSE(LooksLikeUri(u"c:\\x"));
    EXPECT_FALSE(LooksLikeUri(u"/a/b"));
    EXPECT_FALSE(LooksLikeUri(u""));
}

TEST(Uri, AnyThreadMayAsk)
{
    const Uri uri(u"ftp://u:p@host:21/a/b");
    std::atomic<int> right = 0;
    const auto ask = [&] {
        for (int i = 0; i < 100; ++i)
            right += uri.GetPort() == 21 && uri.GetParent()->GetText() == u"ftp://u:p@host:21/a";
    };
    std::thread first(ask);
    std::thread second(ask);
    first.join();
    second.join();
    EXPECT_EQ(right, 200);
}

TEST(Uri, OneQuestionIsOneMatchAtMost)
{
    const auto cost = [](const Uri& uri) {
        const std::uint64_t before = MatchCount();
        uri.GetParent();
        return MatchCount() - before;
    };
    EXPECT_EQ(cost(Uri(u"ftp://host/a/b")), 0U);
    EXPECT_EQ(cost(Uri(u"ftp://user:p@ss@host/a/b")), 1U);
}

} // namespace
} // namespace tarnwell::test
