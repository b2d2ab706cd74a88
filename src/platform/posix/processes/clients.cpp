#include "platform/clients.h"

#include "platform/posix/errors/lasterror.h"
#include "platform/posix/files/nativepath.h"
#include "platform/posix/processes/programsearch.h"

#include <new>

namespace tarnwell
{

namespace
{

// What they print is read: in English, in UTF-8, without what users set up for their own eyes.
constexpr const char16_t* variables[] = {u"LC_ALL=C.UTF-8", u"LANGUAGE=en", u"HGPLAIN=1",
                                         u"HGPLAINEXCEPT=", u"HGENCODING=utf-8"};

} // namespace

const ClientNames clientNames{u"git", u"hg", u"svn", u"p4", u"/", false, true};

const std::span<const char16_t* const> clientVariables = variables;

} // namespace tarnwell

extern "C" BOOL FindClient(LPCWSTR program)
{
    using namespace tarnwell::posix;
    try
    {
        const std::optional<std::string> native = NativePath(program);
        return native && (FindProgram(*native) || Fail(ERROR_FILE_NOT_FOUND));
    }
    catch (const std::bad_alloc&)
    {
        return Fail(ERROR_NOT_ENOUGH_MEMORY);
    }
}
