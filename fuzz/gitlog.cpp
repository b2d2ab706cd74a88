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
    for (const RevisionRecord& record : ReadGitLog(u"/r/a.txt", OutputOf(bytes)))
        Expect(record.description == Trimmed(record.description), "subjects have no blanks around");
}

} // namespace tarnwell::fuzz
