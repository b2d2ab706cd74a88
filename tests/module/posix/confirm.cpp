// Deletion with a question, which a stand-in for the dialog program answers, or nobody.
#include "module/localtest.h"
#include "support/posix/child.h"
#include "support/posix/dialogprogram.h"

namespace tarnwell::test
{

namespace
{

using testing::HasSubstr;
using testing::Matcher;

class Confirmation : public LocalTest
{
protected:
    // Whether a deletion with a question comes out as `expected`. It runs in a process of its own,
    // which has no terminal.
    void DeleteGives(const ComPtr<IFileSystemItem>& item, bool recursive,
                     const Matcher<Outcome>& expected) const
    {
        const int code = ExitCodeOfChild([&] {
            dialog.UseHere(display);
            const VARIANT_BOOL all = recursive ? VARIANT_TRUE : VARIANT_FALSE;
            const Outcome outcome = OutcomeOf([&] { return item->Delete(VARIANT_FALSE, all); });
            return testing::Value(outcome, expected) ? asExpected : otherwise;
        });
        EXPECT_EQ(code, asExpected) << "recursive: " << recursive;
    }

    static Matcher<Outcome> Refusal(const std::u16string& path)
    {
        return Failed(E_FAIL, u"Can't delete the file or folder \"" + path + u"\".");
    }

    std::u16string MakeFullDirectory()
    {
        const std::u16string path = MakeDirectory(u"full");
        WriteBytes(Joined(path, u"a.txt"), "content");
        return path;
    }

    DialogProgram dialog;
    bool display = true;
};

TEST_F(Confirmation, NobodyToAskIsANo)
{
    display = false;
    dialog.AnswerWith(DialogProgram::yes);
    const std::u16string file = Put(u"a.txt");
    const std::u16string sub = MakeDirectory(u"sub");
    for (const bool recursive : {false, true})
    {
        DeleteGives(File(file).As<IFileSystemItem>(), recursive, Refusal(file));
        DeleteGives(Folder(sub).As<IFileSystemItem>(), recursive, Refusal(sub));
    }
    EXPECT_TRUE(Exists(file));
    EXPECT_TRUE(Exists(sub));
    EXPECT_EQ(dialog.Asked(), "");
}

TEST_F(Confirmation, ANoLeavesTheItem)
{
    dialog.AnswerWith(DialogProgram::no);
    const std::u16string full = MakeFullDirectory();
    for (const bool recursive : {false, true})
        DeleteGives(Folder(full).As<IFileSystemItem>(), recursive, Refusal(full));
    EXPECT_TRUE(Exists(Joined(full, u"a.txt")));
    EXPECT_THAT(dialog.Asked(), HasSubstr("full?"));
}

TEST_F(Confirmation, AYesRemovesAFolderWithAllThatIsInIt)
{
    dialog.AnswerWith(DialogProgram::yes);
    const std::u16string full = MakeFullDirectory();
    DeleteGives(Folder(full).As<IFileSystemItem>(), true, Succeeded());
    EXPECT_FALSE(Exists(full));
}

TEST_F(Confirmation, AYesRemovesNoFullFolderUnlessAllOfItIsMeant)
{
    dialog.AnswerWith(DialogProgram::yes);
    const std::u16string full = MakeFullDirectory();
    DeleteGives(Folder(full).As<IFileSystemItem>(), false, Refusal(full));
    EXPECT_TRUE(Exists(Joined(full, u"a.txt")));
    EXPECT_THAT(dialog.Asked(), HasSubstr("full?"));
}

TEST_F(Confirmation, AYesRemovesAFile)
{
    dialog.AnswerWith(DialogProgram::yes);
    for (const bool recursive : {false, true})
    {
        const std::u16string file = Put(u"a.txt");
        DeleteGives(File(file).As<IFileSystemItem>(), recursive, Succeeded());
        EXPECT_FALSE(Exists(file));
    }
}

} // namespace

} // namespace tarnwell::test
