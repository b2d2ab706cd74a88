// Addresses of items in Perforce depots.
#include "perforce/p4uri.h"
#include "frame/exception.h"
#include "unit/matchcount.h"

#include <gtest/gtest.h>

namespace tarnwell::test
{
namespace
{

struct Parts
{
    std::u16string user, password, host, path;

    bool operator==(const Parts&) const = default;
};

Parts PartsOf(std::u16string text)
{
    const P4Uri uri(std::move(text));
    EXPECT_EQ(uri.GetScheme(), u"p4");
    EXPECT_EQ(uri.GetPort(), noPort);
    EXPECT_EQ(uri.GetHostAndPort(), uri.GetHost());
    return {uri.GetUser(), uri.GetPassword(), uri.GetHost(), uri.GetPath()};
}

std::u16string Cloned(std::u16string text)
{
    return P4Uri(std::move(text)).Clone()->GetText();
}

void ExpectRefused(const std::u16string& text, const std::u16string& message, const char16_t* file)
{
    try
    {
        const P4Uri uri(text);
        ADD_FAILURE() << "accepted";
    }
    catch (const ComException& exception)
    {
        EXPECT_EQ(static_cast<HRESULT>(exception.code), E_INVALIDARG);
        EXPECT_EQ(exception.message, message + u" \"" + text + u"\".");
        EXPECT_EQ(std::u16string(exception.file), file);
    }
}

TEST(P4Uri, TheAuthorityNeedsItsAt)
{
    EXPECT_EQ(PartsOf(u"p4://user@server:1234///depot/a.txt"),
              (Parts{u"user", u"", u"server:1234", u"//depot/a.txt"}));
    EXPECT_EQ(PartsOf(u"p4://server:1234///depot/a.txt"),
              (Parts{u"", u"", u"", u"server:1234///depot/a.txt"}));
    EXPECT_EQ(PartsOf(u"p4:////depot/dir/a.txt"), (Parts{u"", u"", u"", u"//depot/dir/a.txt"}));
    EXPECT_EQ(PartsOf(u"p4://@server///depot/a"), (Parts{u"", u"", u"server", u"//depot/a"}));
    EXPECT_EQ(PartsOf(u"p4://a/b@c/d"), (Parts{u"", u"", u"", u"a/b@c/d"}));
}

TEST(P4Uri, TheAuthorityEndsInASlash)
{
    EXPECT_EQ(PartsOf(u"p4://user@server"), (Parts{u"", u"", u"", u"user@server"}));
    EXPECT_EQ(PartsOf(u"p4://user@server/"), (Parts{u"user", u"", u"server", u""}));
    EXPECT_EQ(PartsOf(u"p4://user@server//depot/x"), (Parts{u"user", u"", u"server", u"/depot/x"}));
}

TEST(P4Uri, APasswordMayHoldColons)
{
    EXPECT_EQ(PartsOf(u"p4://u:p:q@server/x"), (Parts{u"u", u"p:q", u"server", u"x"}));
    EXPECT_EQ(PartsOf(u"p4://u:@server/x"), (Parts{u"u", u"", u"server", u"x"}));
    EXPECT_EQ(PartsOf(u"p4://:p@server/x"), (Parts{u"", u"p", u"server", u"x"}));
    EXPECT_EQ(PartsOf(u"p4://u@ssl:server:1/x"), (Parts{u"u", u"", u"ssl:server:1", u"x"}));
}

TEST(P4Uri, WithoutAnythingEveryPartIsEmpty)
{
    EXPECT_EQ(PartsOf(u"p4://"), Parts{});
    EXPECT_EQ(NormalizeDepotPath(P4Uri(u"p4://").GetPath()), u"//");
}

TEST(P4Uri, TheSchemeIsTakenExactly)
{
    for (const std::u16string text : {u"P4:////x", u"p4x://x", u"ftp://x", u" p4://x"})
        ExpectRefused(text, u"Invalid Perforce URI", u"p4objects");
}

TEST(P4Uri, WhatHoldsNoAddressIsNotParsed)
{
    for (const std::u16string text : {u"p4:/depot", u"", u"://x", u"::://x", u"nothing", u":p4:/"})
        ExpectRefused(text, u"Can't parse the URI", u"uri");
}

TEST(P4Uri, NothingFallsSilently)
{
    for (const std::u16string text :
         {u"p4:////depot/a\nb", u"p4:////depot/a\rb", u"p4:////depot/a\u2028b", u"p4://x\u2029",
          u"x:p4:////depot/a", u":p4:////depot", u"p4://u@h/a\nb@c/d"})
        ExpectRefused(text, u"Invalid Perforce URI", u"p4objects");
}

TEST(P4Uri, LineEndsInAnAuthorityArePartOfIt)
{
    EXPECT_EQ(PartsOf(u"p4://u\n:p\r@h\u2028/x"), (Parts{u"u\n", u"p\r", u"h\u2028", u"x"}));
}

TEST(P4Uri, AHostileTextIsRefusedInNoTime)
{
    const std::u16string many(1'000'000, u'a');
    ExpectRefused(many, u"Can't parse the URI", u"uri");
    ExpectRefused(std::u16string(1'000'000, u':'), u"Can't parse the URI", u"uri");
    EXPECT_EQ(PartsOf(u"p4://" + many), (Parts{u"", u"", u"", many}));
}

TEST(P4Uri, ACopyIsWithoutTheRevision)
{
    EXPECT_EQ(Cloned(u"p4:////depot/a.txt#3"), u"p4:////depot/a.txt");
    EXPECT_EQ(Cloned(u"p4:////depot/a.txt@12"), u"p4:////depot/a.txt");
    EXPECT_EQ(Cloned(u"p4:////depot/a.txt"), u"p4:////depot/a.txt");
    EXPECT_EQ(Cloned(u"p4:////depot/a.txt@12#3"), u"p4:////depot/a.txt@12") << "at the later one";
    EXPECT_EQ(Cloned(u"p4://u:p@server:1///depot/a.txt#3"), u"p4://u:p@server:1///depot/a.txt");
    EXPECT_EQ(Cloned(u"p4://user@server"), u"p4://user");
}

// Without a user there is no "@", and without that no server.
TEST(P4Uri, ComposingWithoutAUserLosesTheServer)
{
    EXPECT_EQ(Cloned(u"p4://@server///depot/a"), u"p4://server///depot/a");
    const P4Uri uri(u"p4://u:p@server///depot/a.txt#3");
    for (const auto& shown : {uri.WithoutCredentials(), uri.ForDisplay(), uri.ForComparison()})
    {
        EXPECT_EQ(shown->GetText(), u"p4://server///depot/a.txt#3");
        EXPECT_EQ(shown->GetHost(), u"");
        EXPECT_EQ(shown->GetPath(), u"server///depot/a.txt#3");
    }
}

TEST(P4Uri, DerivedAddressesAreOfTheirClass)
{
    const P4Uri uri(u"p4://u@server///depot/dir/a.txt#3");
    for (const std::shared_ptr<Uri>& other : {uri.Clone(), uri.Create(u"p4://x"), uri.GetParent()})
        EXPECT_NE(dynamic_cast<const P4Uri*>(other.get()), nullptr);
    EXPECT_EQ(uri.GetParent()->GetText(), u"p4://u@server///depot/dir");
    EXPECT_THROW(uri.Create(u"http://x"), ComException);
}

TEST(P4Uri, IsCheckedWithoutAMatch)
{
    const std::uint64_t before = MatchCount();
    const P4Uri uri(u"p4://u@server///depot/dir/a.txt#3");
    EXPECT_EQ(MatchCount(), before);
}

TEST(P4Uri, DepotPathsBeginWithTwoSlashes)
{
    EXPECT_EQ(NormalizeDepotPath(u""), u"//");
    EXPECT_EQ(NormalizeDepotPath(u"depot/a"), u"//depot/a");
    EXPECT_EQ(NormalizeDepotPath(u"//depot/a"), u"//depot/a");
    EXPECT_EQ(NormalizeDepotPath(u"/depot/a"), u"///depot/a") << "one slash is no start";
    EXPECT_EQ(NormalizeDepotPath(u"///depot"), u"///depot");
}

TEST(P4Uri, TheLastOfBothMarksBeginsTheRevision)
{
    EXPECT_EQ(p4Marker.FindIn(u"//depot/a.txt@12#3"), 16U);
    EXPECT_EQ(p4Marker.FindIn(u"//depot/a.txt#3@12"), 15U);
    EXPECT_EQ(p4Marker.FindIn(u"a"), std::u16string_view::npos);
    EXPECT_EQ(p4Marker.FindIn(u""), std::u16string_view::npos);
    EXPECT_EQ(p4Marker.Strip(u"a@b#3"), u"a@b");
    EXPECT_EQ(p4Marker.Strip(u"a"), u"a");
}

} // namespace
} // namespace tarnwell::test
