// Addresses of items in Subversion repositories, and what the client is told instead.
#include "subversion/svnuri.h"
#include "support/thrown.h"

namespace tarnwell::test
{
namespace
{

std::u16string Shown(std::u16string text)
{
    return SVNUri(std::move(text)).ForDisplay()->GetText();
}

std::u16string Compared(std::u16string text)
{
    return SVNUri(std::move(text)).ForComparison()->GetText();
}

std::u16string Cloned(std::u16string text)
{
    return SVNUri(std::move(text)).Clone()->GetText();
}

// Refused by both ways to make one.
void ExpectRefused(const std::u16string& text, const std::u16string& message,
                   const std::u16string& source)
{
    for (const Thrown& thrown :
         {ThrownBy([&] { SVNUri{text}; }), ThrownBy([&] { SvnPartsOf(text); })})
    {
        EXPECT_EQ(thrown.status, E_INVALIDARG);
        EXPECT_EQ(thrown.text, message);
        EXPECT_EQ(thrown.source, source);
        EXPECT_TRUE(source != u"uri" || thrown.line == 159);
    }
}

TEST(SvnUri, TheClientGetsNeitherCredentialsNorRevision)
{
    constexpr const char16_t* text = u"svnhttp://u:p@host:8080/repo/a.txt@12";
    EXPECT_EQ(Compared(text), u"http://host:8080/repo/a.txt");
    EXPECT_EQ(Shown(text), u"http://host:8080/repo/a.txt@12");
    EXPECT_EQ(Cloned(text), u"svnhttp://u:p@host:8080/repo/a.txt");
}

TEST(SvnUri, EachSchemeHasItsRealOne)
{
    EXPECT_EQ(Compared(u"svn://host/repo"), u"svn://host/repo");
    EXPECT_EQ(Compared(u"svnhttp://host/repo"), u"http://host/repo");
    EXPECT_EQ(Compared(u"svnhttps://host/repo"), u"https://host/repo");
    EXPECT_EQ(Compared(u"svnfile:///c:/repo/a.txt"), u"file:///c:/repo/a.txt");
    EXPECT_EQ(Compared(u"svn+ssh://u@host/repo"), u"svn+ssh://host/repo");
}

TEST(SvnUri, OtherSchemesStayAsTheyAre)
{
    for (const std::u16string_view scheme : {u"http", u"SVNHTTP", u"svnx", u"svnfiles", u""})
        EXPECT_EQ(SvnRealScheme(scheme), scheme);
}

TEST(SvnUri, AFileRepositoryHasNoHost)
{
    const SVNUri uri(u"svnfile:///c:/repo/a.txt");
    EXPECT_EQ(uri.GetHost(), u"");
    EXPECT_EQ(uri.GetPath(), u"/c:/repo/a.txt");
}

TEST(SvnUri, OtherSchemesAreRefused)
{
    for (const std::u16string text :
         {u"http://host/repo", u"https://host/repo", u"file:///repo", u"SVNHTTP://host/repo",
          u"Svn://host/repo", u"svnssh://host/repo", u"svn+http://host/repo"})
        ExpectRefused(text, u"Invalid Subversion URI \"" + text + u"\".", u"svnobjects");
}

TEST(SvnUri, WhatIsNoAddressIsNotParsed)
{
    for (const std::u16string text :
         {u"", u"nothing", u"/local/path", u"svn://h/a\nb", u"svn://h/a\u2028b"})
        ExpectRefused(text, u"Can't parse the URI \"" + text + u"\".", u"uri");
}

TEST(SvnUri, TheLastMarkerOfThePathBeginsTheRevision)
{
    EXPECT_EQ(Compared(u"svnhttp://host/repo/a@b/c"), u"http://host/repo/a");
    EXPECT_EQ(svnMarker.RevisionOf(SVNUri(u"svnhttp://host/repo/a@b/c").GetPath()), u"b/c");
    EXPECT_EQ(Compared(u"svn://host/a@b@7"), u"svn://host/a@b");
    EXPECT_EQ(Shown(u"svn://host/a@b@7"), u"svn://host/a@b@7");
    EXPECT_EQ(Compared(u"svn://host/a@"), u"svn://host/a");
    EXPECT_EQ(Compared(u"svn://u@host/a"), u"svn://host/a") << "a user is no revision";
}

TEST(SvnUri, MarkersAreFoundInAnyText)
{
    EXPECT_EQ(svnMarker.FindIn(u"a@b@7"), 3U);
    EXPECT_EQ(svnMarker.FindIn(u"a"), std::u16string_view::npos);
    EXPECT_EQ(svnMarker.FindIn(u""), std::u16string_view::npos);
    EXPECT_EQ(svnMarker.Strip(u"a@b@7"), u"a@b");
    EXPECT_EQ(svnMarker.Strip(u"a"), u"a");
    EXPECT_EQ(svnMarker.RevisionOf(u"a@HEAD"), u"HEAD");
    EXPECT_EQ(svnMarker.RevisionOf(u"a@"), u"");
    EXPECT_EQ(svnMarker.RevisionOf(u"a"), std::nullopt);
}

TEST(SvnUri, DerivedAddressesAreOfTheirClass)
{
    const SVNUri uri(u"svn://u:p@host:1/a/b@7");
    const auto isOwn = [](const std::shared_ptr<Uri>& other) {
        return dynamic_cast<const SVNUri*>(other.get()) != nullptr;
    };
    EXPECT_TRUE(isOwn(uri.Clone()));
    EXPECT_TRUE(isOwn(uri.Create(u"svn://x")));
    EXPECT_TRUE(isOwn(uri.GetParent()));
    EXPECT_FALSE(isOwn(uri.ForDisplay()));
    EXPECT_FALSE(isOwn(uri.ForComparison()));
    EXPECT_EQ(uri.GetParent()->GetText(), u"svn://u:p@host:1/a");
    EXPECT_THROW(uri.Create(u"http://x"), ComException);
}

} // namespace
} // namespace tarnwell::test
