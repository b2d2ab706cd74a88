// Deleting to the trash, through the desktop's own program.
#include "support/posix/trash.h"
#include "platform/shelldelete.h"
#include "support/posix/child.h"
#include "support/posix/dialogprogram.h"

#include <gmock/gmock.h>

#include <csignal>
#include <fstream>
#include <sys/stat.h>

namespace tarnwell::test
{
namespace
{

namespace fs = std::filesystem;

constexpr WORD undo = FOF_NOCONFIRMATION | FOF_ALLOWUNDO;

class TrashTest : public testing::Test
{
protected:
    // As ShellDelete gives it; -1 for an abort.
    static int CodeOf(std::initializer_list<std::u16string> paths, unsigned flags = undo)
    {
        const ShellResult result = ShellDelete(paths, static_cast<WORD>(flags));
        return result.aborted ? -1 : result.code;
    }
    bool Has(const fs::path& name) const
    {
        return fs::exists(fs::symlink_status(folder_.Path() / name));
    }
    void MakeTree(const std::string& name) const
    {
        fs::create_directories(folder_.Path() / name / "sub");
        WriteBytes((folder_.Path() / name / "sub" / "file").u16string(), "deep");
    }

    TempFolder folder_;
    Trash trash_;
};

TEST_F(TrashTest, AFileComesBackWhole)
{
    WriteBytes(folder_ / u"a b", "bytes");
    fs::permissions(folder_ / u"a b", fs::perms::owner_read);
    const auto time = fs::last_write_time(folder_ / u"a b");
    EXPECT_EQ(CodeOf({folder_ / u"a b"}), 0);
    EXPECT_FALSE(Has("a b"));
    EXPECT_EQ(trash_.OriginOf("a b"), folder_.Path() / "a b");
    trash_.Restore("a b");
    EXPECT_EQ(ReadBytes(folder_ / u"a b"), "bytes");
    EXPECT_EQ(fs::last_write_time(folder_ / u"a b"), time);
    EXPECT_EQ(fs::status(folder_ / u"a b").permissions(), fs::perms::owner_read);
}

TEST_F(TrashTest, AFolderComesBackWithAllThatIsInIt)
{
    MakeTree("tree");
    EXPECT_EQ(CodeOf({folder_ / u"tree"}), 0);
    EXPECT_FALSE(Has("tree"));
    trash_.Restore("tree");
    EXPECT_EQ(ReadBytes((folder_.Path() / "tree" / "sub" / "file").u16string()), "deep");
}

TEST_F(TrashTest, AListGoesThereAndNothingElse)
{
    MakeTree("tree");
    for (const char16_t* const name : {u"a", u"b", u"kept"})
        WriteBytes(folder_ / name, "");
    EXPECT_EQ(CodeOf({folder_ / u"a", folder_ / u"tree", folder_ / u"b"}), 0);
    EXPECT_EQ(trash_.Count(), 3U);
    EXPECT_TRUE(Has("kept"));
    EXPECT_FALSE(Has("a") || Has("b") || Has("tree"));
}

TEST_F(TrashTest, ALinkGoesAsALink)
{
    MakeTree("tree");
    fs::create_symlink("tree", folder_ / u"link");
    fs::create_symlink("tree", folder_ / u"other");
    EXPECT_EQ(CodeOf({folder_ / u"link", folder_ / u"other/"}), 0);
    EXPECT_FALSE(Has("link") || Has("other"));
    EXPECT_EQ(fs::read_symlink(trash_ / "link"), "tree");
    EXPECT_EQ(fs::read_symlink(trash_ / "other"), "tree");
    EXPECT_TRUE(Has("tree/sub/file"));
}

TEST_F(TrashTest, NamesAreLiteral)
{
    for (const std::string name : {"-f", "*", "a:b", "%41", "\xff\n"})
        std::ofstream(folder_.Path() / name) << name;
    WriteBytes(folder_ / u"A", "");
    const fs::path before = fs::current_path();
    fs::current_path(folder_.Path());
    const int code = CodeOf({u"-f", u"*", u"a:b", u"%41", u"\xDCFF\n"});
    fs::current_path(before);
    EXPECT_EQ(code, 0);
    EXPECT_EQ(trash_.Count(), 5U);
    EXPECT_TRUE(Has("A"));
    EXPECT_EQ(trash_.OriginOf("\xff\n"), folder_.Path() / "\xff\n");
}

TEST_F(TrashTest, MoreThanOneCommandTakes)
{
    const std::u16string stem(200, u'n');
    std::u16string list;
    for (int i = 0; i < 1000; ++i)
    {
        const std::string digits = std::to_string(i);
        const std::u16string path = folder_ / (stem + std::u16string(digits.begin(), digits.end()));
        WriteBytes(path, "");
        list += path + u'\0';
    }
    SHFILEOPSTRUCTW operation = {};
    operation.wFunc = FO_DELETE;
    operation.pFrom = Wide(list);
    operation.fFlags = undo;
    EXPECT_EQ(SHFileOperationW(&operation), 0);
    EXPECT_EQ(trash_.Count(), 1000U);
    EXPECT_TRUE(fs::is_empty(folder_.Path()));
}

TEST_F(TrashTest, WithoutRecursionOnlyAnEmptyFolderGoes)
{
    MakeTree("full");
    fs::create_directory(folder_ / u"empty");
    fs::create_symlink("full", folder_ / u"link");
    WriteBytes(folder_ / u"a", "");
    EXPECT_EQ(CodeOf({folder_ / u"a", folder_ / u"full"}, undo | FOF_NORECURSION),
              static_cast<int>(ERROR_DIR_NOT_EMPTY));
    EXPECT_TRUE(Has("a")) << "nothing is touched unless all of it may be";
    EXPECT_EQ(trash_.Count(), 0U);
    EXPECT_EQ(
        CodeOf({folder_ / u"a", folder_ / u"empty", folder_ / u"link"}, undo | FOF_NORECURSION), 0);
    EXPECT_EQ(trash_.Count(), 3U);
    EXPECT_TRUE(Has("full/sub/file"));
}

TEST_F(TrashTest, WithoutAProgramForItNothingIsDeleted)
{
    MakeTree("tree");
    const EnvironmentValue path("PATH", folder_.Path().c_str());
    EXPECT_EQ(CodeOf({folder_ / u"tree"}), static_cast<int>(ERROR_NOT_SUPPORTED));
    EXPECT_TRUE(Has("tree/sub/file"));
}

TEST_F(TrashTest, WhereThereIsNoTrashNothingIsDeleted)
{
    // A file where the folder would be.
    const EnvironmentValue data("XDG_DATA_HOME", (folder_.Path() / "a").c_str());
    WriteBytes(folder_ / u"a", "");
    EXPECT_EQ(CodeOf({folder_ / u"a"}), static_cast<int>(ERROR_GEN_FAILURE));
    EXPECT_TRUE(Has("a"));
}

TEST_F(TrashTest, AFileSystemWithoutTrashKeepsItsFiles)
{
    std::string name = "/dev/shm/tarnwell-test-XXXXXX";
    if (mkdtemp(name.data()) == nullptr)
        GTEST_SKIP() << "there is no file system in memory";
    struct stat here = {};
    struct stat there = {};
    ASSERT_EQ(stat(folder_.Path().c_str(), &here) + stat(name.c_str(), &there), 0);
    const fs::path file = fs::path(name) / "a";
    WriteBytes(file.u16string(), "kept");
    const int code = CodeOf({file.u16string()});
    const bool isKept = fs::exists(file);
    fs::remove_all(name);
    if (here.st_dev == there.st_dev)
        GTEST_SKIP() << "both are one file system";
    EXPECT_EQ(code, static_cast<int>(ERROR_GEN_FAILURE));
    EXPECT_TRUE(isKept);
}

TEST_F(TrashTest, AHostThatIgnoresItsChildrenHearsOfItAllTheSame)
{
    WriteBytes(folder_ / u"a", "");
    EXPECT_EQ(ExitCodeOfChild([&] {
                  std::signal(SIGCHLD, SIG_IGN);
                  return CodeOf({folder_ / u"a"});
              }),
              0);
    EXPECT_EQ(trash_.Count(), 1U);

    WriteBytes(folder_ / u"b", "");
    EXPECT_EQ(ExitCodeOfChild([&] {
                  std::signal(SIGCHLD, SIG_IGN);
                  setenv("XDG_DATA_HOME", "/dev/null", 1);
                  return CodeOf({folder_ / u"b"});
              }),
              static_cast<int>(ERROR_GEN_FAILURE));
    EXPECT_TRUE(Has("b"));
}

TEST_F(TrashTest, TheQuestionSaysWhereItGoes)
{
    const DialogProgram dialog;
    const std::string path = dialog.Folder().string() + ":" + std::getenv("PATH");
    WriteBytes(folder_ / u"a", "");
    const auto answered = [&](int answer) {
        dialog.AnswerWith(answer);
        return ExitCodeOfChild([&] {
            dialog.UseHere();
            setenv("PATH", path.c_str(), 1);
            unsetenv("LC_ALL");
            setenv("LC_MESSAGES", "C", 1);
            return CodeOf({folder_ / u"a"}, FOF_ALLOWUNDO) & 0xFF;
        });
    };
    EXPECT_EQ(answered(DialogProgram::no), 0xFF);
    EXPECT_TRUE(Has("a"));
    EXPECT_THAT(dialog.Asked(),
                testing::HasSubstr("Move " + (folder_.Path() / "a").string() + " to the trash?"));
    EXPECT_EQ(answered(DialogProgram::yes), 0);
    EXPECT_FALSE(Has("a"));
    EXPECT_EQ(trash_.Count(), 1U);
}

TEST_F(TrashTest, NobodyToAskIsNo)
{
    WriteBytes(folder_ / u"a", "");
    EXPECT_EQ(ExitCodeOfChild([&] {
                  unsetenv("DISPLAY");
                  unsetenv("WAYLAND_DISPLAY");
                  return CodeOf({folder_ / u"a"}, FOF_ALLOWUNDO) & 0xFF;
              }),
              0xFF);
    EXPECT_TRUE(Has("a"));
}

} // namespace
} // namespace tarnwell::test
