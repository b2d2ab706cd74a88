// What a Mercurial client is given, as seen by one that takes notes, and what its locale does.
#include "module/mercurialtest.h"
#include "support/environmentvalue.h"

#include <sys/stat.h>

namespace tarnwell::test
{
namespace
{

namespace fs = std::filesystem;

TEST_F(Mercurial, NamesOfPeopleAreRightInAForeignLocale)
{
    repository.Commit(u"a.txt", "1", "first", {"-u", "\xC3\x9Cml\xC3\xA4ut"});
    const EnvironmentValue locale("LC_ALL", "en_US.ISO-8859-1");
    const EnvironmentValue coercion("PYTHONCOERCECLOCALE", "0");
    const EnvironmentValue mode("PYTHONUTF8", "0");
    const EnvironmentValue encoding("HGENCODING", "latin1");
    const auto told = Revisions(Address(u"a.txt"));
    ASSERT_EQ(told.size(), 2U);
    EXPECT_EQ(told[1].author, u"\u00dcml\u00e4ut");
}

TEST_F(Mercurial, AnAliasOfTheUsersDoesNotCount)
{
    repository.Commit(u"a.txt", "1", "first");
    const TempFolder settings;
    WriteBytes(settings / u"hgrc", "[alias]\nlog = log --limit 0\ncat = !echo something else\n");
    const EnvironmentValue variable("HGRCPATH", (settings.Path() / "hgrc").c_str());
    for (const char* const except : {"", "alias"})
    {
        const EnvironmentValue exception("HGPLAINEXCEPT", except);
        EXPECT_EQ(Revisions(Address(u"a.txt")).size(), 2U);
        EXPECT_EQ(Content(Address(u"a.txt")), "1");
    }
}

// A client that notes what it is given.
class MercurialClient : public Mercurial
{
protected:
    MercurialClient()
    {
        const std::u16string program = clients_ / u"hg";
        WriteBytes(program, "#!/bin/sh\n"
                            "printf '%s\\0' \"$@\" >\"$NOTES/arguments\"\n"
                            "pwd >\"$NOTES/folder\"\n"
                            "env >\"$NOTES/environment\"\n");
        chmod(fs::path(program).c_str(), 0755);
    }

    std::string Note(std::u16string_view name) const
    {
        return ReadBytes(clients_ / name);
    }

    const TempFolder clients_;
    const EnvironmentValue notes_{"NOTES", clients_.Path().c_str()};
    const EnvironmentValue path_{"PATH",
                                 (clients_.Path().string() + ":" + std::getenv("PATH")).c_str()};
};

TEST_F(MercurialClient, GetsLineFeedsAndTabsThemselves)
{
    Revisions(u"hg:///r/a b.txt#3");
    const std::string_view expected("log\0--template\0"
                                    "{rev}\n{author}\n{date}\n\t{desc|tabindent}\n!\n\0"
                                    "/r/a b.txt\0",
                                    sizeof "log --template {rev}\n{author}\n{date}\n\t"
                                           "{desc|tabindent}\n!\n /r/a b.txt");
    EXPECT_EQ(Note(u"arguments"), expected);
    EXPECT_EQ(Note(u"folder"), "/\n");
}

TEST_F(MercurialClient, GetsTheWholeEnvironment)
{
    const EnvironmentValue git("GIT_DIR", "/g");
    const EnvironmentValue mercurial("HG_ANYTHING", "h");
    Revisions(u"hg:///r/a.txt");
    EXPECT_THAT(Note(u"environment"), testing::AllOf(testing::HasSubstr("GIT_DIR=/g\n"),
                                                     testing::HasSubstr("HG_ANYTHING=h\n")));
}

TEST_F(MercurialClient, GetsTheRevisionForTheContent)
{
    Content(u"hg:///r/a.txt#12");
    EXPECT_EQ(Note(u"arguments"), std::string("cat\0-r\0"
                                              "12\0/r/a.txt\0",
                                              19));
    Content(u"hg:///r/a.txt");
    EXPECT_EQ(Note(u"arguments"), std::string("cat\0/r/a.txt\0", 13));
}

} // namespace
} // namespace tarnwell::test
