#include "perforce/p4history.h"

#include "frame/messages.h"
#include "frame/paths.h"
#include "frame/text.h"
#include "perforce/p4historyparser.h"
#include "perforce/p4names.h"
#include "perforce/p4strict.h"
#include "platform/wide.h"

#include <tarnwell/text.h>

#include <algorithm>

namespace tarnwell
{

namespace
{

// The client counts in 31 bits.
constexpr std::uint32_t mostCounted = INT32_MAX;

// The client leaves out what is behind the page. What is newer it can only tell by days of its
// server.
std::u16string MostOf(const HistoryOptions& options)
{
    if (options.count == 0 || options.until != 0)
        return {};
    const std::uint64_t most = std::uint64_t{options.skip} + options.count;
    return u"-m " + Decimal(std::min<std::uint64_t>(most, mostCounted)) + u" ";
}

class P4HistoryReader
{
public:
    P4HistoryReader(const HostUIUser& host, const HistoryQuestion& question, HistoryTaker& taker)
        : host_(host), question_(question), taker_(taker),
          item_(P4ItemOf(question.path, question.revision)), login_(P4LoginOf(host, item_)),
          page_({question.options.skip, question.options.count, 0, question.options.until})
    {
    }

    void Read()
    {
        const bool wantsCopy = question_.Has(HistoryWorkingCopy) && question_.options.skip == 0;
        const std::u16string copy = wantsCopy ? WorkingCopyPath() : std::u16string();
        if (!copy.empty() && !taker_.Take(WorkingCopy(copy)))
            return;
        if (!item_.isFolder && ReadFile())
            return;
        if (!ReadFolder() && copy.empty())
            ThrowNone();
    }

private:
    P4Asker Asker() const
    {
        return {host_, item_, login_};
    }
    Patience& HostsPatience() const
    {
        return taker_.HostsPatience();
    }
    std::string AllBelow() const
    {
        return item_.path + (item_.path.ends_with('/') ? "..." : "/...");
    }

    // Where the workspace has the item; empty if there is no workspace, or nothing there.
    std::u16string WorkingCopyPath() const
    {
        if (item_.path == "//")
            return {};
        std::u16string path = MappedPath(item_.path);
        // A view may begin below the folder's own name.
        if (path.empty())
        {
            path = P4FolderOfAll(MappedPath(AllBelow()));
        }
        // A server told it: nobody logs on to another machine for that.
        const bool isThere =
            IsLocalPath(path) && GetFileAttributesW(Wide(path)) != INVALID_FILE_ATTRIBUTES;
        return isThere ? path : std::u16string();
    }

    // That the server knows no workspace of that name is no failure of a history.
    std::u16string MappedPath(const std::string& depotPath) const
    {
        P4Question question(Asker(), u"where", depotPath, HostsPatience());
        std::string path;
        for (std::optional<P4Record> record = question.NextOrNone(); record;
             record = question.NextOrNone())
        {
            if (!record->Has("unmap"))
                path = record->Text("path");
        }
        return DecodeName(path);
    }

    HistoryRecord WorkingCopy(const std::u16string& path) const
    {
        HistoryRecord record;
        record.description = FormatMessageById(MessageId::WorkingCopy);
        record.address = path;
        record.path = NameOf(item_.path);
        return record;
    }

    static std::u16string NameOf(std::string_view depotPath)
    {
        return DecodeName(P4Decoded(depotPath.substr(std::min<std::size_t>(2, depotPath.size()))));
    }

    HistoryRecord RecordOf(const P4Change& change) const
    {
        HistoryRecord record;
        record.id = P4Text(change.id);
        record.author = P4Text(change.author);
        record.description = P4Text(change.description);
        const bool isFile = !change.revision.empty();
        const std::string& path = isFile ? change.path : item_.path;
        record.path = NameOf(path);
        record.address =
            item_.AddressOf(path, P4Text(isFile ? "#" + change.revision : "@" + change.id));
        record.modifiedTime = change.time;
        record.revisionTime = change.time;
        return record;
    }

    // Whether more may be wanted.
    bool Give(const P4Change& change)
    {
        CheckFirst(change);
        // What comes behind is earlier still.
        if (change.time < question_.options.since)
            return false;
        return !page_.Admits(change.time) || (taker_.Take(RecordOf(change)) && page_.CountDown());
    }

    // A number that no change has is taken for a moment by the server.
    void CheckFirst(const P4Change& change)
    {
        const bool isNumber = item_.revision.starts_with('@') &&
                              P4Number(std::string_view(item_.revision).substr(1)).has_value();
        const bool isKnown = !isNumber || item_.revision.substr(1) == change.id;
        if (!hasFirst_ && !isKnown && !HasChange(item_.revision))
            ThrowNoRevision();
        hasFirst_ = true;
    }

    bool HasChange(const std::string& number) const
    {
        P4Question question(Asker(), u"changes -s submitted -m 1", "//..." + number + "," + number,
                            HostsPatience());
        bool hasAny = false;
        while (question.Next())
            hasAny = true;
        return hasAny;
    }

    // False if there is no such file.
    bool ReadFile()
    {
        const bool follows = question_.Has(HistoryFollow);
        P4Question question(Asker(),
                            std::u16string(u"filelog ") + (follows ? u"-i " : u"") + u"-l " +
                                MostOf(question_.options),
                            item_.path + item_.revision, HostsPatience());
        bool hasAny = false;
        bool isEnough = false;
        P4FileLogReader reader;
        const auto give = [&](const P4Record& record, bool isWhole) {
            const auto changes = reader.Next(record, isWhole);
            if (!changes)
                ThrowBadAnswer();
            // What comes behind the first file are the names that it had before.
            const bool isWanted = follows || !hasAny;
            for (auto change = changes->begin(); isWanted && !isEnough && change != changes->end();
                 ++change)
            {
                HostsPatience().Ask();
                isEnough = !Give(*change);
            }
            return !isEnough;
        };
        const auto watch = [&](const P4Record& begun) {
            return give(begun, false);
        };
        while (const std::optional<P4Record> record = question.Next(watch))
        {
            if (!give(*record, true))
                break;
            hasAny = true;
            reader = {};
        }
        if (isEnough)
            return true;
        isOtherRevision_ =
            question.Warning().find(" - no file(s) at that revision") != std::string::npos;
        return hasAny;
    }

    // False if nothing was ever below it.
    bool ReadFolder()
    {
        P4Question question(Asker(), u"changes -s submitted -l " + MostOf(question_.options),
                            AllBelow() + item_.revision, HostsPatience());
        bool hasAny = false;
        while (const std::optional<P4Record> record = question.Next())
        {
            const std::optional<P4Change> change = ReadP4Change(*record);
            if (!change)
                ThrowBadAnswer();
            hasAny = true;
            if (!Give(*change))
                break;
        }
        return hasAny;
    }

    [[noreturn]] void ThrowNone() const
    {
        if (item_.path == "//" || isOtherRevision_)
            ThrowNoRevision();
        ThrowP4Failure(noPath, item_.address);
    }
    [[noreturn]] void ThrowNoRevision() const
    {
        ThrowP4Failure(noRevision, item_.RevisionText());
    }
    [[noreturn]] void ThrowBadAnswer() const
    {
        ThrowP4Failure(badAnswer, item_.address);
    }

    const HostUIUser& host_;
    const HistoryQuestion& question_;
    HistoryTaker& taker_;
    const P4Item item_;
    const P4Login login_;
    HistoryPage page_;
    bool hasFirst_ = false;
    bool isOtherRevision_ = false; // the file is there, but not in that revision
};

} // namespace

void ReadP4History(const HostUIUser& host, const HistoryQuestion& question, HistoryTaker& taker)
{
    P4HistoryReader(host, question, taker).Read();
}

} // namespace tarnwell
