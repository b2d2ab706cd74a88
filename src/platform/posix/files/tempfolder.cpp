#include "platform/posix/files/tempfolder.h"

#include "platform/win32.h"

#include <tarnwell/text.h>

#include <cstdlib>

namespace tarnwell::posix
{

std::string TemporaryFolder()
{
    const char* const named = std::getenv("TMPDIR");
    const std::string folder = named != nullptr && *named == '/' ? named : "/tmp";
    const bool fits = DecodeName(folder).size() + 1 < MAX_PATH;
    return fits ? folder : ".";
}

} // namespace tarnwell::posix
