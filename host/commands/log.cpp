#include "columns.h"
#include "commands.h"
#include "facts.h"
#include "items.h"
#include "output.h"
#include "readable.h"
#include "system.h"
#include "text16.h"

#include <algorithm>

namespace tarnwell::host
{

namespace
{

struct RevisionFacts
{
    Fact<std::u16string> id;
    Fact<std::u16string> description;
    Fact<std::u16string> author;
    Fact<std::uint64_t> modified;
    Fact<std::uint64_t> recorded;
    Fact<std::u16string> uri;
};

RevisionFacts FactsOf(const ComPtr<IRevision>& revision)
{
    const auto text = [&](auto method) {
        return FactOf([&] { return TextFrom(revision.Get(), method); });
    };
    const auto time = [&](auto method) {
        return FactOf([&] {
            std::uint64_t value = 0;
            Call([&] { return (revision.Get()->*method)(&value); });
            return value;
        });
    };
    return {text(&IRevision::GetRevisionId),   text(&IRevision::GetDescription),
            text(&IRevision::GetAuthor),       time(&IRevision::GetModifiedTime),
            time(&IRevision::GetRevisionTime), text(&IRevision::GetUri)};
}

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

// Earlier versions of local files are found by their drive, so a relative path gets the present
// one's.
Place WholePlace(const Session& session)
{
    Place place = Open(session, session.line.operands[0]);
    if (place.address.kind == &FileSystemKinds().front())
        place.address.text = AbsolutePath(place.address.text);
    return place;
}

ComPtr<IRevisions> RevisionsOf(const Place& place)
{
    const auto fileSystem = Need<IFileSystemRevisions>(place.fileSystem);
    ComPtr<IRevisions> revisions;
    Call([&] { return fileSystem->GetRevisions(place.Text(), 0, revisions.Out()); });
    return revisions;
}

// Numbers that are too large mean all.
std::uint32_t Wanted(const CommandLine& line)
{
    std::uint64_t wanted = 0;
    for (const char16_t digit : line.count.value_or(u"4294967295"))
        wanted = std::min<std::uint64_t>(wanted * 10 + (digit - u'0'), 0xFFFFFFFF);
    return static_cast<std::uint32_t>(wanted);
}

} // namespace

int Log(const Session& session)
{
    const ComPtr<IRevisions> revisions = RevisionsOf(WholePlace(session));
    std::uint32_t count = 0;
    Call([&] { return revisions->GetCount(&count); });
    if (count == 0 && !session.line.json)
        Print(Say(Word::NoRevisions) + u"\n");
    for (std::uint32_t i = 0; i < std::min(count, Wanted(session.line)); ++i)
    {
        ComPtr<IRevision> revision;
        Call([&] { return revisions->GetItem(static_cast<std::int32_t>(i), revision.Out()); });
        const RevisionFacts facts = FactsOf(revision);
        Print(session.line.json ? Json(facts) : Readable(facts));
    }
    return exitDone;
}

} // namespace tarnwell::host
