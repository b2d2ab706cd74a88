// Files copied the short way.
#pragma once

#include "platform/wide.h"

#include <functional>

namespace tarnwell::test
{

// What the progress of a copy was told, and what it answers.
struct Progress
{
    // The answer to question `n`, counted from 1.
    std::function<DWORD(int n)> answer = [](int) {
        return PROGRESS_CONTINUE;
    };
    int questions = 0;
    LONGLONG size = 0;
    LONGLONG done = 0;

    static DWORD CALLBACK Routine(LARGE_INTEGER size, LARGE_INTEGER done, LARGE_INTEGER,
                                  LARGE_INTEGER, DWORD, DWORD, HANDLE, HANDLE, LPVOID data)
    {
        auto& progress = *static_cast<Progress*>(data);
        progress.size = size.QuadPart;
        progress.done = done.QuadPart;
        return progress.answer(++progress.questions);
    }
};

// The error of a copy; ERROR_SUCCESS if there is none.
inline DWORD ErrorOfCopy(const std::u16string& source, const std::u16string& target,
                         DWORD flags = 0, Progress* progress = nullptr)
{
    const BOOL done =
        CopyFileExW(Wide(source), Wide(target), progress == nullptr ? nullptr : &Progress::Routine,
                    progress, nullptr, flags);
    return done ? ERROR_SUCCESS : GetLastError();
}

} // namespace tarnwell::test
