#include "platform/posix/dialogs/question.h"
#include "platform/posix/errors/lasterror.h"
#include "platform/win32.h"

using namespace tarnwell::posix;

extern "C" int MessageBoxW(HWND, LPCWSTR text, LPCWSTR, UINT style)
{
    if (style != (MB_YESNOCANCEL | MB_ICONINFORMATION))
    {
        Fail(ERROR_NOT_SUPPORTED);
        return 0;
    }
    return AskUser(Displayable(text, true)) ? IDYES : IDCANCEL;
}
