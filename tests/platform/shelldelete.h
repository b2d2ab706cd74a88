// Deleting through the shell, the short way.
#pragma once

#include "platform/wide.h"

#include <initializer_list>

namespace tarnwell::test
{

// Without any question.
inline constexpr WORD silently = FOF_NOCONFIRMATION;

struct ShellResult
{
    int code;
    bool aborted;
};

inline ShellResult ShellDelete(std::initializer_list<std::u16string> paths, WORD flags)
{
    std::u16string list;
    for (const std::u16string& path : paths)
    {
        list += path;
        list += u'\0';
    }
    SHFILEOPSTRUCTW operation = {};
    operation.wFunc = FO_DELETE;
    operation.pFrom = Wide(list);
    operation.fFlags = flags;
    operation.fAnyOperationsAborted = 1;
    const int code = SHFileOperationW(&operation);
    return {code, operation.fAnyOperationsAborted != 0};
}

} // namespace tarnwell::test
