#include "platform/clients.h"

namespace tarnwell
{

const ClientNames clientNames{u"git", u"hg.exe", u"svn.exe", u"p4.exe", u"\\", true, false};

// They inherit the host's.
const std::span<const char16_t* const> clientVariables;

} // namespace tarnwell

extern "C" BOOL FindClient(LPCWSTR program)
{
    const HMODULE found = LoadLibraryExW(program, nullptr, LOAD_LIBRARY_AS_DATAFILE);
    return found != nullptr && FreeLibrary(found);
}
