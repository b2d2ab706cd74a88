// Any bytes as the Mercurial client's log.
#include "mercurial/hgparser.h"
#include "mercurial/hguri.h"
#include "support/target.h"
#include "support/workingcopylog.h"

namespace tarnwell::fuzz
{

void Try(std::string_view bytes)
{
    CheckLog(bytes, ReadHgLog, mercurialAddresses.scheme);
}

} // namespace tarnwell::fuzz
