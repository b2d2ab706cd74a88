#include "commands.h"
#include "history.h"
#include "items.h"
#include "output.h"
#include "revisionlines.h"
#include "system.h"
#include "workingcopy.h"

#include <algorithm>

namespace tarnwell::host
{

namespace
{

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
    return {text(&IRevision::GetRevisionId),
            text(&IRevision::GetDescription),
            text(&IRevision::GetAuthor),
            time(&IRevision::GetModifiedTime),
            time(&IRevision::GetRevisionTime),
            text(&IRevision::GetUri),
            {}};
}

bool IsLocal(const Place& place)
{
    return place.address.kind == &FileSystemKinds().front();
}

// Earlier versions of local files are found by their drive, so a relative path gets the present
// one's.
Place WholePlace(const Session& session)
{
    Place place = Open(session, session.line.operands[0]);
    if (IsLocal(place))
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

// What only histories in full know.
void RefuseOtherOptions(const CommandLine& line)
{
    for (const std::u16string_view name : line.own)
    {
        if (name != u"-n")
            throw Failure{E_NOTIMPL, Say(Word::NotOfferedWith, {name})};
    }
}

std::size_t PrintPrescribed(const Session& session, const Place& place)
{
    RefuseOtherOptions(session.line);
    const ComPtr<IRevisions> revisions = RevisionsOf(place);
    std::uint32_t count = 0;
    Call([&] { return revisions->GetCount(&count); });
    if (count == 0 && !session.line.json)
        Print(Say(Word::NoRevisions) + u"\n");
    for (std::uint32_t i = 0; i < std::min(count, Wanted(session.line)); ++i)
    {
        ComPtr<IRevision> revision;
        Call([&] { return revisions->GetItem(static_cast<std::int32_t>(i), revision.Out()); });
        PrintRevision(FactsOf(revision), session.line.json);
    }
    return count;
}

std::size_t PrintAll(const Session& session, const Place& place)
{
    return HasHistory(session, place) ? PrintHistory(session, place)
                                      : PrintPrescribed(session, place);
}

// The local file system knows the snapshots of a file, and what is there now: little, for what is
// under version control.
std::u16string HintFor(const Session& session, const Place& place)
{
    return session.line.json || !IsLocal(place) ? std::u16string()
                                                : WhereHistoryIs(place.address.text);
}

} // namespace

int Log(const Session& session)
{
    const Place place = WholePlace(session);
    try
    {
        const std::size_t count = PrintAll(session, place);
        const std::u16string hint = count < 2 ? HintFor(session, place) : std::u16string();
        if (!hint.empty())
            PrintError(hint + u"\n");
        return exitDone;
    }
    catch (Failure& failure)
    {
        const std::u16string hint = HintFor(session, place);
        failure.message += (hint.empty() ? u"" : u"\n") + hint;
        throw;
    }
}

} // namespace tarnwell::host
