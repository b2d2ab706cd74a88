// What files of work trees would be recorded as in a Git repository.
#include "module/githistorytest.h"

#include <tarnwell/text.h>

namespace tarnwell::test
{
namespace
{

namespace fs = std::filesystem;

class GitWorkFiles : public GitHistories
{
protected:
    static Outcome Ask(const ComPtr<ITree>& tree, const std::u16string& path, std::u16string& id,
                       ICopyProgress* progress = nullptr)
    {
        Bstr text;
        const auto files = tree.As<ITreeWorkFiles>();
        Outcome outcome =
            OutcomeOf([&] { return files->GetRecordedId(Ole(path), progress, text.Out()); });
        EXPECT_EQ(outcome.status == S_OK, static_cast<bool>(text));
        if (text)
            id = text.View();
        return outcome;
    }
    static std::u16string RecordedId(const ComPtr<ITree>& tree, const std::u16string& path)
    {
        std::u16string id;
        EXPECT_THAT(Ask(tree, path, id), Succeeded());
        return id;
    }
    static HRESULT Status(const ComPtr<ITree>& tree, const std::u16string& path)
    {
        std::u16string id;
        return Ask(tree, path, id).status;
    }

    bool IsUnchanged(const ComPtr<ITree>& tree, const std::u16string& name) const
    {
        return RecordedId(tree, repository / name) == FindIn(tree, name).contentId;
    }
    void AddToSettings(const std::string& text) const
    {
        const std::u16string path = repository / u".git/config";
        WriteBytes(path, ReadBytes(path) + text);
    }
};

struct Converted
{
    const char16_t* name;
    std::string onDisk;
    std::string recorded;
    // Of the same size.
    std::string changed;
};

TEST_F(GitWorkFiles, AreUnchangedWhereOnlyTheirFormIsAnother)
{
    const std::string wide("\xFF\xFE\x61\0\xE4\0\n\0", 8);
    const std::string otherWide("\xFF\xFE\x62\0\xE4\0\n\0", 8);
    const Converted files[] = {
        {u"plain.txt", "a\r\nb\r\n", "a\nb\n", "a\r\nc\r\n"},
        {u"sub/ends.dat", "a\r\n\r\n", "a\n\n", "b\r\n\r\n"},
        {u"keyword.c", "$Id: 1 $ a", "$Id$ a", "$Id: 1 $ b"},
        {u"wide.ps1", wide, "a\xC3\xA4\n", otherWide},
        {u"own.bin", "a\r\n", "a\r\n", "b\r\n"},
        {u"-x \u00e4 'y' #1", "a\r\n", "a\n", "b\r\n"},
    };
    AddToSettings("[core]\nautocrlf = true\nsafecrlf = true\n");
    WriteBytes(repository / u".gitattributes", "*.c ident\n*.bin -text\n"
                                               "*.ps1 text working-tree-encoding=UTF-16LE-BOM\n");
    fs::create_directory(fs::path(repository / u"sub"));
    WriteBytes(repository / u"sub/.gitattributes", "*.dat text eol=crlf\n");
    AddToSettings("[core]\nsafecrlf = false\n");
    for (const Converted& file : files)
        WriteBytes(repository / file.name, file.onDisk);
    repository.Commit(u"last", "", "first");
    const auto tree = TreeAt();
    AddToSettings("[core]\nsafecrlf = true\n");
    for (const Converted& file : files)
    {
        EXPECT_EQ(ContentOf(tree, file.name), file.recorded);
        EXPECT_TRUE(IsUnchanged(tree, file.name)) << testing::PrintToString(file.name);
    }
    for (const Converted& file : files)
    {
        WriteBytes(repository / file.name, file.changed);
        EXPECT_FALSE(IsUnchanged(tree, file.name)) << testing::PrintToString(file.name);
    }
}

// Which are what the files were made by.
TEST_F(GitWorkFiles, FollowTheAttributesOfTheUserAndOfTheRepository)
{
    WriteBytes(repository / u"a.x", "a\r\n");
    WriteBytes(repository / u"a.y", "a\r\n");
    repository.Commit(u"last", "", "first");
    const auto tree = TreeAt();
    EXPECT_TRUE(IsUnchanged(tree, u"a.x"));
    AddToSettings("[core]\nattributesFile = of-the-user\n");
    WriteBytes(repository / u"of-the-user", "*.x text\n");
    WriteBytes(repository / u".git/info/attributes", "*.y text\n");
    const auto later = TreeAt();
    EXPECT_FALSE(IsUnchanged(later, u"a.x"));
    EXPECT_FALSE(IsUnchanged(later, u"a.y"));
    EXPECT_TRUE(IsUnchanged(later, u"last"));
}

TEST_F(GitWorkFiles, RunNoFilter)
{
    repository.Commit(u"a.txt", "1", "first");
    repository.Commit(u".gitattributes", "*.txt filter=mine\n", "attributes");
    const std::string program = "\"touch was-run; cat\"";
    std::string settings;
    for (const char* const name : {"mine", "a=b.C d", "\\\"q\\\\", "\xC3\xA4", ""})
    {
        settings += std::string("[filter \"") + name + "\"]\n";
        for (const char* const each : {"clean", "smudge", "process"})
            settings += std::string(each) + " = " + program + "\n";
        settings += "required = true\n";
    }
    WriteBytes(repository / u"included",
               settings + "[Filter \"other\"]\nClean = " + program + "\nRequired = true\n");
    AddToSettings(settings + "[include]\npath = ../included\n");
    std::string attributes = "old.txt filter=OTHER\n";
    for (const char* const name : {"mine", "other", "\xC3\xA4"})
    {
        const std::string file = std::string("of-") + name + ".txt";
        attributes += file + " filter=" + name + "\n";
        WriteBytes(repository / DecodeName(file), "1");
    }
    WriteBytes(repository / u".git/info/attributes", attributes);
    const auto tree = TreeAt();
    const std::u16string unfiltered = FindIn(tree, u"a.txt").contentId;
    for (const char16_t* const name : {u"a.txt", u"of-mine.txt", u"of-other.txt", u"of-\u00e4.txt"})
        EXPECT_EQ(RecordedId(tree, repository / name), unfiltered) << testing::PrintToString(name);
    const fs::path trace(repository / u"was-run");
    EXPECT_FALSE(fs::exists(trace));
    // The program is one that the client would run.
    EXPECT_THROW(repository.Git("hash-object a.txt"), std::exception);
    EXPECT_TRUE(fs::exists(trace));
}

// A variable couldn't tell it on all systems, so that its program would be run.
TEST_F(GitWorkFiles, AreNotAskedForWhereAFilterHasANameThatIsNoText)
{
    repository.Commit(u"a.txt", "1", "first");
    const auto tree = TreeAt();
    WriteBytes(repository / u".git/info/attributes", "* filter=\xE4\n");
    AddToSettings("[filter \"\xE4\"]\nclean = \"touch was-run; cat\"\n");
    std::u16string id;
    EXPECT_THAT(Ask(tree, repository / u"a.txt", id),
                FailedSaying(HistoryBadSettings, u"The settings "));
    EXPECT_FALSE(fs::exists(fs::path(repository / u"was-run")));
}

TEST_F(GitWorkFiles, AreThoseOfAllWorkTreesOfTheRepository)
{
    AddToSettings("[core]\nautocrlf = true\n");
    repository.Commit(u"sub/a.txt", "a\r\n", "first");
    const TempFolder other;
    const std::u16string linked = other / u"linked";
    const std::u16string bare = other / u"bare";
    const std::u16string ofBare = other / u"of-bare";
    repository.Run({"worktree", "add", "-q", EncodeName(linked).value()});
    repository.Run({"clone", "-q", "--bare", ".", EncodeName(bare).value()});
    RunClient("git", {"worktree", "add", "-q", EncodeName(ofBare).value()}, fs::path(bare));
    const std::u16string file = repository / u"sub/a.txt";
    const std::u16string linkedFile = Joined(linked, u"sub/a.txt");
    const std::u16string bareFile = Joined(ofBare, u"sub/a.txt");
    const std::u16string outside = other / u"outside.txt";
    WriteBytes(outside, "a\r\n");
    WriteBytes(linkedFile, "a\r\n");
    const std::u16string recorded = FindIn(TreeAt(), u"sub/a.txt").contentId;
    for (const auto& tree : {TreeAt(), Tree(linked)})
    {
        for (int round = 0; round < 2; ++round)
        {
            EXPECT_EQ(RecordedId(tree, file), recorded);
            EXPECT_EQ(RecordedId(tree, linkedFile), recorded);
            EXPECT_EQ(RecordedId(tree, bareFile), u"") << "another repository's";
        }
        EXPECT_EQ(RecordedId(tree, outside), u"");
    }
    const auto tree = Tree(bare);
    EXPECT_EQ(RecordedId(tree, bareFile), recorded);
    EXPECT_EQ(RecordedId(tree, Joined(bare, u"config")), u"");
    EXPECT_EQ(RecordedId(tree, file), u"");
}

// A link to a repository that isn't there any more, as in a copy of a submodule.
TEST_F(GitWorkFiles, AreNobodysWhereThereIsNoRepositoryAfterAll)
{
    repository.Commit(u"a.txt", "1", "first");
    const TempFolder other;
    WriteBytes(other / u".git", "gitdir: nowhere\n");
    WriteBytes(other / u"a.txt", "1");
    EXPECT_EQ(RecordedId(TreeAt(), other / u"a.txt"), u"");
}

TEST_F(GitWorkFiles, AreLocalFiles)
{
    repository.Commit(u"sub/a.txt", "1", "first");
    const auto tree = TreeAt();
    for (const std::u16string& path :
         {std::u16string(), std::u16string(u"a.txt"), std::u16string(u"ftp://127.0.0.1/a.txt"),
          Address(u"sub/a.txt"), repository.Folder().Text()})
        EXPECT_EQ(RecordedId(tree, path), u"") << testing::PrintToString(path);
    for (const char16_t* const name : {u"none", u"sub", u"sub/a.txt/b"})
    {
        EXPECT_EQ(Status(tree, repository / name), HistoryClientFailed);
        EXPECT_TRUE(IsUnchanged(tree, u"sub/a.txt")) << "another client answers";
    }
}

TEST_F(GitWorkFiles, MayBeAskedForWhileTheHostIs)
{
    repository.Commit(u"a.txt", "1", "first");
    const TempFolder other;
    const std::u16string linked = other / u"linked";
    repository.Run({"worktree", "add", "-q", EncodeName(linked).value()});
    const auto tree = TreeAt();
    const std::u16string recorded = FindIn(tree, u"a.txt").contentId;
    TreeSink asked;
    bool isAsking = false;
    asked.wantsMore = [&] {
        if (!isAsking)
        {
            isAsking = true;
            EXPECT_EQ(RecordedId(tree, Joined(linked, u"a.txt")), recorded);
            isAsking = false;
        }
        return true;
    };
    for (int round = 0; round < 3; ++round)
    {
        std::u16string id;
        EXPECT_THAT(Ask(tree, repository / u"a.txt", id, &asked), Succeeded());
        EXPECT_EQ(id, recorded);
    }
    EXPECT_GE(asked.questions, 3);
    asked.wantsMore = [] {
        return false;
    };
    std::u16string id;
    EXPECT_THAT(Ask(tree, repository / u"a.txt", id, &asked),
                FailedSaying(E_ABORT, u"The operation was cancelled."));
    EXPECT_TRUE(IsUnchanged(tree, u"a.txt"));
    EXPECT_EQ(asked.references, 0U);
}

} // namespace
} // namespace tarnwell::test
