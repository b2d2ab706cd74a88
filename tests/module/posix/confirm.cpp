// Deletion with a question and nobody to answer it.
#include "module/localtest.h"

#include <cstdlib>
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

} // namespace

} // namespace tarnwell::test
