// GetUserNameW.
#include "platform/posix/errors/errnotable.h"
#include "platform/posix/errors/lasterror.h"

#include <tarnwell/text.h>

#include <algorithm>
#include <cerrno>
#include <new>
#include <pwd.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace tarnwell::posix
{
namespace
{

// The name of the effective user in the user database; ERROR_SUCCESS, or why there is none.
DWORD FindUserName(std::u16string& name)
{
    passwd entry{};
    passwd* found = nullptr;
    std::vector<char> texts(1024);
    int number = getpwuid_r(geteuid(), &entry, texts.data(), texts.size(), &found);
    while (number == ERANGE)
    {
        texts.resize(texts.size() * 2);
        number = getpwuid_r(geteuid(), &entry, texts.data(), texts.size(), &found);
    }
    if (found == nullptr)
        return number == 0 ? ERROR_NONE_MAPPED : ErrorFromErrno(number);
    name = DecodeName(entry.pw_name);
    return ERROR_SUCCESS;
}

} // namespace
} // namespace tarnwell::posix

using namespace tarnwell::posix;

extern "C" BOOL GetUserNameW(LPWSTR name, DWORD* size)
{
    if (name == nullptr || size == nullptr)
        return Fail(ERROR_INVALID_PARAMETER);
    try
    {
        std::u16string found;
        if (const DWORD error = FindUserName(found); error != ERROR_SUCCESS)
            return Fail(error);
        const DWORD room = std::exchange(*size, static_cast<DWORD>(found.size() + 1));
        if (room < *size)
            return Fail(ERROR_INSUFFICIENT_BUFFER);
        std::copy_n(found.c_str(), *size, name);
        return 1;
    }
    catch (const std::bad_alloc&)
    {
        return Fail(ERROR_NOT_ENOUGH_MEMORY);
    }
}
