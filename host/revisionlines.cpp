#include "revisionlines.h"

#include "columns.h"
#include "output.h"
#include "readable.h"
#include "system.h"
#include "words.h"

namespace tarnwell::host
{

namespace
{

std::u16string Json(const RevisionFacts& facts)
{
    FactWriter writer;
    writer.Text(u"id", facts.id);
    writer.Text(u"description", facts.description);
    writer.Text(u"author", facts.author);
    writer.Time(u"modified", facts.modified);
    writer.Number(u"modified_filetime", facts.modified);
    writer.Time(u"revision", facts.recorded);
    writer.Number(u"revision_filetime", facts.recorded);
    writer.Text(u"uri", facts.uri);
    if (facts.path)
        writer.object.Text(u"path", *facts.path);
    return writer.Finish().Line();
}

// Texts of revisions may be one long line.
std::u16string Fitted(const std::u16string& line)
{
    const std::size_t width = OutputWidth();
    return width == 0 ? line : Wrapped(line, width, 4);
}

std::u16string Indented(std::u16string_view text)
{
    std::u16string result;
    while (!text.empty())
    {
        const std::size_t end = text.find(u'\n');
        result += u"    " + Fitted(Shown(text.substr(0, end))) + u"\n";
        text.remove_prefix(end == std::u16string_view::npos ? text.size() : end + 1);
    }
    return result;
}

std::u16string Readable(const RevisionFacts& facts)
{
    const auto text = [](const Fact<std::u16string>& fact) {
        return fact.value.value_or(Say(Word::Unknown, {fact.error}));
    };
    const std::uint64_t time = facts.recorded.value.value_or(0);
    return Shown(text(facts.id)) + u"  " + ReadableTime(time) + u"  " + Shown(text(facts.author)) +
           u"\n" + Indented(text(facts.description)) + u"    " + Shown(text(facts.uri)) + u"\n";
}

} // namespace

void PrintRevision(const RevisionFacts& facts, bool json)
{
    Print(json ? Json(facts) : Readable(facts));
}

} // namespace tarnwell::host
