// Any bytes as the Git client's log.
#include "frame/trim.h"
#include "git/gitparser.h"
#include "git/gituri.h"
#include "support/output.h"
#include "support/target.h"
#include "support/workingcopylog.h"

namespace tarnwell::fuzz
{

void Try(std::string_view bytes)
{
    CheckLog(bytes, ReadGitLog, gitAddresses.scheme);
    const RevisionList records = ReadGitLog(u"/r/a.txt", OutputOf(bytes));
    for (std::size_t i = 0; i < records.size(); ++i)
    {
        const std::u16string description = records[i].description;
        Expect(description == Trimmed(description), "subjects have no blanks around");
    }
}

} // namespace tarnwell::fuzz
