// The question before a deletion on a server, answered by a stand-in for the dialog program.
#include "addressed/confirmation.h"
#include "support/fakehost.h"
#include "support/posix/child.h"
#include "support/posix/dialogprogram.h"

#include <gmock/gmock.h>

#include <cstdlib>

namespace tarnwell::test
{
namespace
{

using testing::HasSubstr;

constexpr int saidYes = 0;
constexpr int saidNo = 1;
constexpr int windowNotAskedFor = 2;

class Confirmation : public testing::Test
{
protected:
    // The outcome of `ask`, run in a child with the stand-in on its path and with a display.
    template <class Ask> int Run(Ask ask, const char* language = "C") const
    {
        return ExitCodeOfChild([&] {
            dialog.UseHere();
            setenv("LC_ALL", language, 1);
            const bool yes = ask(host->Unknown());
            if (host->Calls() != std::vector<std::u16string>{u"GetWindow"})
                return windowNotAskedFor;
            return yes ? saidYes : saidNo;
        });
    }

    const DialogProgram dialog{};
    const ComPtr<FakeHost> host = FakeHost::Make();
};

bool AskAboutOne(::IUnknown* host)
{
    return ConfirmDeletionOfItem(host, u"ftp://host/dir/a.txt");
}

TEST_F(Confirmation, YesDeletesAndTheQuestionNamesTheItem)
{
    dialog.AnswerWith(DialogProgram::yes);
    EXPECT_EQ(Run(AskAboutOne), saidYes);
    EXPECT_THAT(
        dialog.Asked(),
        HasSubstr("Are you sure that you want to delete this item?\n\nftp://host/dir/a.txt"));
}

TEST_F(Confirmation, AnyOtherAnswerDeletesNothing)
{
    for (const int answer : {DialogProgram::no, 5, 255})
    {
        dialog.AnswerWith(answer);
        EXPECT_EQ(Run(AskAboutOne), saidNo) << answer;
        EXPECT_THAT(dialog.Asked(), HasSubstr("this item?"));
        EXPECT_EQ(Run(ConfirmDeletionOfItems), saidNo) << answer;
        EXPECT_THAT(dialog.Asked(), HasSubstr("these items?"));
    }
}

TEST_F(Confirmation, SeveralItemsHaveOneQuestion)
{
    dialog.AnswerWith(DialogProgram::yes);
    EXPECT_EQ(Run(ConfirmDeletionOfItems), saidYes);
    EXPECT_THAT(dialog.Asked(), HasSubstr("Are you sure that you want to delete these items?"));
}

TEST_F(Confirmation, AsksInTheUsersLanguage)
{
    dialog.AnswerWith(DialogProgram::yes);
    EXPECT_EQ(Run(ConfirmDeletionOfItems, "ja_JP.UTF-8"), saidYes);
    EXPECT_THAT(dialog.Asked(), HasSubstr("これらの項目を削除しますか?"));
}

TEST_F(Confirmation, NeedsNoHost)
{
    dialog.AnswerWith(DialogProgram::yes);
    const int code = ExitCodeOfChild([&] {
        dialog.UseHere();
        return AskAboutOne(nullptr) ? saidYes : saidNo;
    });
    EXPECT_EQ(code, saidYes);
    EXPECT_THAT(dialog.Asked(), HasSubstr("a.txt"));
}

} // namespace
} // namespace tarnwell::test
