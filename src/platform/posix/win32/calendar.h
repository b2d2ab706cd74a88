// Dates and file times.
#pragma once

#include "platform/posix/win32/files.h"

// In UTC.
struct SYSTEMTIME
{
    WORD wYear;
    WORD wMonth;
    WORD wDayOfWeek;
    WORD wDay;
    WORD wHour;
    WORD wMinute;
    WORD wSecond;
    WORD wMilliseconds;
};

extern "C"
{
    // The day of the week isn't looked at. ERROR_INVALID_PARAMETER for what is no day and time
    // from the year 1601 on.
    BOOL SystemTimeToFileTime(const SYSTEMTIME* parts, FILETIME* time);
    // By the bias that is in force now, whatever it was at that time. A time of 0 is none and
    // stays 0; ERROR_INVALID_PARAMETER for one outside the range of file times, before or after.
    BOOL LocalFileTimeToFileTime(const FILETIME* local, FILETIME* time);
}
