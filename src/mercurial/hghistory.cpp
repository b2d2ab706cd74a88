#include "mercurial/hghistory.h"

#include "frame/messages.h"
#include "frame/unixtime.h"
#include "mercurial/hghistoryparser.h"
#include "mercurial/hgnames.h"
#include "mercurial/hgrevision.h"
#include "mercurial/hgserver.h"
#include "mercurial/hguri.h"

#include <tarnwell/text.h>

#include <algorithm>

namespace tarnwell
{

namespace
{

// Whether a change touches the path itself, or what it was followed to has another name there, is
// only asked where it can be so.
std::string ChangeTemplate(const HgSelection& selection)
{
    const std::string hasPath =
        selection.followedAt.empty()
            ? "1"
            : "{ifcontains(" + HgQuoted(selection.path) + ", files, \"1\", \"0\")}";
    return "{node} {rev} {date|hgdate} {author|count} {desc|count} " + hasPath +
           "\\n{author}{desc}";
}

std::string Ancestors(const std::string& id)
{
    return "ancestors(" + HgQuoted(id) + ")";
}

std::string Changing(const HgSelection& selection)
{
    if (selection.path.empty())
        return {};
    const std::string pattern = HgQuoted(HgPathPattern(selection.path));
    if (selection.followedAt.empty())
        return " and file(" + pattern + ")";
    return " and (file(" + pattern + ") or follow(" + pattern + ", " +
           HgQuoted(selection.followedAt) + "))";
}

// Those that change what has that name.
std::string OfOneName(const HgSelection& selection)
{
    return Ancestors(selection.id) + Changing({selection.id, selection.path, {}});
}

// The client knows times of 32 bits.
std::string Bound(const char* sign, std::int64_t seconds)
{
    return std::string(" and date(\"") + sign + std::to_string(seconds) + " 0\")";
}

class HgHistory
{
public:
    HgHistory(const HistoryQuestion& question, HistoryTaker& taker)
        : question_(question), taker_(taker), server_(HgItemOf(question.path, question.revision))
    {
    }

    void Read()
    {
        const Place& place = server_.Item().place;
        const auto path = EncodeName(place.path);
        if (!path)
            ThrowNoPath();
        const bool wantsCopy = question_.Has(HistoryWorkingCopy) && question_.options.skip == 0;
        const bool hasCopy =
            wantsCopy && KindOf(PathInPlace(place, place.path)) != KindOnDisk::Missing;
        const HgRevision revision = FindHgRevision(server_, *path, taker_.HostsPatience());
        selection_ = {revision.id, *path, {}};
        if (question_.Has(HistoryFollow) && !path->empty())
            selection_.followedAt = WhereToFollow(revision);
        if (!selection_.followedAt.empty())
            names_.emplace(server_.Item(), *path, selection_.followedAt);
        if (hasCopy && !taker_.Take(WorkingCopy()))
            return;
        const bool hasAny = ReadChanges();
        if (!hasAny && !hasCopy && !EverWas())
            ThrowNoPath();
    }

private:
    Patience& HostsPatience() const
    {
        return taker_.HostsPatience();
    }

    // A file that is gone is followed from where it last was.
    std::string WhereToFollow(const HgRevision& revision)
    {
        if (revision.isFile)
            return revision.id;
        if (revision.isThere)
            return {};
        const std::string last = "parents(max(" + OfOneName(selection_) + "))";
        for (const HgRevision& parent :
             AskForHgRevisions(server_, last, selection_.path, HostsPatience()))
        {
            if (parent.isFile)
                return parent.id;
        }
        return {};
    }

    HistoryRecord WorkingCopy() const
    {
        const Place& place = server_.Item().place;
        HistoryRecord record;
        record.description = FormatMessageById(MessageId::WorkingCopy);
        record.address = PathInPlace(place, place.path);
        record.path = place.path;
        return record;
    }

    HistoryRecord RecordOf(const HgChange& change, const std::string& name) const
    {
        HistoryRecord record;
        record.id = HgText(change.id);
        record.author = HgText(change.author);
        record.description = HgText(change.description);
        record.path = DecodeName(name);
        record.address = std::u16string(mercurialAddresses.scheme) + u"://" +
                         PathInPlace(server_.Item().place, record.path) + u"#" + record.id;
        record.modifiedTime = change.time;
        record.revisionTime = change.time;
        return record;
    }

    // Whether more are wanted.
    bool Give(const HgChange& change)
    {
        // Giving them may take long, too.
        HostsPatience().Ask();
        if (!page_->Admits(change.time))
            return true;
        const bool hasPath = change.hasPath || !names_;
        return taker_.Take(RecordOf(change, hasPath ? selection_.path
                                                    : names_->NameIn(change, HostsPatience()))) &&
               page_->CountDown();
    }

    // Whether anything was given, or could have been.
    bool ReadChanges()
    {
        const HistoryOptions& options = question_.options;
        // The client skips only what it also counts.
        page_.emplace(HistoryPage::Bounds{options.count == 0 ? options.skip : 0});
        HgHistoryParser parser;
        bool hasAny = false;
        bool isEnough = false;
        const auto read = [&](std::string_view bytes) {
            parser.Feed(bytes);
            while (std::optional<HgChange> change = parser.Next())
            {
                hasAny = true;
                isEnough = !Give(*change);
                if (isEnough)
                    return false;
            }
            return true;
        };
        const ClientOutcome outcome =
            server_.Run({"log", "-r", HgExpression(HgRevisions(selection_, options)), "-T",
                         ChangeTemplate(selection_)},
                        read, nullptr, HostsPatience());
        if (isEnough)
            return true;
        ThrowIfHgFailed(outcome, server_.Item());
        if (!parser.IsComplete())
            ThrowStrictFailure(strictHg.source, badAnswer, server_.Item().address);
        return hasAny;
    }

    // An empty page is no missing item.
    bool EverWas()
    {
        if (selection_.path.empty())
            return true;
        const std::string any = "limit(" + OfOneName(selection_) + ", 1)";
        return !server_.Answer({"log", "-r", HgExpression(any), "-T", "{rev}"}, HostsPatience())
                    .empty();
    }

    [[noreturn]] void ThrowNoPath() const
    {
        ThrowStrictFailure(strictHg.source, noPath, server_.Item().address);
    }

    const HistoryQuestion& question_;
    HistoryTaker& taker_;
    HgServer server_;
    HgSelection selection_;
    std::optional<HgNames> names_; // where they are followed
    std::optional<HistoryPage> page_;
};

} // namespace

std::string HgRevisions(const HgSelection& selection, const HistoryOptions& options)
{
    constexpr std::int64_t lastTime = INT32_MAX;
    // The first of the sets that are cut gives the order.
    std::string wanted = "reverse(" + Ancestors(selection.id) + ")" + Changing(selection);
    // Whole seconds count: what was recorded within the first one of `since` is later.
    if (options.since != 0)
    {
        const std::int64_t since = SecondsOf(options.since);
        wanted += since > lastTime ? " and none()" : Bound(">", std::max(since, -lastTime));
    }
    if (options.until != 0)
    {
        const std::int64_t until = SecondsOf(options.until);
        wanted += until < -lastTime ? " and none()" : Bound("<", std::min(until, lastTime));
    }
    if (options.count == 0)
        return wanted;
    const auto in31Bits = [](std::uint32_t number) {
        return std::to_string(std::min(number, std::uint32_t{INT32_MAX}));
    };
    return "limit(" + wanted + ", " + in31Bits(options.count) + ", " + in31Bits(options.skip) + ")";
}

void ReadHgHistory(const HistoryQuestion& question, HistoryTaker& taker)
{
    HgHistory(question, taker).Read();
}

} // namespace tarnwell
