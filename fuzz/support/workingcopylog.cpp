#include "support/workingcopylog.h"

#include "frame/trim.h"
#include "runner/numbers.h"
#include "support/output.h"
#include "support/target.h"
#include "workingcopy/workingcopyparser.h"

#include <tarnwell/text.h>

#include <algorithm>
#include <vector>

namespace tarnwell::fuzz
{

namespace
{

constexpr std::u16string_view path = u"/r/a#b/c.txt";

// FILETIME values: second 0, and the first and the last that a log can tell.
constexpr std::uint64_t startTime = 116444736000000000;
constexpr std::uint64_t firstTime = startTime - 2147483648ULL * 10000000;
constexpr std::uint64_t lastTime = startTime + 2147483647ULL * 10000000;

void CheckWorkingCopy(const RevisionRecord& record)
{
    Expect(record.uri == path, "the working copy's file is local");
    Expect(record.id.empty() && record.author.empty(), "nobody has made the working copy");
    Expect(record.modifiedTime == 0 && record.revisionTime == 0, "the working copy has no time");
}

void CheckRevision(const RevisionRecord& record, const std::u16string& address)
{
    Expect(record.uri == address + record.id, "a revision's address ends with its id");
    Expect(record.modifiedTime == record.revisionTime, "a revision has one time");
    Expect(record.modifiedTime >= firstTime && record.modifiedTime <= lastTime,
           "seconds have 32 bits");
    Expect(record.description == TrimmedLeft(record.description),
           "descriptions have no blanks in front");
    const std::u16string lines = record.id + record.author;
    Expect(lines.find(u'\n') == std::u16string::npos, "an id and an author are lines");
}

bool IsSame(const RevisionRecord& left, const RevisionRecord& right)
{
    return left.uri == right.uri && left.author == right.author &&
           left.description == right.description && left.modifiedTime == right.modifiedTime;
}

std::vector<RevisionRecord> AllOf(const RevisionList& list)
{
    std::vector<RevisionRecord> records;
    for (std::size_t i = 0; i < list.size(); ++i)
        records.push_back(list[i]);
    return records;
}

void CheckTime(std::u16string_view text)
{
    const std::uint64_t time = UnixTimeToFileTime(text);
    text.remove_prefix(std::min(text.size(), text.find_first_not_of(u" \t\n\v\f\r")));
    Expect(text.starts_with(u'-') ? time <= startTime : time >= startTime,
           "a number keeps its sign");
}

// Up to a line's end near the middle.
std::string_view HalfOf(std::string_view bytes)
{
    return bytes.substr(0, bytes.rfind('\n', bytes.size() / 2) + 1);
}

} // namespace

void CheckLog(std::string_view bytes, LogReader read, std::u16string_view scheme)
{
    const std::u16string file(path);
    const std::u16string address = std::u16string(scheme) + u"://" + file + u"#";
    const std::vector<RevisionRecord> records = AllOf(read(file, OutputOf(bytes)));
    if (!records.empty())
        CheckWorkingCopy(records[0]);
    for (std::size_t i = 1; i < records.size(); ++i)
        CheckRevision(records[i], address);
    Expect(records.size() != 1, "a working copy stands in front of revisions only");
    // Three lines with something in them, and a closing one.
    constexpr std::size_t shortest = 8;
    Expect(records.empty() || (records.size() - 1) * shortest <= bytes.size() + 1,
           "nothing is made up");

    CheckTime(DecodeName(bytes));

    const std::vector<RevisionRecord> first = AllOf(read(file, OutputOf(HalfOf(bytes))));
    Expect(first.size() <= records.size() &&
               std::equal(first.begin(), first.end(), records.begin(), IsSame),
           "what follows doesn't change the revisions in front");
}

} // namespace tarnwell::fuzz
