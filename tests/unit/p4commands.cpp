// The command lines for the Perforce client, word for word, and what its error stream means.
#include "perforce/p4commands.h"
#include "frame/exception.h"
#include "perforce/p4uri.h"
#include "support/environmentvalue.h"
#include "support/errorinfo.h"
#include "support/fakehost.h"
#include "support/perforcedepot.h"

#include <gmock/gmock.h>

namespace tarnwell::test
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

class User : public HostUIUser
{
};

class P4Commands : public testing::Test
{
protected:
    P4Commands()
    {
        user_.SetHostObject(host_->Unknown());
    }

    std::u16string Options(const std::u16string& address) const
    {
        return P4GlobalOptions(user_, P4Uri(address));
    }

    const PerforceDepot depot_; // so that there is a client
    const ComPtr<FakeHost> host_ = FakeHost::Make();
    User user_;
};

TEST_F(P4Commands, OptionsAreUserPasswordAndServerInThisOrder)
{
    EXPECT_EQ(Options(u"p4://u:p@server:1///depot/x"), u"-u \"u\" -P \"p\" -p \"server:1\" ");
    EXPECT_EQ(Options(u"p4://u@server///depot/x"), u"-u \"u\" -p \"server\" ");
    EXPECT_THAT(host_->Calls(), IsEmpty());
}

TEST_F(P4Commands, TheHostIsAskedWithoutAUserOrForAStar)
{
    host_->credentials = {S_OK, u"U", u"P", u"other:1"};
    EXPECT_EQ(Options(u"p4:////depot/x"), u"-u \"U\" -P \"P\" -p \"other:1\" ");
    EXPECT_EQ(Options(u"p4://u:*@server///depot/x"), u"-u \"U\" -P \"P\" -p \"other:1\" ");
    EXPECT_EQ(Options(u"p4://:p@server///depot/x"), u"-u \"U\" -P \"P\" -p \"other:1\" ");
    EXPECT_THAT(host_->Calls(), ElementsAre(u"GetCredentials|1||", u"GetCredentials|1|server|u",
                                            u"GetCredentials|1|server|"));
}

TEST_F(P4Commands, APasswordWithoutAUserIsLeftOut)
{
    host_->credentials = {S_OK, std::nullopt, u"P", u"server"};
    EXPECT_EQ(Options(u"p4:////depot/x"), u"-p \"server\" ");
    host_->credentials = {S_OK, std::nullopt, u"P", std::nullopt};
    EXPECT_EQ(Options(u"p4://@server///depot/x"), u"") << "a null host is none";
}

TEST_F(P4Commands, WithoutAnAnswerTheAddressStands)
{
    host_->credentials.status = E_FAIL;
    EXPECT_EQ(Options(u"p4://:p@server///depot/x"), u"-p \"server\" ");
    EXPECT_EQ(Options(u"p4:////depot/x"), u"");
    EXPECT_THAT(host_->Calls(),
                ElementsAre(u"GetCredentials|1|server|", u"ReportMissingCredentials|1|server|",
                            u"GetCredentials|1||", u"ReportMissingCredentials|1||"));
    user_.SetHostObject(nullptr);
    EXPECT_EQ(Options(u"p4://@server///depot/x"), u"-p \"server\" ");
}

TEST_F(P4Commands, WithoutAClientTheHostIsNeverAsked)
{
    const TempFolder empty;
    const EnvironmentValue path("PATH", empty.Path().string().c_str());
    host_->credentials = {S_OK, u"U", u"P", u"other"};
    EXPECT_EQ(Options(u"p4://@server///depot/x"), u"-p \"server\" ");
    EXPECT_EQ(Options(u"p4://u:*@server///depot/x"), u"-u \"u\" -P \"*\" -p \"server\" ");
    EXPECT_THAT(host_->Calls(), IsEmpty());
}

TEST_F(P4Commands, BlanksStandWhereTheyAlwaysStood)
{
    EXPECT_EQ(P4FstatArguments(u"//depot/a b"), u"fstat -s -l \"//depot/a b\"");
    EXPECT_EQ(P4DirsArguments(u"//depot/*"), u"dirs \"//depot/*\"");
    EXPECT_EQ(P4PrintArguments(u"//depot/a#3", u"C:\\t\\vrl1.tmp"),
              u"print -o \"C:\\t\\vrl1.tmp\" -q \"//depot/a#3\"");
    EXPECT_EQ(P4FilelogArguments(u"//depot/a"), u" filelog -l -t \"//depot/a\" ");
    EXPECT_EQ(P4HaveArguments(u"//depot/a"), u" have \"//depot/a\"");
}

TEST_F(P4Commands, AValueIsOneArgumentWhateverIsInIt)
{
    EXPECT_EQ(P4FstatArguments(u"//depot/a\" -x \"b"), u"fstat -s -l \"//depot/a\\\" -x \\\"b\"");
    EXPECT_EQ(P4DirsArguments(u"//depot/a\\"), u"dirs \"//depot/a\\\\\"");
    EXPECT_EQ(P4PrintArguments(u"//a\"", u"t\\"), u"print -o \"t\\\\\" -q \"//a\\\"\"");
    EXPECT_EQ(P4FilelogArguments(u"\""), u" filelog -l -t \"\\\"\" ");
    EXPECT_EQ(P4HaveArguments(u"\\"), u" have \"\\\\\"");
    EXPECT_EQ(Options(u"p4://u\":p\\@s\"///x"), u"-u \"u\\\"\" -P \"p\\\\\" -p \"s\\\"\" ");
}

TEST_F(P4Commands, ListedNamesGoBackAsTheirBytes)
{
    EXPECT_EQ(P4PathArgument(u"//d/\u00c3\u00a4", true), u"//d/\u00e4");
    EXPECT_EQ(P4PathArgument(u"//d/\u00f0\u009f\u0098\u0080", true), u"//d/\U0001F600");
    EXPECT_EQ(P4PathArgument(u"//d/\u00c3\u00a4", false), u"//d/\u00c3\u00a4");
    for (const std::u16string path :
         {u"//d/a", u"", u"//d/\u00e4", u"//d/\u00c3\u00a4\u00e4", u"//d/\u00c3\u00a4\u65e5",
          u"//d/\u00ed\u00a0\u0080", u"//d/\u65e5"})
        EXPECT_EQ(P4PathArgument(path, true), path) << "no bytes of UTF-8";
}

// Listed ones are widened bytes, typed ones are text; neither is encoded twice beside the other.
TEST_F(P4Commands, ListedNamesAndTypedOnesStandBesideEachOther)
{
    for (const auto& [path, argument] :
         {std::pair{u"//d/\u00c3\u00a4/*@\u00e4", u"//d/\u00e4/*@\u00e4"},
          std::pair{u"//d/\u00c3\u00a4/\u65e5#1", u"//d/\u00e4/\u65e5#1"},
          std::pair{u"\u00e4@\u00c3\u00a4", u"\u00e4@\u00e4"},
          std::pair{u"\u00e4#\u00c3\u00a4/", u"\u00e4#\u00e4/"}})
        EXPECT_EQ(P4PathArgument(path, true), argument);
}

TEST(P4Items, AFoundOneHasItsWholeAddressWithoutARevision)
{
    PerforceDepot depot;
    depot.Submit("dir/a.txt", "one");
    depot.Submit("dir/a.txt", "two");
    const User user;
    const auto found = [&](const std::u16string& address) {
        return P4FindItem(user, P4Uri(address))->text;
    };
    const std::u16string dir = u"p4://u:p@server:1///depot/base/dir";
    EXPECT_EQ(found(dir + u"/a.txt#1"), dir + u"/a.txt");
    EXPECT_EQ(found(dir + u"@1"), dir);
    EXPECT_EQ(found(u"p4://depot/base/dir//"), u"p4:////depot/base/dir");
}

// What the client wrote to its error stream, and its exit code, as a failure.
class P4Failures : public P4Commands
{
protected:
    struct Raised
    {
        HRESULT status;
        std::u16string text;

        bool operator==(const Raised&) const = default;
    };

    Raised Check(const std::u16string& errors, int exitCode) const
    {
        const P4Uri uri(u"p4:////depot/x");
        return Check(&uri, errors, exitCode);
    }
    Raised Check(const Uri* uri, const std::u16string& errors, int exitCode) const
    {
        try
        {
            CheckP4Failure(user_, uri, u"p4:////shown", {exitCode, errors});
            return {S_OK, u""};
        }
        catch (const ComException& exception)
        {
            EXPECT_EQ(std::u16string(exception.file), u"p4objects");
            return {static_cast<HRESULT>(exception.code), WithLineFeeds(exception.message)};
        }
    }
    static Raised Failed(HRESULT status, const std::u16string& words)
    {
        return {status, u"An error occurred while accessing \"p4:////shown\"\n\n" + words};
    }
};

constexpr HRESULT noSuchFile = static_cast<HRESULT>(0x80070002);

TEST_F(P4Failures, NoErrorTextIsSuccessWhateverTheExitCode)
{
    EXPECT_EQ(Check(u"", 0), (Raised{S_OK, u""}));
    EXPECT_EQ(Check(u"", 1), (Raised{S_OK, u""}));
}

TEST_F(P4Failures, WarningsAreDropped)
{
    EXPECT_EQ(Check(u"//depot/x@1 - no file(s) at that changelist number.\n", 0),
              (Raised{S_OK, u""}));
    EXPECT_EQ(Check(u"No such file(s).", 0), (Raised{S_OK, u""})) << "letters are exact";
    EXPECT_THAT(host_->Calls(), IsEmpty());
}

TEST_F(P4Failures, RefusedCredentialsAreTheHostsToForget)
{
    const std::u16string hint =
        u"\n\nYou can configure this information in Options > Application > "
        u"Credentials.";
    for (const std::u16string words :
         {u"Perforce password (P4PASSWD) invalid or unset.",
          u"Can't create a new user - over license quota.", u"no such file P4PASSWD"})
    {
        for (const int exitCode : {0, 1})
        {
            EXPECT_EQ(Check(u" \r\n" + words + u"\t\r\n", exitCode), Failed(E_FAIL, words + hint));
            EXPECT_EQ(host_->Calls().back(), u"ForgetCredentials|Perforce: " + words);
        }
    }
    EXPECT_EQ(host_->Calls().size(), 6U);
}

TEST_F(P4Failures, WithoutAnAddressRefusalsAreFailuresLikeOthers)
{
    EXPECT_EQ(Check(nullptr, u"P4PASSWD", 1), Failed(E_FAIL, u"P4PASSWD"));
    EXPECT_EQ(Check(nullptr, u"P4PASSWD", 0), (Raised{S_OK, u""}));
    EXPECT_EQ(Check(nullptr, u"P4PASSWD no such file", 0),
              Failed(noSuchFile, u"P4PASSWD no such file"));
    EXPECT_THAT(host_->Calls(), IsEmpty());
}

TEST_F(P4Failures, AMissingFileIsOneWhateverTheExitCode)
{
    for (const int exitCode : {0, 1})
        EXPECT_EQ(Check(u"//depot/x - no such file(s).\r\n", exitCode),
                  Failed(noSuchFile, u"//depot/x - no such file(s)."));
}

// Words are looked for in the whole text, the name of the file included.
TEST_F(P4Failures, AFileMayBeNamedAfterAFailure)
{
    EXPECT_EQ(Check(u"//depot/no such file.txt - warning.\n", 0),
              Failed(noSuchFile, u"//depot/no such file.txt - warning."));
}

TEST_F(P4Failures, ErrorTextWithAnExitCodeIsAFailure)
{
    for (const std::u16string words :
         {u"Your session has expired, please login again.", u"Password invalid.",
          u"Perforce client error:\n\tConnect to server failed; check $P4PORT."})
    {
        EXPECT_EQ(Check(words + u"\n", 1), Failed(E_FAIL, words));
        EXPECT_EQ(Check(words + u"\n", -1), Failed(E_FAIL, words));
    }
    EXPECT_THAT(host_->Calls(), IsEmpty()) << "not even refusals of newer servers";
}

TEST_F(P4Failures, WithoutAHostNobodyIsTold)
{
    user_.SetHostObject(nullptr);
    EXPECT_EQ(Check(u"P4PASSWD", 1).status, E_FAIL);
}

} // namespace
} // namespace tarnwell::test
