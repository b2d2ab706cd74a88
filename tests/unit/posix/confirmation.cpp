// The question before a deletion on a server, answered by a stand-in for the dialog program.
#include "frame/confirmation.h"
#include "support/fakehost.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <functional>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>

namespace tarnwell::test
{
namespace
{

namespace fs = std::filesystem;

class Confirmation : public testing::Test
{
protected:
    Confirmation() : program_(folder_.Path() / "zenity"), asked_(folder_.Path() / "asked") {}

    void AnswerWith(int exitCode) const
    {
        std::ofstream(program_) << "#!/bin/sh\nprintf '%s\\n' \"$@\" >" << asked_ << "\nexit "
                                << exitCode << "\n";
        fs::permissions(program_, fs::perms::owner_all);
    }

    std::string Asked() const
    {
        std::ostringstream text;
        text << std::ifstream(asked_).rdbuf();
        return text.str();
    }

    // The answer of `ask`, run in a child with the stand-in on its path and with a display.
    bool Run(const std::function<bool()>& ask, const char* language = "C") const
    {
        const pid_t child = fork();
        if (child == 0)
        {
            setsid();
            setenv("PATH", (folder_.Path().string() + ":/usr/bin:/bin").c_str(), 1);
            setenv("DISPLAY", ":0", 1);
            setenv("LC_ALL", language, 1);
            _exit(ask() ? 0 : 1);
        }
        int status = 0;
        waitpid(child, &status, 0);
        return WIFEXITED(status) && WEXITSTATUS(status) == 0;
    }

    const TempFolder folder_;
    const fs::path program_;
    const fs::path asked_;
};

TEST_F(Confirmation, YesDeletesAndTheQuestionNamesTheItem)
{
    AnswerWith(0);
    EXPECT_TRUE(Run([] { return ConfirmDeletionOfItem(nullptr, u"ftp://host/dir/a.txt"); }));
    EXPECT_NE(
        Asked().find("Are you sure that you want to delete this item?\n\nftp://host/dir/a.txt"),
        std::string::npos)
        << Asked();
}

TEST_F(Confirmation, AnyOtherAnswerDeletesNothing)
{
    AnswerWith(1);
    EXPECT_FALSE(Run([] { return ConfirmDeletionOfItem(nullptr, u"ftp://host/a"); }));
    EXPECT_FALSE(Run([] { return ConfirmDeletionOfItems(nullptr); }));
}

TEST_F(Confirmation, SeveralItemsHaveOneQuestion)
{
    AnswerWith(0);
    EXPECT_TRUE(Run([] { return ConfirmDeletionOfItems(nullptr); }));
    EXPECT_NE(Asked().find("Are you sure that you want to delete these items?"), std::string::npos);
}

TEST_F(Confirmation, AsksInTheUsersLanguage)
{
    AnswerWith(0);
    EXPECT_TRUE(Run([] { return ConfirmDeletionOfItems(nullptr); }, "ja_JP.UTF-8"));
    EXPECT_NE(Asked().find("これらの項目を削除しますか?"), std::string::npos);
}

} // namespace
} // namespace tarnwell::test
