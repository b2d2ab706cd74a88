// Deletion through the shell, which asks the user and walks folders.
#pragma once

#include "platform/win32.h"

#include <string>

namespace tarnwell
{

// The shell's list of paths: each with its terminator, and one more at the end.
class ShellList
{
public:
    ShellList& Add(const std::u16string& path);
    const WCHAR* Get() const;

private:
    std::u16string text_ = std::u16string(1, u'\0');
};

enum ShellUndo : bool
{
    ForGood,
    ToTrash
};

struct ShellOutcome
{
    int error;    // the shell's own code, 0 for success
    bool aborted; // the user said no somewhere
};

ShellOutcome ShellDelete(HWND owner, const ShellList& list, bool noConfirm, bool recursive,
                         ShellUndo undo);

} // namespace tarnwell
