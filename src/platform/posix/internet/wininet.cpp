// The names under which the logic reaches FTP servers. Not there yet: every call says so.
#include "platform/posix/errors/lasterror.h"

using tarnwell::posix::Fail;

namespace
{
HINTERNET NoHandle()
{
    Fail(ERROR_CALL_NOT_IMPLEMENTED);
    return nullptr;
}
} // namespace

extern "C" HINTERNET InternetOpenW(LPCWSTR, DWORD, LPCWSTR, LPCWSTR, DWORD)
{
    return NoHandle();
}

extern "C" HINTERNET InternetConnectW(HINTERNET, LPCWSTR, INTERNET_PORT, LPCWSTR, LPCWSTR, DWORD,
                                      DWORD, DWORD_PTR)
{
    return NoHandle();
}

extern "C" BOOL InternetCloseHandle(HINTERNET)
{
    return Fail(ERROR_CALL_NOT_IMPLEMENTED);
}

extern "C" BOOL InternetGetLastResponseInfoW(DWORD*, LPWSTR, DWORD*)
{
    return Fail(ERROR_CALL_NOT_IMPLEMENTED);
}

extern "C" HINTERNET FtpFindFirstFileW(HINTERNET, LPCWSTR, WIN32_FIND_DATAW*, DWORD, DWORD_PTR)
{
    return NoHandle();
}

extern "C" BOOL InternetFindNextFileW(HINTERNET, LPVOID)
{
    return Fail(ERROR_CALL_NOT_IMPLEMENTED);
}

extern "C" BOOL FtpCreateDirectoryW(HINTERNET, LPCWSTR)
{
    return Fail(ERROR_CALL_NOT_IMPLEMENTED);
}

extern "C" BOOL FtpRemoveDirectoryW(HINTERNET, LPCWSTR)
{
    return Fail(ERROR_CALL_NOT_IMPLEMENTED);
}

extern "C" BOOL FtpDeleteFileW(HINTERNET, LPCWSTR)
{
    return Fail(ERROR_CALL_NOT_IMPLEMENTED);
}

extern "C" HINTERNET FtpOpenFileW(HINTERNET, LPCWSTR, DWORD, DWORD, DWORD_PTR)
{
    return NoHandle();
}

extern "C" BOOL InternetReadFile(HINTERNET, LPVOID, DWORD, DWORD*)
{
    return Fail(ERROR_CALL_NOT_IMPLEMENTED);
}

extern "C" BOOL InternetWriteFile(HINTERNET, LPCVOID, DWORD, DWORD*)
{
    return Fail(ERROR_CALL_NOT_IMPLEMENTED);
}
