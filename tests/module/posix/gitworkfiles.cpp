// What files of Git's work trees would be recorded as: names that other systems can't have, and how
// clients are run for it.
#include "module/githistorytest.h"
#include "support/posix/standinclient.h"

#include <tarnwell/text.h>

#include <algorithm>
#include <fstream>
#include <sys/stat.h>

namespace tarnwell::test
{
namespace
{

class GitWorkFileRuns : public GitHistories
{
protected:
    static std::u16string RecordedId(const ComPtr<ITree>& tree, const std::u16string& path)
    {
        Bstr id;
        EXPECT_EQ(tree.As<ITreeWorkFiles>()->GetRecordedId(Ole(path), nullptr, id.Out()), S_OK);
        return id ? std::u16string(id.View()) : u"";
    }
    void Convert() const
    {
        repository.Git("config core.autocrlf true");
    }
};

TEST_F(GitWorkFileRuns, AnyNameIsOne)
{
    Convert();
    const std::vector<std::string> names = {"a\nb", "-w", "--stdin", "\"q\"", "\"",          "\\n",
                                            "x\r",  " ",  "\t",      "\xE4",  "sub\n/\\\"'$"};
    for (std::size_t i = 0; i < names.size(); ++i)
    {
        const std::filesystem::path path = repository.Folder().Path() / names[i];
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path) << i << "\r\n";
    }
    repository.Commit(u"last", "", "first");
    const auto tree = TreeAt();
    for (const std::string& name : names)
    {
        const std::u16string text = DecodeName(name);
        const std::u16string path = repository.Folder().Text() + u"/" + text;
        EXPECT_EQ(RecordedId(tree, path), FindIn(tree, text).contentId) << name;
    }
}

TEST_F(GitWorkFileRuns, OneClientAnswersForAllFiles)
{
    Convert();
    constexpr int count = 20;
    for (int i = 0; i < count; ++i)
        WriteBytes(repository / Widened("f" + std::to_string(i)), std::to_string(i) + "\r\n");
    repository.Commit(u"last", "", "first");
    const StandInClient client("git", "exec \"$REAL\" \"$@\"");
    const auto tree = TreeAt();
    for (int i = 0; i < count; ++i)
    {
        const std::u16string name = Widened("f" + std::to_string(i));
        EXPECT_EQ(RecordedId(tree, repository / name), FindIn(tree, name).contentId);
    }
    const std::vector<std::string> runs = client.Runs();
    const auto runsOf = [&](const char* command) {
        return std::count_if(runs.begin(), runs.end(), [&](const std::string& run) {
            return run.find(command) != std::string::npos;
        });
    };
    EXPECT_EQ(runsOf("hash-object"), 1);
    EXPECT_EQ(runsOf("config --list"), 1);
    EXPECT_EQ(runs.size(), 3U) << "and the tree's own";
}

// The client would read from them for as long as nobody writes, or for ever.
TEST_F(GitWorkFileRuns, WhatHasNoEndIsNoFile)
{
    repository.Commit(u"a.txt", "1", "first");
    const std::filesystem::path folder = repository.Folder().Path();
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    std::filesystem::create_symlink("pipe", folder / "link");
    std::filesystem::create_symlink("/dev/zero", folder / "device");
    const auto tree = TreeAt();
    TreeSink asked;
    asked.wantsMore = [&] {
        return asked.questions < 100;
    };
    for (const char16_t* const name : {u"pipe", u"link", u"device"})
    {
        Bstr id;
        EXPECT_THAT(
            OutcomeOf([&] {
                return tree.As<ITreeWorkFiles>()->GetRecordedId(Ole(repository / name), &asked,
                                                                id.Out());
            }),
            FailedSaying(HistoryClientFailed, u"\"" + repository / name + u"\" isn't a file."));
        EXPECT_FALSE(id);
    }
    EXPECT_EQ(RecordedId(tree, repository / u"a.txt"), FindIn(tree, u"a.txt").contentId);
}

TEST_F(GitWorkFileRuns, WhatIsNoIdIsABadAnswer)
{
    repository.Commit(u"a.txt", "1", "first");
    for (const char* const answer : {"", "none", "123", "-1"})
    {
        const StandInClient client("git",
                                   std::string("case \"$*\" in *hash-object*) read x; echo ") +
                                       answer + ";; *) exec \"$REAL\" \"$@\";; esac");
        const auto tree = TreeAt();
        Bstr id;
        EXPECT_EQ(
            tree.As<ITreeWorkFiles>()->GetRecordedId(Ole(repository / u"a.txt"), nullptr, id.Out()),
            HistoryBadAnswer)
            << answer;
        EXPECT_FALSE(id);
    }
}

TEST_F(GitWorkFileRuns, WhatIsLeftOfABadAnswerAnswersNothingElse)
{
    WriteBytes(repository / u"a.txt", "a\r\n");
    repository.Commit(u"last", "", "first");
    const std::string other(40, '1');
    const StandInClient client("git", "case \"$*\" in *hash-object*) read x; echo none; echo " +
                                          other + "; read x;; *) exec \"$REAL\" \"$@\";; esac");
    const auto tree = TreeAt();
    for (int time = 0; time < 2; ++time)
    {
        Bstr id;
        EXPECT_EQ(
            tree.As<ITreeWorkFiles>()->GetRecordedId(Ole(repository / u"a.txt"), nullptr, id.Out()),
            HistoryBadAnswer);
        EXPECT_FALSE(id);
    }
}

TEST_F(GitWorkFileRuns, TheUsersOwnAttributesCount)
{
    WriteBytes(repository / u"a.txt", "a\r\n");
    repository.Commit(u"last", "", "first");
    const std::u16string asItIs = FindIn(TreeAt(), u"a.txt").contentId;
    EXPECT_EQ(RecordedId(TreeAt(), repository / u"a.txt"), asItIs);
    const TempFolder home;
    std::filesystem::create_directories(home.Path() / ".config/git");
    WriteBytes(home / u".config/git/attributes", "*.txt text\n");
    const EnvironmentValue variable("HOME", home.Path().c_str());
    const EnvironmentValue other("XDG_CONFIG_HOME", nullptr);
    EXPECT_NE(RecordedId(TreeAt(), repository / u"a.txt"), asItIs);
}

// Those in a repository that the client doesn't open aren't known to be the tree's.
TEST_F(GitWorkFileRuns, WhatIsRefusedIsNobodys)
{
    repository.Commit(u"a.txt", "1", "first");
    const TempFolder other;
    std::filesystem::create_directories(other.Path() / "refused/.git");
    WriteBytes(other / u"refused/.git/HEAD", "ref: refs/heads/main\n");
    WriteBytes(other / u"refused/a.txt", "1");
    const StandInClient client("git", "case \"$PWD\" in */refused) echo 'fatal: detected dubious "
                                      "ownership in repository' >&2; exit 128;; esac\n"
                                      "exec \"$REAL\" \"$@\"");
    EXPECT_EQ(RecordedId(TreeAt(), other / u"refused/a.txt"), u"");
    EXPECT_THAT(client.Runs(), testing::Contains(testing::HasSubstr("rev-parse")));
}

// Those of the system count for files of work trees, and for nothing else.
TEST_F(GitWorkFileRuns, TheSystemsAttributesCount)
{
    repository.Commit(u"a.txt", "1", "first");
    const TempFolder seen;
    const StandInClient client(
        "git", "case \"$*\" in *hash-object*) f=work;; *cat-file*) f=tree;; *) f=other;; esac\n"
               "tr '\\0' '\\n' </proc/$$/environ >'" +
                   seen.Path().string() + "'/$f\nexec \"$REAL\" \"$@\"");
    const auto tree = TreeAt();
    EXPECT_EQ(RecordedId(tree, repository / u"a.txt"), FindIn(tree, u"a.txt").contentId);
    const std::string work = ReadBytes(seen / u"work");
    EXPECT_THAT(work, testing::HasSubstr("GIT_WORK_TREE=."));
    EXPECT_THAT(work, testing::Not(testing::HasSubstr("GIT_ATTR_NOSYSTEM")));
    EXPECT_THAT(ReadBytes(seen / u"tree"), testing::HasSubstr("GIT_ATTR_NOSYSTEM=1\n"));
}

} // namespace
} // namespace tarnwell::test
