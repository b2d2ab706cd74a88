// The file that a client writes itself, by its name, and that is read after the client's end.
#pragma once

#include "platform/win32.h"

extern "C"
{
    // Makes it, empty, with a name of its own where temporary files are (the current folder if
    // there is no such place). Nobody but the user can read it or put another in its place. `path`
    // has MAX_PATH units. Until it is opened or removed it stays.
    BOOL MakePrintTarget(LPWSTR path);

    // Makes it writable, as clients may leave it read-only, and opens it. It goes with the handle.
    // What isn't a file any more, such as a link that the client put there, is refused.
    HANDLE OpenPrintTarget(LPCWSTR path);

    // Removes it, or whatever stands in its place, read-only or not. Links aren't followed.
    BOOL RemovePrintTarget(LPCWSTR path);
}
