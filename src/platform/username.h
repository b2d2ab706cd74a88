// Who the process acts for.
#pragma once

#include "platform/win32.h"

#include <string>

extern "C"
{
    // The name of the user with whose rights the process acts. False, with `name` empty and the
    // last error set, if there is none.
    BOOL FindUserName(std::u16string& name);
}
