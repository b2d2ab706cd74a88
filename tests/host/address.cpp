#include "address.h"

#include "arguments.h"
#include "system.h"

#include <gtest/gtest.h>

namespace tarnwell::host
{

namespace
{

std::u16string KindOf(const std::u16string& text)
{
    return ParseAddress(text).kind->name;
}

TEST(Address, SchemeChoosesTheFileSystem)
{
    EXPECT_EQ(KindOf(u"git://a"), u"git");
    EXPECT_EQ(KindOf(u"hg:a"), u"hg");
    EXPECT_EQ(KindOf(u"p4:////depot/a"), u"p4");
    EXPECT_EQ(KindOf(u"ftp://host/a"), u"ftp");
    for (const char16_t* scheme : {u"svn", u"svnhttp", u"svnhttps", u"svnfile", u"svn+ssh"})
        EXPECT_EQ(KindOf(scheme + std::u16string(u"://host/a")), u"svn");
}

TEST(Address, WhatHasNoKnownSchemeIsLocal)
{
    for (const char16_t* text : {u"", u".", u"git", u"./git:a", u"GI://a", u"svn:a", u"ftp:",
                                 u"C:\\git:x", u"http", u"http:/x", u"./http://x"})
        EXPECT_EQ(KindOf(text), u"local");
}

TEST(Address, SchemesAreKnownInAnyCaseAndStayAsTheyAre)
{
    EXPECT_EQ(KindOf(u"GIT://a"), u"git");
    EXPECT_EQ(KindOf(u"Hg:a"), u"hg");
    EXPECT_EQ(ParseAddress(u"SvnHttp://Host/A").kind->name, std::u16string(u"svn"));
    EXPECT_EQ(ParseAddress(u"SvnHttp://Host/A").text, u"SvnHttp://Host/A");
    EXPECT_EQ(ParseAddress(u"GIT:a").text, u"GIT://" + AbsolutePath(u"a"));
}

TEST(Address, SchemesOfOtherProgramsGetAHint)
{
    for (const auto& [text, meant] : {std::pair{u"http://h/r", u"svnhttp://"},
                                      {u"HTTPS://h/r", u"svnhttps://"},
                                      {u"file:///r", u"svnfile://"},
                                      {u"ssh://h/r", u"svn+ssh://"}})
    {
        try
        {
            ParseAddress(text);
            ADD_FAILURE() << "not thrown: " << std::u16string_view(text).size();
        }
        catch (const UsageError& error)
        {
            EXPECT_NE(Say(error.text).find(std::u16string(u"Is ") + meant), std::u16string::npos)
                << error.text.parts.size();
        }
    }
}

TEST(Address, OthersStayAsTheyAre)
{
    EXPECT_EQ(ParseAddress(u"a/../b").text, u"a/../b");
    EXPECT_EQ(ParseAddress(u"svnfile:///r/../a@3").text, u"svnfile:///r/../a@3");
}

TEST(Address, WorkingCopyPathsBecomeAbsolute)
{
    const std::u16string file = AbsolutePath(u"src/a b.c");
    EXPECT_TRUE(FilePath(file).is_absolute());
    EXPECT_EQ(ParseAddress(u"git:src/a b.c").text, u"git://" + file);
    EXPECT_EQ(ParseAddress(u"git://src/a b.c").text, u"git://" + file);
    EXPECT_EQ(ParseAddress(u"git:./lib/../src/a b.c").text, u"git://" + file);
    EXPECT_EQ(ParseAddress(u"git://" + file).text, u"git://" + file);
    EXPECT_EQ(ParseAddress(u"hg:src/a b.c").text, u"hg://" + file);
}

TEST(Address, RevisionStaysBehindTheLastSign)
{
    EXPECT_EQ(ParseAddress(u"git:a#b.c#HEAD~2").text,
              u"git://" + AbsolutePath(u"a#b.c") + u"#HEAD~2");
    EXPECT_EQ(ParseAddress(u"hg:a#").text, u"hg://" + AbsolutePath(u"a") + u"#");
    // A revision may look like a path.
    EXPECT_EQ(ParseAddress(u"git:a#origin/../x").text,
              u"git://" + AbsolutePath(u"a") + u"#origin/../x");
}

TEST(Address, NamesThatLookEncodedAreEncoded)
{
    for (const char16_t* const address : {u"svn://host/r", u"p4:////depot"})
    {
        const FileSystemKind& kind = *ParseAddress(address).kind;
        EXPECT_EQ(InAddress(kind, u"d/a%41b%4 100%"), u"d/a%2541b%4 100%");
        EXPECT_EQ(InAddress(kind, u"%2525"), u"%252525");
        EXPECT_EQ(InAddress(kind, u"%4"), u"%4");
    }
    EXPECT_EQ(InAddress(*ParseAddress(u"git:a").kind, u"a%41b"), u"a%41b");
}

struct Parted
{
    const char16_t* address;
    const char16_t* path;
    const char16_t* revision;
};

TEST(Address, HasTwoParts)
{
    const Parted rows[] = {
        {u"svn://host/r/a.c@7", u"svn://host/r/a.c", u"@7"},
        {u"svn://host/r/a.c", u"svn://host/r/a.c", u""},
        {u"svn://host/r@2/a.c", u"svn://host/r@2/a.c", u""},
        {u"svn://host/r/a@b@7", u"svn://host/r/a@b", u"@7"},
        {u"svn://ann@host", u"svn://ann@host", u""},
        {u"svn://host/r/", u"svn://host/r", u""},
        {u"svn+ssh://ann@host/r", u"svn+ssh://ann@host/r", u""},
        {u"p4:////depot/a.c#2", u"p4:////depot/a.c", u"#2"},
        {u"p4:////depot/dir@label", u"p4:////depot/dir", u"@label"},
        {u"ftp://host/a@b#c", u"ftp://host/a@b#c", u""},
        {u"a@b#c", u"a@b#c", u""},
    };
    for (const Parted& row : rows)
    {
        const AddressParts parts = PartsOf(ParseAddress(row.address));
        EXPECT_EQ(parts.path, row.path);
        EXPECT_EQ(parts.revision, row.revision);
    }
    // A branch's name may look like a path.
    const AddressParts parts = PartsOf(ParseAddress(u"git:a#b#origin/main"));
    EXPECT_EQ(parts.path, u"git://" + AbsolutePath(u"a#b"));
    EXPECT_EQ(parts.revision, u"#origin/main");
}

} // namespace

} // namespace tarnwell::host
