#include "platform/username.h"

#include "platform/posix/errors/errnotable.h"
#include "platform/posix/errors/lasterror.h"

#include <tarnwell/text.h>

#include <cerrno>
#include <pwd.h>
#include <unistd.h>
#include <vector>

namespace tarnwell::posix
{
namespace
{

// The name of the effective user in the user database; ERROR_SUCCESS, or why there is none.
DWORD LookUpUserName(std::u16string& name)
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

extern "C" BOOL FindUserName(std::u16string& name)
{
    name.clear();
    const DWORD error = LookUpUserName(name);
    return error == ERROR_SUCCESS ? 1 : Fail(error);
}
