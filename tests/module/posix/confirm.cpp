// Deletion with a question, answered or not.
#include "module/localtest.h"

#include <cstdlib>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tarnwell::test
{

namespace
{

class Confirmation : public LocalTest
{
protected:
    // The status of a deletion in a process of its own that has neither display nor terminal.
    HRESULT DeleteUnseen(const ComPtr<IFileSystemItem>& item, bool recursive)
    {
        int ends[2];
        EXPECT_EQ(pipe(ends), 0);
        const pid_t child = fork();
        if (child == 0)
        {
            setsid();
            unsetenv("DISPLAY");
            unsetenv("WAYLAND_DISPLAY");
            const HRESULT status =
                item->Delete(VARIANT_FALSE, recursive ? VARIANT_TRUE : VARIANT_FALSE);
            _exit(write(ends[1], &status, sizeof status) == sizeof status ? 0 : 1);
        }
        close(ends[1]);
        HRESULT status = S_FALSE;
        EXPECT_EQ(read(ends[0], &status, sizeof status), static_cast<ssize_t>(sizeof status));
        close(ends[0]);
        int code = 1;
        waitpid(child, &code, 0);
        EXPECT_EQ(code, 0);
        return status;
    }
};

TEST_F(Confirmation, NobodyToAskIsANo)
{
    const std::u16string file = Put(u"a.txt");
    const std::u16string sub = MakeDirectory(u"sub");
    for (const bool recursive : {false, true})
    {
        EXPECT_EQ(DeleteUnseen(File(file).As<IFileSystemItem>(), recursive), E_FAIL);
        EXPECT_EQ(DeleteUnseen(Folder(sub).As<IFileSystemItem>(), recursive), E_FAIL);
    }
    EXPECT_TRUE(Exists(file));
    EXPECT_TRUE(Exists(sub));
}

// A process of its own with a terminal, at which somebody answers.
class Answered
{
public:
    // What the deletion gave, and the question that it showed.
    HRESULT status = S_FALSE;
    std::string shown;

    Answered(const ComPtr<IFileSystemItem>& item, bool recursive, std::string_view answer)
    {
        int terminal = -1;
        const pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
        if (child == 0)
            DeleteAndExit(item, recursive);
        EXPECT_EQ(write(terminal, answer.data(), answer.size()),
                  static_cast<ssize_t>(answer.size()));
        char buffer[512];
        for (ssize_t count = 0; (count = read(terminal, buffer, sizeof buffer)) > 0;)
            shown.append(buffer, static_cast<std::size_t>(count));
        int code = 0;
        waitpid(child, &code, 0);
        close(terminal);
        EXPECT_TRUE(WIFEXITED(code));
        status = WEXITSTATUS(code) == 0 ? S_OK : E_FAIL;
    }

private:
    [[noreturn]] static void DeleteAndExit(const ComPtr<IFileSystemItem>& item, bool recursive)
    {
        unsetenv("DISPLAY");
        unsetenv("WAYLAND_DISPLAY");
        const HRESULT status =
            item->Delete(VARIANT_FALSE, recursive ? VARIANT_TRUE : VARIANT_FALSE);
        _exit(status == S_OK ? 0 : 1);
    }
};

TEST_F(Confirmation, AYesDeletes)
{
    const std::u16string file = Put(u"a.txt");
    const Answered answered(File(file).As<IFileSystemItem>(), false, "y\n");
    EXPECT_EQ(answered.status, S_OK);
    EXPECT_NE(answered.shown.find("a.txt"), std::string::npos) << answered.shown;
    EXPECT_FALSE(Exists(file));
}

TEST_F(Confirmation, ANoDeletesNothing)
{
    const std::u16string file = Put(u"a.txt");
    EXPECT_EQ(Answered(File(file).As<IFileSystemItem>(), false, "n\n").status, E_FAIL);
    EXPECT_EQ(ReadBytes(file), "content");
}

TEST_F(Confirmation, AFolderWithContentsGoesOnlyWhereRecursionIsAsked)
{
    const std::u16string sub = MakeDirectory(u"sub");
    MakeDirectory(u"sub/deeper");
    const auto item = Folder(sub).As<IFileSystemItem>();
    EXPECT_EQ(Answered(item, false, "y\n").status, E_FAIL);
    EXPECT_TRUE(Exists(sub + u"/deeper"));
    EXPECT_EQ(Answered(item, true, "y\n").status, S_OK);
    EXPECT_FALSE(Exists(sub));
}

} // namespace

} // namespace tarnwell::test
