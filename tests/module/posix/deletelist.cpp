// Deleting a list: to the trash, after a question or without one.
#include "module/localtest.h"
#include "support/fakeprogress.h"
#include "support/posix/child.h"
#include "support/posix/dialogprogram.h"
#include "support/posix/trash.h"

#include <cstdlib>

namespace tarnwell::test
{

namespace
{

using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Matcher;

namespace fs = std::filesystem;

class DeleteList : public LocalTest
{
protected:
    Outcome Delete(FakeItemList& list, bool recursive = false)
    {
        const VARIANT_BOOL all = recursive ? VARIANT_TRUE : VARIANT_FALSE;
        Outcome outcome = OutcomeOf([&] { return system->DeleteItems(&list, VARIANT_TRUE, all); });
        EXPECT_EQ(list.references, 0U);
        return outcome;
    }
    Outcome Delete(std::vector<std::optional<std::u16string>> entries, bool recursive = false)
    {
        FakeItemList list(std::move(entries));
        return Delete(list, recursive);
    }

    // Whether a deletion with a question comes out as `expected`. It runs in a process of its own,
    // which has no terminal; what answers is the dialog program, if there is a display.
    void DeleteAsking(const std::u16string& path, bool display, const Matcher<Outcome>& expected)
    {
        const std::string search = dialog.Folder().string() + ":" + std::getenv("PATH");
        const int code = ExitCodeOfChild([&] {
            dialog.UseHere(display);
            setenv("PATH", search.c_str(), 1);
            FakeItemList list({path});
            const Outcome outcome =
                OutcomeOf([&] { return system->DeleteItems(&list, VARIANT_FALSE, VARIANT_FALSE); });
            return testing::Value(outcome, expected) ? asExpected : otherwise;
        });
        EXPECT_EQ(code, asExpected);
    }

    static Matcher<Outcome> ListFailed()
    {
        return Failed(E_FAIL, u"Failed to delete the list of items.");
    }

    std::u16string MakeFullDirectory(const std::u16string& name = u"full")
    {
        const std::u16string path = MakeDirectory(name);
        WriteBytes(Joined(path, u"a.txt"), "inside");
        return path;
    }

    Trash trash;
    DialogProgram dialog;
};

TEST_F(DeleteList, GoesToTheTrashAndComesBackWhole)
{
    const std::u16string file = Put(u"a b.txt", "bytes");
    const std::u16string full = MakeFullDirectory();
    Put(u"kept");
    EXPECT_THAT(Delete({file, full}, true), Succeeded());
    EXPECT_FALSE(Exists(file));
    EXPECT_FALSE(Exists(full));
    EXPECT_TRUE(Exists(folder / u"kept"));
    trash.Restore("a b.txt");
    trash.Restore("full");
    EXPECT_EQ(ReadBytes(file), "bytes");
    EXPECT_EQ(ReadBytes(Joined(full, u"a.txt")), "inside");
}

TEST_F(DeleteList, OneItemIsDeletedForGoodWhereAListIsNot)
{
    const std::u16string file = Put(u"a.txt");
    EXPECT_EQ(File(file).As<IFileSystemItem>()->Delete(VARIANT_TRUE, VARIANT_TRUE), S_OK);
    EXPECT_EQ(trash.Count(), 0U);
    Put(u"a.txt");
    EXPECT_THAT(Delete({file}), Succeeded());
    EXPECT_EQ(trash.Count(), 1U) << "also a list of one";
}

TEST_F(DeleteList, WithoutRecursionOnlyEmptyFoldersGo)
{
    const std::u16string full = MakeFullDirectory();
    const std::u16string empty = MakeDirectory(u"empty");
    EXPECT_THAT(Delete({empty, full}), ListFailed());
    EXPECT_TRUE(Exists(Joined(full, u"a.txt")));
    EXPECT_TRUE(Exists(empty));
    EXPECT_THAT(Delete({empty}), Succeeded());
    EXPECT_FALSE(Exists(empty));
}

TEST_F(DeleteList, ALinkToAFolderGoesAsALink)
{
    const std::u16string full = MakeFullDirectory();
    for (const bool recursive : {false, true})
    {
        for (const char16_t* const path : {u"link", u"link/"})
        {
            fs::create_symlink("full", folder / u"link");
            EXPECT_THAT(Delete({folder / path}, recursive), Succeeded());
            EXPECT_FALSE(Exists(folder / u"link"));
            EXPECT_EQ(ReadBytes(Joined(full, u"a.txt")), "inside");
        }
    }
    EXPECT_EQ(trash.Count(), 4U);
    for (const auto& entry : fs::directory_iterator((trash / "link").parent_path()))
        EXPECT_TRUE(entry.is_symlink()) << entry;
}

// The same, one by one and for good, with each choice there is.
TEST_F(DeleteList, ALinkToAFolderIsNeverFollowed)
{
    const std::u16string full = MakeFullDirectory();
    const std::u16string path = folder / u"link";
    fs::create_symlink("full", path);
    const auto link = Folder(path).As<IFileSystemItem>();
    EXPECT_EQ(link->Delete(VARIANT_TRUE, VARIANT_FALSE), Win32Status(5));
    EXPECT_TRUE(Exists(path));
    EXPECT_EQ(link->Delete(VARIANT_TRUE, VARIANT_TRUE), S_OK);
    EXPECT_FALSE(Exists(path));
    EXPECT_EQ(ReadBytes(Joined(full, u"a.txt")), "inside");

    const std::u16string above = MakeDirectory(u"above");
    fs::create_symlink("../full", Joined(above, u"link"));
    EXPECT_EQ(Folder(above).As<IFileSystemItem>()->Delete(VARIANT_TRUE, VARIANT_TRUE), S_OK);
    EXPECT_EQ(ReadBytes(Joined(full, u"a.txt")), "inside");
}

TEST_F(DeleteList, WithoutATrashNothingIsDeleted)
{
    const std::u16string file = Put(u"a.txt");
    {
        const EnvironmentValue path("PATH", "/nowhere");
        EXPECT_THAT(Delete({file}), ListFailed());
    }
    {
        const EnvironmentValue data("XDG_DATA_HOME", "/dev/null");
        EXPECT_THAT(Delete({file}), ListFailed());
    }
    EXPECT_EQ(ReadBytes(file), "content");
}

TEST_F(DeleteList, AMissingItemFailsAndNothingIsDeleted)
{
    const std::u16string file = Put(u"a.txt");
    EXPECT_THAT(Delete({file, folder / u"missing"}), ListFailed());
    EXPECT_TRUE(Exists(file));
    EXPECT_EQ(trash.Count(), 0U);
}

TEST_F(DeleteList, TheFailureNamesTheInterface)
{
    const auto error = Delete({folder / u"missing"}).error;
    ASSERT_TRUE(error);
    EXPECT_TRUE(error->interfaceId == IID_IFileSystem);
}

TEST_F(DeleteList, AnEmptyListIsDone)
{
    const std::size_t calls = host->Calls().size();
    EXPECT_THAT(Delete(std::vector<std::optional<std::u16string>>{}), Succeeded());
    FakeItemList negative({folder / u"missing"});
    negative.count = -1;
    EXPECT_THAT(Delete(negative), Succeeded());
    FakeItemList failing({folder / u"missing"});
    failing.count = std::nullopt;
    EXPECT_THAT(Delete(failing), Succeeded());
    EXPECT_EQ(host->Calls().size(), calls) << "nobody is asked for a window";
}

TEST_F(DeleteList, BadEntriesArePassedOver)
{
    const std::u16string file = Put(u"a.txt");
    const std::u16string other = Put(u"b.txt");
    EXPECT_THAT(Delete({std::nullopt, file, u"", other, std::nullopt}), Succeeded());
    EXPECT_FALSE(Exists(file));
    EXPECT_FALSE(Exists(other));
    EXPECT_THAT(Delete({std::nullopt, u""}), Succeeded()) << "nothing is left to delete";
}

TEST_F(DeleteList, ATextEndsAtItsTerminator)
{
    const std::u16string file = Put(u"a.txt");
    const std::u16string other = Put(u"b.txt");
    EXPECT_THAT(Delete({file + u'\0' + other}), Succeeded());
    EXPECT_FALSE(Exists(file));
    EXPECT_TRUE(Exists(other));
}

TEST_F(DeleteList, TheHostIsAskedForTheWindow)
{
    EXPECT_THAT(Delete({Put(u"a.txt")}), Succeeded());
    EXPECT_THAT(host->Calls(), Contains(u"GetWindow"));
    system.As<IFileSystemInit>()->SetHost(nullptr);
    EXPECT_THAT(Delete({Put(u"b.txt")}), Succeeded());
}

TEST_F(DeleteList, ANoCountsAsSuccess)
{
    dialog.AnswerWith(DialogProgram::no);
    const std::u16string file = Put(u"a.txt");
    DeleteAsking(file, true, Succeeded());
    EXPECT_TRUE(Exists(file));
    EXPECT_THAT(dialog.Asked(), HasSubstr("a.txt to the trash?"));
}

TEST_F(DeleteList, ACancelCountsAsSuccess)
{
    constexpr int windowClosed = 5;
    dialog.AnswerWith(windowClosed);
    const std::u16string file = Put(u"a.txt");
    DeleteAsking(file, true, Succeeded());
    EXPECT_TRUE(Exists(file));
}

TEST_F(DeleteList, NobodyToAskIsANoAndCountsAsSuccess)
{
    const std::u16string file = Put(u"a.txt");
    DeleteAsking(file, false, Succeeded());
    EXPECT_TRUE(Exists(file));
}

TEST_F(DeleteList, AYesDeletes)
{
    dialog.AnswerWith(DialogProgram::yes);
    const std::u16string file = Put(u"a.txt");
    DeleteAsking(file, true, Succeeded());
    EXPECT_FALSE(Exists(file));
    EXPECT_EQ(trash.Count(), 1U);
}

TEST_F(DeleteList, AYesToWhatFailsIsAFailure)
{
    dialog.AnswerWith(DialogProgram::yes);
    const EnvironmentValue data("XDG_DATA_HOME", "/dev/null");
    const std::u16string file = Put(u"a.txt");
    DeleteAsking(file, true, ListFailed());
    EXPECT_TRUE(Exists(file));
}

} // namespace

} // namespace tarnwell::test
