// Whatever the locale of the host, the client has its own.
#include "module/svntest.h"
#include "support/posix/svnserve.h"

namespace tarnwell::test
{
namespace
{

using testing::SizeIs;

class SvnLocales : public SvnTest
{
protected:
    SvnLocales()
    {
        repository_.Commit("\xE6\x97\xA5.txt", "bytes", "\xC3\xA4", "J\xC3\xB6rg");
        repository_.Commit("plain.txt", "text");
    }

    const SvnRepository repository_;
    const std::u16string other_ = repository_.Address(u"\u65e5.txt");
};

TEST_F(SvnLocales, WhatIsListedIsRightInAnyOfThem)
{
    for (const char* const locale : {"C", "C.UTF-8", "ja_JP.UTF-8", "nonsense"})
    {
        const EnvironmentValue variable("LC_ALL", locale);
        const auto items = List(repository_.Address());
        ASSERT_THAT(items, SizeIs(2));
        EXPECT_EQ(items[0].name, u"plain.txt");
        EXPECT_EQ(items[1].name, u"\u65e5.txt");
        EXPECT_EQ(Content(items[0].path), "text");
        EXPECT_THAT(Revisions(items[0].path), SizeIs(1));
    }
}

TEST_F(SvnLocales, NamesBeyondAsciiCanBeAskedForInAnyOfThem)
{
    for (const char* const locale : {"C", "C.UTF-8", "ja_JP.UTF-8", "nonsense"})
    {
        const EnvironmentValue variable("LC_ALL", locale);
        EXPECT_EQ(Content(other_), "bytes");
        const auto list = Revisions(other_);
        ASSERT_THAT(list, SizeIs(1));
        EXPECT_EQ(list[0].author, u"J\u00f6rg");
        EXPECT_EQ(list[0].description, u"\u00e4");
    }
}

// The words of svnserve are its own, and English; the client's around them are not.
TEST_F(SvnLocales, AWrongPasswordForSvnserveIsKnownInAnyOfThem)
{
    const SvnServe server(repository_, "none");
    for (const char* const locale : {"C", "ja_JP.UTF-8"})
    {
        const EnvironmentValue variable("LC_ALL", locale);
        const Outcome outcome = FailedList(u"svn://ann:wrong@" + server.Host());
        EXPECT_NE(outcome.error->text.find(u"Password incorrect"), std::u16string::npos);
        EXPECT_TRUE(host_->Calls().back().starts_with(u"ForgetCredentials|Subversion: svn: "));
    }
    EXPECT_THAT(host_->Calls(), SizeIs(2));
}

TEST_F(SvnLocales, TheClientsOwnWordsAreEnglish)
{
    const EnvironmentValue variable("LC_ALL", "ja_JP.UTF-8");
    const EnvironmentValue language("LANGUAGE", "ja");
    EXPECT_NE(
        FailedList(u"svnfile:///nowhere/at/all").error->text.find(u"Unable to open repository"),
        std::u16string::npos);
}

} // namespace
} // namespace tarnwell::test
