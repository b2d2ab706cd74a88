#include "subversion/svntree.h"

#include "frame/exception.h"
#include "runner/contentfile.h"
#include "runner/outputfile.h"
#include "subversion/svnhistoryparser.h"
#include "subversion/svnitem.h"
#include "subversion/svnuri.h"
#include "subversion/svnvalues.h"

#include <tarnwell/text.h>

#include <map>
#include <memory>

namespace tarnwell
{

namespace
{

constexpr std::u16string_view dateCommand = u"propget --xml --revprop svn:date ";
constexpr std::u16string_view marksCommand = u"proplist --xml ";
constexpr std::u16string_view contentCommand = u"cat --ignore-keywords ";

std::string Joined(const std::string& folder, const std::string& name)
{
    return folder.empty() ? name : folder + "/" + name;
}

// Which files below an address have marks, by their names from there on.
using MarksByName = std::map<std::string, SvnMarks, std::less<>>;

void ApplyMarks(const SvnMarks& marks, TreeRecord& record)
{
    record.isExecutable = marks.isExecutable && !marks.isSpecial;
    record.hasKeywords = marks.hasKeywords && !marks.isSpecial;
    record.hasOtherLineEnds = marks.hasLineEnds && !marks.isSpecial;
    if (!marks.isSpecial)
        return;
    record.kind = TreeLink;
    record.size -= std::min(record.size, std::uint64_t{svnLinkStart.size()});
}

// Leaves out what stands in front of the path that a link leads to.
class LinkTaker
{
public:
    explicit LinkTaker(ContentTaker& taker) : taker_(taker) {}

    void Take(std::string_view bytes)
    {
        if (isPast_)
            return taker_.Take(bytes);
        start_ += bytes;
        if (start_.size() >= svnLinkStart.size())
            End();
    }
    void End()
    {
        if (isPast_)
            return;
        isPast_ = true;
        const std::string_view start = start_;
        taker_.Take(start.substr(start.starts_with(svnLinkStart) ? svnLinkStart.size() : 0));
    }

private:
    ContentTaker& taker_;
    std::string start_;
    bool isPast_ = false;
};

class SvnTree final : public TreeReader
{
public:
    SvnTree(const HostUIUser& host, SvnQuestion asked, Patience& patience)
        : asked_(std::move(asked)), subject_(asked_.Subject())
    {
        patience.Ask();
        const SvnPlace place = FindSvnPlace(host, asked_, patience);
        login_ = place.login;
        if (place.revision.empty())
            ThrowNoPath(asked_.address);
        const auto info = StartSvnInfo(login_, place.item, place.revision);
        auto facts = FindSvnFacts(login_, *info, subject_, patience);
        if (!facts)
            ThrowNoPath(asked_.address);
        if (facts->revision.empty())
            ThrowStrictFailure(svnSource, badAnswer, asked_.address);
        top_ = std::move(*facts);
        revisionId_ = SvnText(top_.revision);
        isNear_ = top_.url.starts_with("file:");
        // Where the revision has changed the item, its time was told.
        time_ = top_.changedRevision == top_.revision ? top_.changedTime : ReadTime(patience);
    }

    const std::u16string& RevisionId() const override
    {
        return revisionId_;
    }
    std::uint64_t RevisionTime() const override
    {
        return time_;
    }

    TreeRecord Find(const std::u16string& name, Patience& patience) override
    {
        patience.Ask();
        const std::string path = NameIn(name);
        const auto info = path.empty() ? nullptr : StartSvnInfo(login_, UrlOf(path), revisionId_);
        // A folder's own marks don't matter, and what there isn't is told by the other.
        const auto marks = StartMarks(path, u"--depth empty ");
        const SvnItemFacts facts = FactsOf(path, info.get(), name, patience);
        TreeRecord record;
        record.name = name;
        record.kind = facts.isFolder ? TreeFolder : TreeFile;
        record.size = facts.size;
        if (facts.isFolder)
            return record;
        for (const auto& [file, mark] : ReadMarks(*marks, facts.url, patience))
            ApplyMarks(mark, record);
        return record;
    }

    void List(const std::u16string& name, bool recursive, const TreeTaker& take,
              Patience& patience) override
    {
        patience.Ask();
        const std::string path = NameIn(name);
        const std::u16string depth = recursive ? u"--depth infinity " : u"--depth immediates ";
        const auto info = path.empty() ? nullptr : StartSvnInfo(login_, UrlOf(path), revisionId_);
        const auto listing = login_.Start(u"list --xml " + depth + TargetOf(path));
        // Over a network this would be a question for each file.
        const auto marks = isNear_ ? StartMarks(path, depth) : nullptr;
        const SvnItemFacts facts = FactsOf(path, info.get(), name, patience);
        if (!facts.isFolder)
            ThrowStrictFailure(svnSource, noFolder, name.empty() ? asked_.address : name);
        const MarksByName byName = marks ? ReadMarks(*marks, facts.url, patience) : MarksByName();
        SvnXmlReader reader("entry");
        for (std::string bytes = listing->Read(patience); !bytes.empty();
             bytes = listing->Read(patience))
        {
            reader.Feed(bytes);
            while (const std::optional<SvnElement> element = reader.Next())
            {
                patience.Ask();
                const std::optional<SvnEntry> entry = ReadSvnEntry(*element);
                if (!entry)
                    ThrowStrictFailure(svnSource, badAnswer, asked_.address);
                if (!take(RecordOf(*entry, path, byName)))
                    return;
            }
        }
        login_.Check(listing->Finish(patience), subject_);
        if (!reader.IsComplete())
            ThrowStrictFailure(svnSource, badAnswer, asked_.address);
    }

    ComPtr<IFileStream> Open(const std::u16string& name, Patience& patience) override
    {
        patience.Ask();
        const std::string path = NameIn(name);
        if (path.empty() && top_.isFolder)
            ThrowStrictFailure(svnSource, noFile, asked_.address);
        ContentFile file(strictSvn, asked_.address, patience);
        const auto marks = StartMarks(path, u"--depth empty ");
        const auto content = login_.Start(std::u16string(contentCommand) + TargetOf(path));
        bool isLink = false;
        for (const auto& [each, mark] : ReadMarks(*marks, UrlBytesOf(path), patience, false))
            isLink = isLink || mark.isSpecial;
        LinkTaker link(file);
        for (std::string bytes = content->Read(patience); !bytes.empty();
             bytes = content->Read(patience))
            isLink ? link.Take(bytes) : file.Take(bytes);
        if (isLink)
            link.End();
        const ClientOutcome outcome = content->Finish(patience);
        const StrictFailure failure = SvnFailureOf(outcome.errors);
        if (outcome.exitCode != 0 && failure.status == HistoryNoPath)
            ThrowNoPath(name);
        if (outcome.exitCode != 0 && failure.status == HistoryWrongKind)
            ThrowStrictFailure(svnSource, noFile, name);
        login_.Check(outcome, subject_);
        return file.Stream();
    }

private:
    // Throws for what is the name of no item.
    std::string NameIn(const std::u16string& name) const
    {
        const std::optional<std::string> path = EncodeName(name);
        if (!path || (!path->empty() && !IsSvnName(*path)))
            ThrowNoPath(name);
        return *path;
    }

    std::string UrlBytesOf(const std::string& path) const
    {
        return path.empty() ? top_.url : top_.url + "/" + EncodeSvnPath(path);
    }
    std::u16string UrlOf(const std::string& path) const
    {
        return DecodeName(UrlBytesOf(path));
    }
    std::u16string TargetOf(const std::string& path) const
    {
        return SvnTarget(UrlOf(path), revisionId_);
    }

    SvnItemFacts FactsOf(const std::string& path, RunningClient* info, const std::u16string& name,
                         Patience& patience) const
    {
        if (path.empty())
            return top_;
        auto facts = FindSvnFacts(login_, *info, subject_, patience);
        if (!facts)
            ThrowNoPath(name);
        return std::move(*facts);
    }

    std::uint64_t ReadTime(Patience& patience) const
    {
        const auto client = login_.Start(std::u16string(dateCommand) + u"-r " + revisionId_ + u" " +
                                         SvnTarget(UrlOf({}), revisionId_));
        const SvnElement times = ReadSvnElement(login_, *client, "revprops", subject_, patience);
        const std::string* const date = times.ChildText("property");
        return date == nullptr ? 0 : ParseSvnDate(SvnText(*date));
    }

    std::unique_ptr<RunningClient> StartMarks(const std::string& path,
                                              std::u16string_view depth) const
    {
        return login_.Start(std::u16string(marksCommand).append(depth) + TargetOf(path));
    }

    // By the name from `url` on, which is empty for the item itself. Without `mustBe` an item that
    // there isn't has none.
    MarksByName ReadMarks(RunningClient& client, const std::string& url, Patience& patience,
                          bool mustBe = true) const
    {
        const std::string folder = DecodeSvnUrl(url);
        MarksByName found;
        SvnXmlReader reader("target");
        for (std::string bytes = client.Read(patience); !bytes.empty();
             bytes = client.Read(patience))
        {
            reader.Feed(bytes);
            while (const std::optional<SvnElement> element = reader.Next())
            {
                patience.Ask();
                const std::optional<SvnMarks> marks = ReadSvnMarks(*element);
                const std::string item = marks ? DecodeSvnUrl(marks->url) : std::string();
                if (!marks || !item.starts_with(folder))
                    ThrowStrictFailure(svnSource, badAnswer, asked_.address);
                if (marks->HasAny())
                    found[item.substr(std::min(item.size(), folder.size() + 1))] = *marks;
            }
        }
        const ClientOutcome outcome = client.Finish(patience);
        const bool isMissing =
            outcome.exitCode != 0 && SvnFailureOf(outcome.errors).status == HistoryNoPath;
        if (isMissing && !mustBe)
            return {};
        login_.Check(outcome, subject_);
        if (!reader.IsComplete())
            ThrowStrictFailure(svnSource, badAnswer, asked_.address);
        return found;
    }

    static TreeRecord RecordOf(const SvnEntry& entry, const std::string& folder,
                               const MarksByName& marks)
    {
        TreeRecord record;
        record.name = DecodeName(Joined(folder, entry.name));
        record.kind = entry.isFolder ? TreeFolder : TreeFile;
        record.size = entry.size;
        const auto found = marks.find(entry.name);
        if (found != marks.end() && !entry.isFolder)
            ApplyMarks(found->second, record);
        return record;
    }

    [[noreturn]] void ThrowNoPath(const std::u16string& name) const
    {
        ThrowStrictFailure(svnSource, noTreePath, name, asked_.RevisionText());
    }

    const SvnQuestion asked_;
    const StrictSubject subject_;
    SvnLogin login_;
    SvnItemFacts top_;
    std::u16string revisionId_;
    std::uint64_t time_ = 0;
    bool isNear_ = false; // on this machine
};

} // namespace

std::unique_ptr<TreeReader> OpenSvnTree(const HostUIUser& host, const std::u16string& path,
                                        const std::optional<std::u16string>& revision,
                                        Patience& patience)
{
    return std::make_unique<SvnTree>(host, SvnQuestionOf(path, revision), patience);
}

} // namespace tarnwell
