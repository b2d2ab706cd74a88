#include "subversion/svnhistory.h"

#include "frame/exception.h"
#include "frame/messages.h"
#include "frame/text.h"
#include "platform/wide.h"
#include "runner/commandline.h"
#include "subversion/svnhistoryparser.h"
#include "subversion/svnitem.h"
#include "subversion/svnuri.h"
#include "subversion/svnvalues.h"

#include <tarnwell/text.h>

#include <algorithm>
#include <memory>

namespace tarnwell
{

namespace
{

constexpr std::u16string_view removalCommand = u"log --xml -v --stop-on-copy ";

class SvnHistory
{
public:
    SvnHistory(const HostUIUser& host, const HistoryQuestion& question, HistoryTaker& taker)
        : question_(question), taker_(taker), patience_(taker.HostsPatience()),
          asked_(SvnQuestionOf(question.path, question.revision)), host_(host),
          page_({question.options.skip, question.options.count, question.options.since,
                 question.options.until})
    {
    }

    void Read()
    {
        patience_.Ask();
        place_ = FindSvnPlace(host_, asked_, patience_);
        const bool wantsCopy = question_.Has(HistoryWorkingCopy) && question_.options.skip == 0;
        const bool hasCopy = wantsCopy && asked_.isLocal && IsOnDisk();
        if (hasCopy && !taker_.Take(WorkingCopy()))
            return;
        if (!ReadCommitted() && !hasCopy)
            ThrowStrictFailure(svnSource, noPath, asked_.address);
    }

private:
    bool IsOnDisk() const
    {
        return GetFileAttributesW(Wide(asked_.target)) != INVALID_FILE_ATTRIBUTES;
    }

    HistoryRecord WorkingCopy() const
    {
        HistoryRecord record;
        record.description = FormatMessageById(MessageId::WorkingCopy);
        record.address = asked_.target;
        record.path = place_.path;
        return record;
    }

    // False if there never was such an item.
    bool ReadCommitted()
    {
        if (place_.revision.empty())
            return false;
        // The second needn't wait for what the first says, but for how to read it.
        const auto info = StartSvnInfo(place_.login, place_.item, place_.revision);
        auto log = StartLog(place_.item, place_.revision);
        const auto facts = FindSvnFacts(place_.login, *info, asked_.Subject(), patience_);
        if (!facts)
        {
            log.reset();
            return ReadRemoved();
        }
        if (facts->revision == "0")
            ThrowStrictFailure(svnSource, noRevision, asked_.RevisionText());
        root_ = RootOf(facts->path);
        Give(*log, facts->path);
        return true;
    }

    // By the path of what was asked for.
    SvnRoot RootOf(std::string_view path) const
    {
        return place_.root ? *place_.root : SvnRoot(asked_.place, path);
    }

    std::unique_ptr<RunningClient> StartLog(const std::u16string& item,
                                            const std::u16string& revision) const
    {
        return place_.login.Start(SvnHistoryArguments(question_.options) +
                                  SvnTarget(item, revision));
    }

    HistoryRecord RecordOf(const SvnRevision& revision, std::string_view path) const
    {
        HistoryRecord record;
        record.id = SvnText(revision.number);
        record.author = SvnText(revision.author);
        record.description = SvnText(revision.description);
        record.path = DecodeName(path);
        record.address = root_->AddressOf(record.path, record.id);
        record.modifiedTime = revision.time;
        record.revisionTime = revision.time;
        return record;
    }

    // Whether more are wanted.
    bool Give(const SvnRevision& revision, std::string_view path)
    {
        // Giving them may take long, too.
        patience_.Ask();
        const std::uint64_t time = InWholeSeconds(revision.time);
        if (time != 0 && time < question_.options.since)
            return false;
        return !page_.Admits(time) || (taker_.Take(RecordOf(revision, path)) && page_.CountDown());
    }

    // What the client tells of an item that has this path first.
    void Give(RunningClient& log, std::string path)
    {
        const bool follows = question_.Has(HistoryFollow);
        path.insert(0, 1, '/');
        const auto give = [&](const SvnRevision& revision) {
            const bool isMore = Give(revision, std::string_view(path).substr(1));
            if (follows)
                path = SvnPathBefore(revision, std::move(path));
            return isMore;
        };
        ReadEach(log, give);
    }

    // Until `take` says that it has enough.
    void ReadEach(RunningClient& log, const std::function<bool(const SvnRevision&)>& take)
    {
        SvnHistoryParser parser;
        for (std::string bytes = log.Read(patience_); !bytes.empty(); bytes = log.Read(patience_))
        {
            parser.Feed(bytes);
            while (const std::optional<SvnRevision> revision = parser.Next())
            {
                if (!take(*revision))
                    return;
            }
        }
        place_.login.Check(log.Finish(patience_), asked_.Subject());
        if (!parser.IsComplete())
            ThrowStrictFailure(svnSource, badAnswer, asked_.address);
    }

    // The nearest folder around the item that there is. `rest` becomes what is below that.
    SvnItemFacts FindAround(std::string& rest)
    {
        std::string url = EncodeName(place_.item).value_or("");
        const std::size_t start = url.find("://") + 3;
        rest.clear();
        for (;;)
        {
            url.resize(std::max(url.find_last_not_of('/') + 1, start));
            const std::size_t slash = url.rfind('/');
            if (slash == std::string::npos || slash < start)
                ThrowStrictFailure(svnSource, noPath, asked_.address);
            const std::string name = DecodeSvnUrl(std::string_view(url).substr(slash + 1));
            url.resize(slash);
            rest.insert(0, rest.empty() ? name : name + "/");
            const auto info = StartSvnInfo(place_.login, DecodeName(url), place_.revision);
            if (auto facts = FindSvnFacts(place_.login, *info, asked_.Subject(), patience_))
                return std::move(*facts);
        }
    }

    // The history of what was removed begins with that, as the folder's tells it.
    bool ReadRemoved()
    {
        std::string rest;
        const SvnItemFacts around = FindAround(rest);
        const std::string path = around.path + (around.path.empty() ? "" : "/") + rest;
        root_ = RootOf(path);
        const std::u16string item = DecodeName(around.url + "/" + EncodeSvnPath(rest));
        std::optional<SvnRevision> removal;
        std::u16string before;
        const auto folders =
            place_.login.Start(std::u16string(removalCommand) +
                               SvnTarget(DecodeName(around.url), SvnText(around.revision)));
        ReadEach(*folders, [&](const SvnRevision& revision) {
            patience_.Ask();
            if (!RemovesPath(revision, "/" + path))
                return true;
            // It may have been gone already when the folder around it went.
            const auto number = ParseSvnNumber<std::uint64_t>(SvnText(revision.number));
            before = DecodeName(std::to_string(std::max<std::uint64_t>(number, 1) - 1));
            const auto info = StartSvnInfo(place_.login, item, before);
            if (FindSvnFacts(place_.login, *info, asked_.Subject(), patience_))
                removal = revision;
            return !removal;
        });
        if (removal && Give(*removal, path))
            Give(*StartLog(item, before), path);
        return removal.has_value();
    }

    const HistoryQuestion& question_;
    HistoryTaker& taker_;
    Patience& patience_;
    const SvnQuestion asked_;
    const HostUIUser& host_;
    HistoryPage page_;
    SvnPlace place_;
    std::optional<SvnRoot> root_;
};

} // namespace

std::u16string SvnHistoryArguments(const HistoryOptions& options)
{
    // What changed is only needed to follow an item.
    const bool follows = (options.flags & HistoryFollow) != 0;
    std::u16string arguments = follows ? u"log --xml -v " : u"log --xml --stop-on-copy ";
    if (options.count != 0 && options.until == 0)
    {
        const std::uint64_t last = std::uint64_t{options.skip} + options.count;
        arguments += u"-l " +
                     Decimal(static_cast<std::uint32_t>(std::min(last, std::uint64_t{INT32_MAX}))) +
                     u" ";
    }
    return arguments;
}

void ReadSvnHistory(const HostUIUser& host, const HistoryQuestion& question, HistoryTaker& taker)
{
    SvnHistory(host, question, taker).Read();
}

} // namespace tarnwell
