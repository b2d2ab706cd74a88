#include "git/githistory.h"

#include "frame/exception.h"
#include "frame/messages.h"
#include "frame/text.h"
#include "frame/unixtime.h"
#include "git/githistoryparser.h"
#include "git/gitstrict.h"
#include "git/gituri.h"
#include "runner/commandline.h"
#include "runner/runningclient.h"

#include <tarnwell/text.h>

#include <algorithm>

namespace tarnwell
{

namespace
{

constexpr std::u16string_view logCommand =
    u"log -z --format=tformat:%H%x00%an%x00%at%x00%ct%x00%B --encoding=UTF-8 --no-color "
    u"--no-decorate --no-ext-diff --no-mailmap --no-notes --no-show-signature --no-textconv "
    u"--no-diff-merges --no-relative --ignore-submodules=none ";

std::u16string SignedDecimal(std::int64_t number)
{
    const std::string digits = std::to_string(number);
    return {digits.begin(), digits.end()};
}

// The client counts in 31 bits.
std::uint32_t In31Bits(std::uint32_t number)
{
    return std::min(number, std::uint32_t{INT32_MAX});
}

bool Follows(const Place& place, const HistoryOptions& options)
{
    return (options.flags & HistoryFollow) != 0 && !place.path.empty();
}

// What the client can't leave out when it follows names: there it leaves out commits, too, that
// don't concern the item.
HistoryPage PageOf(const HistoryOptions& options, bool follows)
{
    HistoryPage::Bounds bounds{.count = options.count};
    if (follows)
    {
        bounds.skip = options.skip;
        bounds.until = options.until;
    }
    return HistoryPage(bounds);
}

class GitHistory
{
public:
    GitHistory(const HistoryQuestion& question, HistoryTaker& taker)
        : question_(question), taker_(taker),
          item_(GitItemOf(question.path, question.revision, taker.HostsPatience()))
    {
    }

    void Read()
    {
        const bool wantsCopy = question_.Has(HistoryWorkingCopy) && question_.options.skip == 0;
        const bool hasCopy = wantsCopy && IsOnDisk();
        if (hasCopy && !taker_.Take(WorkingCopy()))
            return;
        const bool hasAny = ReadCommits(question_.options);
        if (!hasAny && !hasCopy && !EverWas())
            ThrowStrictFailure(strictGit.source, noPath, item_.address);
    }

private:
    bool IsOnDisk() const
    {
        return KindOf(PathInPlace(item_.place, item_.place.path)) != KindOnDisk::Missing;
    }

    HistoryRecord WorkingCopy() const
    {
        HistoryRecord record;
        record.description = FormatMessageById(MessageId::WorkingCopy);
        record.address = PathInPlace(item_.place, item_.place.path);
        record.path = item_.place.path;
        return record;
    }

    HistoryRecord RecordOf(const GitCommit& commit) const
    {
        HistoryRecord record;
        record.id = StrictText(strictGit, commit.id);
        record.author = StrictText(strictGit, commit.author);
        record.description = StrictText(strictGit, commit.description);
        record.path = DecodeName(commit.path);
        record.address = std::u16string(gitAddresses.scheme) + u"://" +
                         PathInPlace(item_.place, record.path) + u"#" + record.id;
        record.modifiedTime = commit.authorTime;
        record.revisionTime = commit.commitTime;
        return record;
    }

    std::unique_ptr<RunningClient> Start(const HistoryOptions& options)
    {
        taker_.HostsPatience().Ask();
        return std::make_unique<RunningClient>(
            strictGit,
            StrictGitCall(item_.place, GitHistoryArguments(item_.place, item_.revision, options)));
    }

    // Whether anything was given, or could have been.
    bool ReadCommits(const HistoryOptions& options)
    {
        const bool follows = Follows(item_.place, options);
        GitHistoryParser parser(follows, EncodeName(item_.place.path).value_or(""));
        HistoryPage page = PageOf(options, follows);
        const auto client = Start(options);
        Patience& patience = taker_.HostsPatience();
        bool hasAny = false;
        for (bool isMore = true; isMore;)
        {
            const std::string bytes = client->ReadMuch(patience);
            isMore = !bytes.empty();
            isMore ? parser.Feed(bytes) : parser.End();
            while (const std::optional<GitCommit> commit = parser.Next())
            {
                hasAny = true;
                // Giving them may take long, too.
                patience.Ask();
                if (page.Admits(commit->commitTime) &&
                    !(taker_.Take(RecordOf(*commit)) && page.CountDown()))
                    return true;
            }
        }
        ThrowIfGitFailed(client->Finish(patience), item_);
        if (!parser.IsComplete())
            ThrowStrictFailure(strictGit.source, badAnswer, item_.address);
        return hasAny;
    }

    // An empty page is no missing item.
    bool EverWas()
    {
        const HistoryOptions& options = question_.options;
        if (item_.place.path.empty())
            return true;
        // Where a file is followed, merges are left out, and one of them may be all that it has.
        if (options.skip == 0 && options.since == 0 && options.until == 0 &&
            !question_.Has(HistoryFollow))
            return false;
        HistoryOptions any{};
        any.count = 1;
        const auto client = Start(any);
        const bool printsAny = !client->Read(taker_.HostsPatience()).empty();
        return printsAny;
    }

    const HistoryQuestion& question_;
    HistoryTaker& taker_;
    const PlacedItem item_;
};

} // namespace

std::u16string GitHistoryArguments(const Place& place, const std::u16string& revision,
                                   const HistoryOptions& options)
{
    std::u16string arguments(logCommand);
    if (options.since != 0)
        arguments += u"--max-age=" + SignedDecimal(SecondsOf(options.since)) + u" ";
    if (Follows(place, options))
    {
        arguments += u"--follow --name-status --find-renames=50% ";
        // It counts what it prints. What it leaves out at the beginning it counts otherwise.
        if (options.count != 0 && options.until == 0)
            arguments += u"--max-count=" +
                         Decimal(In31Bits(In31Bits(options.count) + In31Bits(options.skip))) + u" ";
    }
    else
    {
        if (options.until != 0)
            arguments += u"--min-age=" + SignedDecimal(SecondsOf(options.until)) + u" ";
        if (options.count != 0)
            arguments += u"--max-count=" + Decimal(In31Bits(options.count)) + u" ";
        if (options.skip != 0)
            arguments += u"--skip=" + Decimal(In31Bits(options.skip)) + u" ";
    }
    arguments += u"--end-of-options " + Quoted(CommitArgument(revision)) + u" --";
    if (!place.path.empty())
        arguments += u" " + Quoted(place.path);
    return arguments;
}

void ReadGitHistory(const HistoryQuestion& question, HistoryTaker& taker)
{
    GitHistory(question, taker).Read();
}

} // namespace tarnwell
