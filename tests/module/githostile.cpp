// Repositories as an archive from a stranger may bring them: no setting in one runs a program, and
// none changes what is told.
#include "module/githistorytest.h"
#include "module/trees.h"

#include <tarnwell/text.h>

#include <sstream>

namespace tarnwell::test
{
namespace
{

namespace fs = std::filesystem;

// Leaves a file behind if it is run, wherever the client is then.
const std::string program = "touch was-run; false";

struct Setting
{
    const char* name;
    const char* text; // lines of a configuration; "PROGRAM" is one that leaves a trace
};

void PrintTo(const Setting& setting, std::ostream* out)
{
    *out << setting.name;
}

std::string WithProgram(std::string text)
{
    constexpr std::string_view mark = "PROGRAM";
    for (std::size_t at = text.find(mark); at != std::string::npos; at = text.find(mark))
        text.replace(at, mark.size(), "\"" + program + "\"");
    return text;
}

constexpr Setting programs[] = {
    {"Monitor", "[core]\nfsmonitor = PROGRAM\nfsmonitorHookVersion = 2\nuntrackedCache = true\n"},
    {"Pager", "[core]\npager = PROGRAM\n[pager]\nlog = PROGRAM\nls-tree = PROGRAM\n"
              "cat-file = PROGRAM\n"},
    {"Editor", "[core]\neditor = PROGRAM\n[sequence]\neditor = PROGRAM\n"},
    {"Hooks", "[core]\nhooksPath = hooks\n"},
    {"UsualHooks", ""},
    {"Alias", "[alias]\nlog = !PROGRAM\ncat-file = !PROGRAM\nls-tree = !PROGRAM\n"},
    {"ExternalDiff", "[diff]\nexternal = PROGRAM\ntool = x\n[difftool \"x\"]\ncmd = PROGRAM\n"},
    {"Conversion", "[diff \"mine\"]\ncommand = PROGRAM\ntextconv = PROGRAM\n"
                   "cachetextconv = true\nbinary = true\nxfuncname = .*\n"},
    {"Filter", "[filter \"mine\"]\nclean = PROGRAM\nsmudge = PROGRAM\nprocess = PROGRAM\n"
               "required = true\n"},
    {"Merge", "[merge \"mine\"]\ndriver = PROGRAM\n"},
    {"Signature", "[log]\nshowSignature = true\n[gpg]\nprogram = PROGRAM\nformat = openpgp\n"
                  "[gpg \"openpgp\"]\nprogram = PROGRAM\n[gpg \"ssh\"]\nprogram = PROGRAM\n"
                  "defaultKeyCommand = PROGRAM\n[gpg \"x509\"]\nprogram = PROGRAM\n"},
    {"Trailers", "[trailer \"x\"]\ncommand = PROGRAM\ncmd = PROGRAM\n[format]\n"
                 "pretty = %(trailers)%GG%G?\n"},
    {"OtherObjects", "[core]\nalternateRefsCommand = PROGRAM\nalternateRefsPrefixes = refs\n"},
    {"Transport", "[core]\nsshCommand = PROGRAM\ngitProxy = PROGRAM\naskPass = PROGRAM\n"
                  "[credential]\nhelper = !PROGRAM\n[uploadpack]\npackObjectsHook = PROGRAM\n"
                  "[protocol]\nallow = always\n[protocol \"ext\"]\nallow = always\n"},
    {"Included", "[include]\npath = ../included\n[includeIf \"gitdir:**\"]\npath = ../included\n"},
    {"OfTheWorktree", "[core]\nrepositoryformatversion = 1\n[extensions]\nworktreeConfig = true\n"},
};

constexpr Setting changes[] = {
    {"Colors", "[color]\nui = always\ndiff = always\n[column]\nui = always\n"},
    {"Quoting", "[core]\nquotePath = true\nabbrev = 4\n"},
    {"Replacing", "[core]\nuseReplaceRefs = true\n"},
    {"Diffs", "[diff]\nnoprefix = true\nrenames = false\nrelative = true\nignoreSubmodules = all\n"
              "renameLimit = 1\nwordRegex = x\ncontext = 0\nmnemonicPrefix = true\n"
              "submodule = log\ncolorMoved = zebra\nalgorithm = patience\nstatGraphWidth = 1\n"},
    {"Copies", "[diff]\nrenames = copies\n"},
    {"NoOrder", "[diff]\norderFile = /nonexistent\n"},
    {"Logs", "[log]\nmailmap = true\nfollow = true\ndecorate = full\nshowRoot = false\n"
             "date = relative\ndiffMerges = m\nabbrevCommit = true\nexcludeDecoration = *\n"
             "initialDecorationSet = all\n"},
    {"Formats", "[format]\npretty = oneline\nnotes = true\n[notes]\ndisplayRef = refs/notes/*\n"},
    {"NoFormat", "[format]\npretty = nosuch\n"},
    {"UserFormat", "[format]\npretty = mine\n[pretty]\nmine = x\ntformat = y\n"},
    {"Encodings", "[i18n]\nlogOutputEncoding = UTF-16\ncommitEncoding = UTF-16\n"},
    {"Submodules", "[submodule]\nrecurse = true\n[diff]\nsubmodule = diff\n"},
    {"Mailmap", "[mailmap]\nfile = .mailmap\nblob = HEAD:a.txt\n"},
    {"OtherTree", "[core]\nworktree = /\n"},
    {"NoTree", "[core]\nbare = true\n"},
    {"Cases", "[core]\nignoreCase = true\nprecomposeUnicode = true\nautocrlf = true\neol = crlf\n"},
    {"Attributes", "[core]\nattributesFile = nosuch\n"},
    {"Hints", "[core]\nwarnAmbiguousRefs = true\ndisambiguate = blob\n[advice]\n"
              "graftFileDeprecated = true\n"},
    {"Graph", "[core]\ncommitGraph = false\nmultiPackIndex = false\n[feature]\n"
              "experimental = true\nmanyFiles = true\n"},
};

class HostileGit : public GitHistories, public testing::WithParamInterface<Setting>
{
protected:
    // What there is to be told, before anybody has set up anything.
    void SetUp() override
    {
        GitHistories::SetUp();
        if (IsSkipped())
            return;
        first_ = repository.Commit(u"old.txt", "one\ntwo\nthree\nfour\n", "first");
        repository.Run({"mv", "old.txt", "a.txt"});
        repository.Git("commit -q -m moved");
        CommitRaw("author Ann <a@b> 1000000000 +0000\ncommitter Ann <a@b> 1000000001 +0000\n"
                  "gpgsig -----BEGIN PGP SIGNATURE-----\n \n abc\n -----END PGP SIGNATURE-----",
                  "signed\n\nx: y\n");
        repository.Commit(u"a.txt", "one\r\ntwo\r\nthree\r\nfour\r\n", "last");
        repository.Git("notes add -m note HEAD");
        expected_ = TellAll();
        ASSERT_EQ(History(Address(u"a.txt"), Wanted(HistoryFollow)).size(), 3U);
        ASSERT_EQ(expected_.size(), 8U);
    }
    // Everything, as texts.
    std::vector<std::string> TellAll() const
    {
        std::vector<std::string> told;
        for (const std::uint32_t flags : {0U, std::uint32_t{HistoryFollow}})
        {
            for (const HistoryEntry& entry : History(Address(u"a.txt"), Wanted(flags)))
            {
                told.push_back(EncodeName(entry.id + entry.author + entry.description + entry.path +
                                          entry.address)
                                   .value());
            }
        }
        ComPtr<ITree> tree;
        const auto trees = system.As<IFileSystemTrees>();
        EXPECT_THAT(OutcomeOf([&] {
                        return trees->OpenTree(Ole(Address(u"", "HEAD")), nullptr, nullptr,
                                               tree.Out());
                    }),
                    Succeeded());
        if (!tree)
            return told;
        for (const bool recursive : {false, true})
        {
            for (const TreeEntry& entry : ListOf(tree, {}, recursive))
                told.push_back(EncodeName(entry.name + entry.contentId).value());
        }
        told.push_back(ContentOf(tree, u"a.txt"));
        return told;
    }
    void SetUpInRepository(const std::string& text) const
    {
        const std::u16string path = repository / u".git/config";
        WriteBytes(path, ReadBytes(path) + text);
        WriteBytes(repository / u"included", text);
        WriteBytes(repository / u".git/config.worktree", text);
        WriteBytes(repository / u".gitattributes", "* diff=mine filter=mine merge=mine text\n");
        WriteBytes(repository / u".git/info/attributes", "* diff=mine filter=mine\n");
        WriteBytes(repository / u".mailmap", "Else <else@example.org> <a@example.org>\n");
        WriteBytes(repository / u".git/info/grafts", first_ + "\n");
        for (const char16_t* const folder : {u"hooks", u".git/hooks"})
        {
            fs::create_directories(fs::path(repository / folder));
            for (const char16_t* const hook :
                 {u"post-index-change", u"post-checkout", u"reference-transaction",
                  u"fsmonitor-watchman", u"pre-auto-gc"})
            {
                const fs::path file = fs::path(repository / folder) / hook;
                WriteBytes(file.u16string(), "#!/bin/sh\n" + program + "\n");
                fs::permissions(file, fs::perms::owner_all);
            }
        }
    }
    void ExpectNothingWasRun(const TempFolder& folder) const
    {
        for (const auto& file : fs::recursive_directory_iterator(folder.Path()))
            EXPECT_NE(file.path().filename(), "was-run") << file.path();
    }

    std::string first_;
    std::vector<std::string> expected_;
};

TEST_P(HostileGit, ChangesNothingAndRunsNothing)
{
    std::string text = WithProgram(GetParam().text);
    SetUpInRepository(text);
    EXPECT_EQ(TellAll(), expected_);
    ExpectNothingWasRun(repository.Folder());
}

std::string NameOf(const testing::TestParamInfo<Setting>& info)
{
    return info.param.name;
}

INSTANTIATE_TEST_SUITE_P(Programs, HostileGit, testing::ValuesIn(programs), NameOf);
INSTANTIATE_TEST_SUITE_P(Changes, HostileGit, testing::ValuesIn(changes), NameOf);

class AllOfHostileGit : public HostileGit
{
};

TEST_P(AllOfHostileGit, ChangesNothingAndRunsNothing)
{
    std::string text;
    for (const Setting& setting : programs)
        text += WithProgram(setting.text);
    for (const Setting& setting : changes)
        text += WithProgram(setting.text);
    SetUpInRepository(text);
    EXPECT_EQ(TellAll(), expected_);
    // Which follows settings, but no program.
    Bstr id;
    EXPECT_EQ(
        TreeAt().As<ITreeWorkFiles>()->GetRecordedId(Ole(repository / u"a.txt"), nullptr, id.Out()),
        S_OK);
    EXPECT_EQ(id ? id.View().size() : 0, 40U);
    ExpectNothingWasRun(repository.Folder());
}

INSTANTIATE_TEST_SUITE_P(Programs, AllOfHostileGit, testing::Values(Setting{"AtOnce", ""}), NameOf);

// The programs are ones that the client would run: else the rest shows nothing.
TEST_F(GitHistories, TheProgramsOfHostileSettingsWouldRun)
{
    repository.Commit(u"a.txt", "1", "first");
    repository.Run({"config", "alias.mine", "!" + program});
    EXPECT_THROW(repository.Git("mine"), std::exception);
    EXPECT_TRUE(fs::exists(fs::path(repository / u"was-run")));
}

// Where a client would fetch what isn't there, from a place of the repository's choice.
class HostilePromise : public Git, public testing::WithParamInterface<Setting>
{
};

TEST_P(HostilePromise, FetchesNothingAndRunsNothing)
{
    repository.Commit(u"sub/a.txt", "content", "first");
    for (const char* const object : {"HEAD:sub/a.txt", "HEAD:sub"})
    {
        repository.RemoveObject(object);
        const std::u16string config = repository / u".git/config";
        WriteBytes(config, ReadBytes(config) +
                               WithProgram("[core]\nrepositoryformatversion = 1\n"
                                           "sshCommand = PROGRAM\ngitProxy = PROGRAM\n"
                                           "alternateRefsCommand = PROGRAM\nhooksPath = hooks\n"
                                           "[protocol]\nallow = always\n"
                                           "[protocol \"ext\"]\nallow = always\n"
                                           "[credential]\nhelper = !PROGRAM\n"
                                           "[extensions]\npartialClone = origin\n"
                                           "[remote \"origin\"]\npromisor = true\n"
                                           "uploadpack = PROGRAM\nproxy = PROGRAM\n"
                                           "partialclonefilter = blob:none\n") +
                               WithProgram(GetParam().text));
        ComPtr<ITree> tree;
        const auto trees = system.As<IFileSystemTrees>();
        ASSERT_EQ(trees->OpenTree(Ole(Address(u"", "HEAD")), nullptr, nullptr, tree.Out()), S_OK);
        EXPECT_THAT(OpenFailure(tree, u"sub/a.txt"),
                    FailedSaying(HistoryIncomplete, u"The repository doesn't hold all "));
        TreeSink sink;
        EXPECT_EQ(tree->List(Ole(u""), VARIANT_TRUE, &sink), HistoryIncomplete);
        for (const auto& each : fs::recursive_directory_iterator(repository.Folder().Path()))
            EXPECT_NE(each.path().filename(), "was-run") << each.path();
    }
}

INSTANTIATE_TEST_SUITE_P(
    Places, HostilePromise,
    testing::Values(Setting{"Program", "url = \"ext::sh -c 'touch was-run'\"\n"},
                    Setting{"Folder", "url = .\n"}, Setting{"File", "url = file:///tmp\n"},
                    Setting{"Shell", "url = ssh://127.0.0.1:1/r\n"},
                    Setting{"ShortShell", "url = 127.0.0.1:r\n"},
                    Setting{"Daemon", "url = git://127.0.0.1:1/r\n"},
                    Setting{"Web", "url = http://127.0.0.1:1/r\n"},
                    Setting{"Descriptor", "url = fd::0\n"},
                    Setting{"Helper", "url = x\nvcs = ext\n"},
                    Setting{"Rewritten", "url = x:y\n[url \"ext::\"]\ninsteadOf = x:\n"}),
    NameOf);

} // namespace
} // namespace tarnwell::test
