#include "workingcopy.h"

#include "system.h"
#include "words.h"

#include <system_error>

namespace tarnwell::host
{

namespace
{

struct System
{
    // What stands in the top folder of a working copy.
    const char* marker;
    // Of an address; empty where the address isn't the path's.
    std::u16string_view beginning;
};

const System systems[] = {{".git", u"git:"}, {".hg", u"hg:"}, {".svn", u""}};

} // namespace

std::u16string WhereHistoryIs(const std::u16string& path)
{
    const std::u16string whole = AbsolutePath(path);
    std::error_code ignored;
    for (std::filesystem::path at = FilePath(whole);; at = at.parent_path())
    {
        for (const System& system : systems)
        {
            if (!exists(at / system.marker, ignored))
                continue;
            return system.beginning.empty()
                       ? Say(Word::InSubversionsWorkingCopy)
                       : Say(Word::InWorkingCopy, {std::u16string(system.beginning) + whole});
        }
        if (at == at.parent_path())
            return {};
    }
}

} // namespace tarnwell::host
