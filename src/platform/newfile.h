// New files: one that is to take another's place, and one for a program's output.
#pragma once

#include "platform/win32.h"

#include <string>

namespace tarnwell
{

// Whether a file by another name may be had where this error kept one from being made.
bool MayTryAnotherName(DWORD error);

} // namespace tarnwell

extern "C"
{
    // Makes an empty file at `path`, where there must be none. It is to be written and then to take
    // the place of the file at `beside`: whoever may not open that one may not open this one.
    // Leaves nothing behind on failure.
    BOOL MakeFileBeside(const std::u16string& path, const std::u16string& beside);

    // An empty file in the folder for temporary ones (the current one, where there is none that
    // fits), to be read and written and given to other programs. It goes with its last handle, also
    // if the host dies. INVALID_HANDLE_VALUE, with the last error set, if there is none; `unopened`
    // is then its path if it was made and could only not be opened.
    HANDLE CreateOutputFile(std::u16string& unopened);
}
