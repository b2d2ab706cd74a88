// Settings of users and repositories that would change what Mercurial tells, or run a program:
// where the client sees the traces that they would leave.
#include "module/hghistorytest.h"
#include "support/environmentvalue.h"

#include <tarnwell/text.h>

namespace tarnwell::test
{
namespace
{

namespace fs = std::filesystem;
using testing::ElementsAre;

// Each of these would change what is told, or run the program.
class HgSettings : public HgHistories
{
protected:
    // A line that leaves a file behind where it is run.
    std::string Trace() const
    {
        return "touch \"" + EncodeName(traces_ / u"was-run").value() + "\"";
    }
    std::string Settings() const
    {
        WriteBytes(traces_ / u"evil.py",
                   "open(r'" + EncodeName(traces_ / u"was-loaded").value() + "', 'w').close()\n");
        const std::string trace = Trace();
        std::string text =
            "[extensions]\nevil = " + EncodeName(traces_ / u"evil.py").value() + "\n";
        text += "[hooks]\n";
        for (const char* const hook :
             {"pre-log", "post-log", "fail-log", "pre-cat", "pre-files", "pre-manifest",
              "pre-serve", "pre-version", "pretxnopen", "precommand"})
            text += std::string(hook) + " = " + trace + "\n";
        text += "[alias]\n";
        for (const char* const command : {"log", "cat", "files", "manifest", "serve", "version"})
            text += std::string(command) + " = !" + trace + "\n";
        text += "[defaults]\nlog = --graph\nfiles = -X a.txt\n";
        text +=
            "[decode]\n** = pipe: " + trace + "; cat\n[encode]\n** = pipe: " + trace + "; cat\n";
        text += "[pager]\npager = " + trace + "; cat\n";
        text += "[ui]\neditor = " + trace + "\nverbose = true\ndebug = true\nstyle = xml\n";
        text += "message-output = channel\ncolor = always\nssh = " + trace + "\ntraceback = yes\n";
        text += "[color]\nmode = ansi\n[revsetalias]\ntip = none()\nfile(x) = none()\n";
        text += "[templatealias]\nnode = \"x\"\ncount(x) = \"y\"\n[templates]\ndesc = \"z\"\n";
        text += "[fsmonitor]\nmode = on\n[cmdserver]\nlog = -\n[format]\n";
        text += "[diff]\ngit = yes\n[command-templates]\nlog = nothing\n";
        text += "[paths]\n" + EncodeName(repository.Folder().Path().u16string()).value() +
                " = /elsewhere\n";
        return text;
    }
    void ExpectNoTraces() const
    {
        for (const auto& file : fs::recursive_directory_iterator(traces_.Path()))
            EXPECT_EQ(file.path().filename(), "evil.py");
    }
    const TempFolder traces_;
};

TEST_F(HgSettings, OfTheRepositoryAndTheUserChangeNothing)
{
    repository.Commit(u"a.txt", "content", "first");
    repository.Hg("rename a.txt b.txt");
    Record("second");
    const std::u16string address = Address(u"b.txt");
    const auto expected = History(address, Wanted(HistoryFollow));
    ASSERT_EQ(expected.size(), 2U);
    const std::string settings = Settings();
    for (const char16_t* const name : {u".hg/hgrc", u".hg/hgrc-not-shared"})
        WriteBytes(repository / name, settings);
    WriteBytes(traces_ / u"evil.py", ReadBytes(traces_ / u"evil.py"));
    const TempFolder users;
    WriteBytes(users / u".hgrc", settings);
    const std::string user = EncodeName(users / u".hgrc").value();
    const EnvironmentValue path("HGRCPATH", user.c_str());
    const EnvironmentValue plain("HGPLAINEXCEPT", "alias,i18n,revsetalias,templatealias");
    const EnvironmentValue encoding("HGENCODING", "latin-1");
    EXPECT_EQ(History(address, Wanted(HistoryFollow)), expected);
    const auto tree = TreeAt();
    EXPECT_EQ(ContentOf(tree, u"b.txt"), "content");
    EXPECT_EQ(ListOf(tree, {}, true).size(), 1U);
    ExpectNoTraces();
}

// The test above would see it if the settings were read.
TEST_F(HgSettings, WouldLeaveTraces)
{
    repository.Commit(u"a.txt", "content", "first");
    WriteBytes(repository / u".hg/hgrc", Settings());
    try
    {
        repository.Hg("log");
    }
    catch (const std::exception&)
    {
        // Whatever became of it.
    }
    EXPECT_TRUE(fs::exists(traces_ / u"was-loaded"));
}

TEST_F(HgSettings, OfASharesSourceChangeNothing)
{
    repository.Commit(u"a.txt", "content", "first");
    const TempFolder other;
    const std::u16string shared = other / u"shared";
    repository.Run(
        {"--config", "extensions.share=", "share", "-q", ".", EncodeName(shared).value()});
    WriteBytes(repository / u".hg/hgrc", Settings());
    EXPECT_THAT(Descriptions((fs::path(shared) / "a.txt").u16string()), ElementsAre(u"first"));
    ExpectNoTraces();
}

TEST_F(HgHistories, OfARepositoryThatMustNotBeReadSayWhy)
{
    repository.Commit(u"a.txt", "1", "first");
    WriteBytes(repository / u".hg/store/00changelog.i", "no changelog at all");
    HistorySink sink;
    const Outcome outcome = Read(Address(u"a.txt"), sink);
    EXPECT_EQ(outcome.status, HistoryClientFailed);
    ASSERT_TRUE(outcome.error);
    EXPECT_NE(outcome.error->text.find(u"exit code 255"), std::u16string::npos);
}

} // namespace
} // namespace tarnwell::test
