// FTP: connections, listings, transfers.
//
// Every handle is closed once with InternetCloseHandle, which waits for a server only where it ends
// an upload. A handle is used by one thread at a time, and a connection with its transfer by one. A
// transfer keeps its connection busy for anything else (ERROR_FTP_TRANSFER_IN_PROGRESS), and alive
// after the connection's own handle is closed.
//
// Paths go from the login folder on, or from the root with a "/" in front. What can't be sent in a
// line is refused with ERROR_INVALID_PARAMETER: control characters, and the byte FF, which servers
// read in different ways. A connection that was lost is no connection at all; one that the server
// dropped while nothing was asked of it is made anew, with the same user and password.
#pragma once

#include "platform/posix/win32/files.h"

using HINTERNET = LPVOID;
using INTERNET_PORT = WORD;

inline constexpr DWORD INTERNET_OPEN_TYPE_PRECONFIG = 0;
inline constexpr DWORD INTERNET_OPEN_TYPE_PROXY = 3;
inline constexpr DWORD INTERNET_SERVICE_FTP = 1;
inline constexpr INTERNET_PORT INTERNET_DEFAULT_FTP_PORT = 21;
inline constexpr DWORD INTERNET_FLAG_PASSIVE = 0x08000000;
inline constexpr DWORD INTERNET_FLAG_RELOAD = 0x80000000;
inline constexpr DWORD FTP_TRANSFER_TYPE_BINARY = 2;

inline constexpr DWORD ERROR_INTERNET_TIMEOUT = 12002;
inline constexpr DWORD ERROR_INTERNET_EXTENDED_ERROR = 12003;
inline constexpr DWORD ERROR_INTERNET_NAME_NOT_RESOLVED = 12007;
inline constexpr DWORD ERROR_INTERNET_INCORRECT_USER_NAME = 12013;
inline constexpr DWORD ERROR_INTERNET_INCORRECT_PASSWORD = 12014;
inline constexpr DWORD ERROR_INTERNET_LOGIN_FAILURE = 12015;
inline constexpr DWORD ERROR_INTERNET_INCORRECT_HANDLE_TYPE = 12018;
inline constexpr DWORD ERROR_INTERNET_INCORRECT_HANDLE_STATE = 12019;
inline constexpr DWORD ERROR_INTERNET_CANNOT_CONNECT = 12029;
inline constexpr DWORD ERROR_INTERNET_CONNECTION_ABORTED = 12030;
inline constexpr DWORD ERROR_INTERNET_CONNECTION_RESET = 12031;
inline constexpr DWORD ERROR_FTP_TRANSFER_IN_PROGRESS = 12110;

extern "C"
{
    // With INTERNET_OPEN_TYPE_PROXY through the first server for FTP in `proxy` ("ftp=host:port"),
    // else through its first plain one; `bypass` lists the hosts that are reached without it. With
    // INTERNET_OPEN_TYPE_PRECONFIG directly, as there is no system-wide setting here. `flags` must
    // be 0. The agent's name goes to no FTP server.
    HINTERNET InternetOpenW(LPCWSTR agent, DWORD access, LPCWSTR proxy, LPCWSTR bypass,
                            DWORD flags);
    // Logs in, for INTERNET_SERVICE_FTP only. `flags` is 0 for active data connections, or
    // INTERNET_FLAG_PASSIVE. A user that is refused by name is ERROR_INTERNET_INCORRECT_USER_NAME,
    // by password or account ERROR_INTERNET_INCORRECT_PASSWORD; every other refusal by the server,
    // here and below, is ERROR_INTERNET_EXTENDED_ERROR, with its words for the next function.
    HINTERNET InternetConnectW(HINTERNET root, LPCWSTR host, INTERNET_PORT port, LPCWSTR user,
                               LPCWSTR password, DWORD service, DWORD flags, DWORD_PTR context);
    BOOL InternetCloseHandle(HINTERNET handle);
    // The reply that made the thread's last operation fail, lines ending in CR LF; empty if none
    // did. `length`, in units, receives that of the text without its terminator, or, with
    // ERROR_INSUFFICIENT_BUFFER, the room that the text needs with it.
    BOOL InternetGetLastResponseInfoW(DWORD* error, LPWSTR buffer, DWORD* length);

    // A last component of exactly "*" lists the folder, any other path finds the entry itself; an
    // empty path, the login folder. The listing is read whole, so that one which breaks off is a
    // failure and no shorter folder; times are the server's, in local time. A missing entry or
    // parent is ERROR_FILE_NOT_FOUND, an empty folder ERROR_NO_MORE_FILES. `flags` is 0 or
    // INTERNET_FLAG_RELOAD, which changes nothing: there is no cache.
    HINTERNET FtpFindFirstFileW(HINTERNET connection, LPCWSTR pattern, WIN32_FIND_DATAW* record,
                                DWORD flags, DWORD_PTR context);
    // `record` is a WIN32_FIND_DATAW.
    BOOL InternetFindNextFileW(HINTERNET find, LPVOID record);
    BOOL FtpCreateDirectoryW(HINTERNET connection, LPCWSTR path);
    BOOL FtpRemoveDirectoryW(HINTERNET connection, LPCWSTR path);
    BOOL FtpDeleteFileW(HINTERNET connection, LPCWSTR path);
    // GENERIC_READ or GENERIC_WRITE; `flags` must hold FTP_TRANSFER_TYPE_BINARY. Returns after the
    // server's first answer to the transfer command. Closing a writer ends the upload and reads the
    // final reply; closing a reader before its end cuts the connection.
    HINTERNET FtpOpenFileW(HINTERNET connection, LPCWSTR path, DWORD access, DWORD flags,
                           DWORD_PTR context);
    // Goes on to the full size or the end of the file, which is success with fewer bytes. A
    // transfer that breaks off is a failure, never an end.
    BOOL InternetReadFile(HINTERNET file, LPVOID buffer, DWORD size, DWORD* read);
    // What the server refuses while data still flows fails this call or the next.
    BOOL InternetWriteFile(HINTERNET file, LPCVOID buffer, DWORD size, DWORD* written);
}
