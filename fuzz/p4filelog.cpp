// Any bytes as the Perforce client's history, and each line of them as a revision.
#include "frame/pattern.h"
#include "perforce/p4parser.h"
#include "perforce/p4values.h"
#include "support/p4output.h"

#include <sstream>

namespace tarnwell::fuzz
{

namespace
{

bool IsNumber(std::u16string_view text)
{
    return !text.empty() && text.find_first_not_of(u"0123456789") == std::u16string_view::npos;
}

// What is matched by hand is what the pattern finds, as far as the engine doesn't give up.
void CheckLine(const std::string& line)
{
    static const Pattern pattern(u"\\.\\.\\. #([0-9]+) change ([0-9]+) (.*) on ([0-9]+)/([0-9]+)/"
                                 u"([0-9]+) ([0-9]+):([0-9]+):([0-9]+) by ([^ ]+)");
    const std::u16string text = Decode(line, Decoding::Widen);
    const std::optional<P4Revision> found = FindP4Revision(text);
    Groups groups;
    if (!pattern.Search(text, groups))
    {
        Expect(!found || text.size() > 500, "there is no revision where the pattern finds none");
        return;
    }
    Expect(found && found->id == groups[1] && found->change == groups[2] &&
               found->action == groups[3] && found->author == groups[10] &&
               std::equal(std::begin(found->time), std::end(found->time), groups.begin() + 4),
           "a revision is what the pattern finds");
}

bool IsSame(const P4FileLog& left, const P4FileLog& right)
{
    return left.depotFile == right.depotFile &&
           std::equal(left.records.begin(), left.records.end(), right.records.begin(),
                      right.records.end(), [](const auto& l, const auto& r) {
                          return l.id == r.id && l.description == r.description &&
                                 l.author == r.author && l.modifiedTime == r.modifiedTime;
                      });
}

} // namespace

void Try(std::string_view bytes)
{
    std::istringstream lines{std::string(bytes)};
    for (std::string line; std::getline(lines, line);)
        CheckLine(line);

    ReadP4(bytes, BareLineFeed::LooksLikeTheEnd, ReadFileLog);
    const std::string text = WithoutReturns(bytes);
    const P4FileLog log = ReadOnLinux(text, ReadFileLog);
    Expect(IsSame(log, ReadOnWindows(text, ReadFileLog)), "both platforms read the same");
    for (const RevisionRecord& record : log.records)
    {
        Expect(IsNumber(record.id), "a revision has a number");
        Expect(record.uri.empty(), "its address is for others to make");
        Expect(!record.author.empty() && record.author.find(u' ') == std::u16string::npos,
               "an author is one word");
        Expect(record.modifiedTime == record.revisionTime, "there is one time");
        Expect(record.description.find(u'\t') == std::u16string::npos, "tabs are blanks");
        const std::u16string_view change =
            std::u16string_view(record.description).substr(0, record.description.find(u':'));
        Expect(IsNumber(change), "a description begins with its change");
    }
}

} // namespace tarnwell::fuzz
