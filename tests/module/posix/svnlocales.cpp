// The locale that the client inherits, and what its output is worth in it.
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

TEST_F(SvnLocales, InAPlainOneNamesBeyondAsciiCannotBeAskedFor)
{
    const EnvironmentValue variable("LC_ALL", "C");
    const Outcome outcome = FailedOpen(other_);
    EXPECT_EQ(outcome.status, E_FAIL);
    EXPECT_TRUE(outcome.error->text.starts_with(AccessFailed(other_, u"svn: ")));
    EXPECT_FALSE(HasRevisions(other_));
}

TEST_F(SvnLocales, InUtf8TheyCan)
{
    for (const char* const locale : {"C.UTF-8", "ja_JP.UTF-8"})
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

TEST_F(SvnLocales, TheClientsOwnWordsAreEnglishIfItIsToldSo)
{
    const std::u16string address = u"svnfile:///nowhere/at/all";
    const EnvironmentValue variable("LC_ALL", "ja_JP.UTF-8");
    const EnvironmentValue language("LANGUAGE", "en");
    EXPECT_NE(FailedList(address).error->text.find(u"Unable to open repository"),
              std::u16string::npos);
    language.Set(nullptr);
    const std::u16string japanese = FailedList(address).error->text;
    EXPECT_EQ(japanese.find(u"Unable to open repository"), std::u16string::npos);
    EXPECT_NE(japanese.find(u"\u00e3\u0083\u00aa\u00e3\u0083\u009d"), std::u16string::npos)
        << "each byte of it as a character";
}

} // namespace
} // namespace tarnwell::test
