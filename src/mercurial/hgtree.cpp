#include "mercurial/hgtree.h"

#include "mercurial/hgrevision.h"
#include "mercurial/hgserver.h"
#include "mercurial/hgtreeparser.h"
#include "runner/contentfile.h"

#include <tarnwell/text.h>

#include <algorithm>
#include <map>

namespace tarnwell
{

namespace
{

constexpr const char* repositoriesFile = ".hgsubstate";

TreeItemKind KindOfEntry(const HgEntry& entry)
{
    switch (entry.kind)
    {
    case HgKind::Folder:
        return TreeFolder;
    case HgKind::Link:
        return TreeLink;
    case HgKind::Repository:
        return TreeRepository;
    default:
        return TreeFile;
    }
}

bool HasContent(const HgEntry& entry)
{
    return entry.kind != HgKind::Folder && entry.kind != HgKind::Repository;
}

class HgTree final : public TreeReader
{
public:
    explicit HgTree(HgItem item) : server_(std::move(item)) {}

    void Start(Patience& patience)
    {
        const HgRevision revision = FindHgRevision(server_, {}, patience);
        id_ = revision.id;
        revisionId_ = HgText(revision.id);
        time_ = revision.time;
        ReadManifest(patience);
        const std::u16string& path = server_.Item().place.path;
        const auto top = EncodeName(path);
        if (!top || !manifest_.Find(*top))
            ThrowNoPath(path);
        top_ = *top;
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
        const HgEntry entry = EntryOf(name);
        TreeRecord record = RecordOf(entry);
        if (HasContent(entry))
            record.size = SizeIn(SizesOf(HgPathPattern(entry.path), patience), entry.path);
        return record;
    }

    void List(const std::u16string& name, bool recursive, const TreeTaker& take,
              Patience& patience) override
    {
        patience.Ask();
        const HgEntry folder = EntryOf(name);
        if (folder.kind != HgKind::Folder)
            ThrowWrongKind(noFolder, name);
        recursive ? ListAll(folder, take, patience) : ListChildren(folder, take, patience);
    }

    ComPtr<IFileStream> Open(const std::u16string& name, Patience& patience) override
    {
        patience.Ask();
        const HgEntry entry = EntryOf(name);
        if (!HasContent(entry))
            ThrowWrongKind(noFile, name);
        ContentFile file(strictHg, server_.Item().address, patience);
        const auto take = [&](std::string_view bytes) {
            file.Take(bytes);
            return true;
        };
        const ClientOutcome outcome = server_.Run(
            ContentCommand(entry.path), take, [&] { file.Restart(); }, patience);
        ThrowIfHgFailed(outcome, server_.Item());
        return file.Stream();
    }

private:
    std::vector<std::string> ContentCommand(const std::string& path) const
    {
        return {"cat", "-r", HgExpression(HgQuoted(id_)), "--", HgPathPattern(path)};
    }

    void ReadManifest(Patience& patience)
    {
        std::vector<HgEntry> entries;
        HgManifestParser parser;
        const auto take = [&](std::string_view bytes) {
            parser.Feed(bytes);
            while (std::optional<HgEntry> entry = parser.Next())
                entries.push_back(std::move(*entry));
            return true;
        };
        const auto restart = [&] {
            entries.clear();
            parser = {};
        };
        ThrowIfHgFailed(server_.Run({"manifest", "-r", HgExpression(HgQuoted(id_)), "-T",
                                     "{hash} {type}\\0{path}\\0"},
                                    take, restart, patience),
                        server_.Item());
        if (!parser.IsComplete())
            ThrowBadAnswer();
        manifest_ = HgManifest(std::move(entries));
        AddRepositories(patience);
    }

    void AddRepositories(Patience& patience)
    {
        const auto file = manifest_.Find(repositoriesFile);
        if (!file || file->kind != HgKind::File)
            return;
        auto inside = ReadHgRepositories(server_.Answer(ContentCommand(file->path), patience));
        if (!inside)
            ThrowBadAnswer();
        const auto [begin, end] = manifest_.Below({});
        std::vector<HgEntry> all(begin, end);
        std::copy_if(inside->begin(), inside->end(), std::back_inserter(all),
                     [&](const HgEntry& entry) { return !manifest_.Find(entry.path); });
        manifest_ = HgManifest(std::move(all));
    }

    HgEntry EntryOf(const std::u16string& name) const
    {
        const auto below = EncodeName(name);
        if (!below || (!below->empty() && !IsHgPath(*below)))
            ThrowNoPath(name);
        std::string path = top_;
        if (!below->empty())
            path += (path.empty() ? "" : "/") + *below;
        const auto entry = manifest_.Find(path);
        if (!entry)
            ThrowNoPath(name);
        return *entry;
    }

    TreeRecord RecordOf(const HgEntry& entry) const
    {
        const std::size_t start = top_.empty() ? 0 : top_.size() + 1;
        TreeRecord record;
        record.name =
            DecodeName(std::string_view(entry.path).substr(std::min(start, entry.path.size())));
        record.contentId = HgText(entry.id);
        record.kind = KindOfEntry(entry);
        record.isExecutable = entry.kind == HgKind::Program;
        return record;
    }

    std::vector<std::string> SizesCommand(const std::string& pattern) const
    {
        std::vector<std::string> command = {"files", "-r", HgExpression(HgQuoted(id_)), "-T",
                                            "{path}\\0{size}\\0"};
        if (!pattern.empty())
            command.insert(command.end(), {"--", pattern});
        return command;
    }

    std::map<std::string, std::uint64_t> SizesOf(const std::string& pattern, Patience& patience)
    {
        HgSizeParser parser;
        parser.Feed(server_.Answer(SizesCommand(pattern), patience));
        std::map<std::string, std::uint64_t> sizes;
        while (std::optional<HgSize> size = parser.Next())
            sizes.insert_or_assign(std::move(size->path), size->size);
        if (!parser.IsComplete())
            ThrowBadAnswer();
        return sizes;
    }

    std::uint64_t SizeIn(const std::map<std::string, std::uint64_t>& sizes,
                         const std::string& path) const
    {
        const auto size = sizes.find(path);
        if (size == sizes.end())
            ThrowBadAnswer();
        return size->second;
    }

    void ListChildren(const HgEntry& folder, const TreeTaker& take, Patience& patience)
    {
        const std::vector<HgEntry> children = manifest_.ChildrenOf(folder.path);
        std::map<std::string, std::uint64_t> sizes;
        if (std::any_of(children.begin(), children.end(), HasContent))
            sizes = SizesOf(HgFilesPattern(folder.path), patience);
        for (const HgEntry& child : children)
        {
            TreeRecord record = RecordOf(child);
            if (HasContent(child))
                record.size = SizeIn(sizes, child.path);
            patience.Ask();
            if (!take(record))
                return;
        }
    }

    // Gives what is below a folder, in the order of the manifest, as its sizes come.
    class Walk
    {
    public:
        Walk(const HgTree& tree, const HgEntry& folder, const TreeTaker& take, Patience& patience)
            : tree_(tree), range_(tree.manifest_.Below(folder.path)), folder_(folder.path),
              take_(take), patience_(patience)
        {
            Restart();
        }

        // What was given already isn't given again.
        void Restart()
        {
            next_ = range_.begin;
            last_ = folder_;
            parser_ = {};
            toSkip_ = given_;
        }
        bool Take(std::string_view bytes)
        {
            parser_.Feed(bytes);
            while (const std::optional<HgSize> size = parser_.Next())
            {
                if (!GiveRepositories())
                    return false;
                if (next_ == range_.end || next_->path != size->path)
                    tree_.ThrowBadAnswer();
                if (!GiveNext(size->size))
                    return false;
            }
            return true;
        }
        bool End()
        {
            if (!GiveRepositories())
                return false;
            if (!parser_.IsComplete() || next_ != range_.end)
                tree_.ThrowBadAnswer();
            return true;
        }

    private:
        bool GiveRepositories()
        {
            while (next_ != range_.end && !HasContent(*next_))
            {
                if (!GiveNext(0))
                    return false;
            }
            return true;
        }
        bool GiveNext(std::uint64_t size)
        {
            const HgEntry& entry = *next_++;
            if (!GiveFolders(entry.path))
                return false;
            TreeRecord record = tree_.RecordOf(entry);
            record.size = size;
            return Give(record);
        }
        // Those that the path is in and the last one wasn't.
        bool GiveFolders(const std::string& path)
        {
            std::size_t slash = path.find('/', folder_.empty() ? 0 : folder_.size() + 1);
            for (; slash != std::string::npos; slash = path.find('/', slash + 1))
            {
                if (last_.compare(0, slash + 1, path, 0, slash + 1) == 0)
                    continue;
                if (!Give(tree_.RecordOf({path.substr(0, slash), {}, HgKind::Folder})))
                    return false;
            }
            last_ = path;
            return true;
        }
        bool Give(const TreeRecord& record)
        {
            if (toSkip_ > 0)
            {
                --toSkip_;
                return true;
            }
            ++given_;
            patience_.Ask();
            return take_(record);
        }

        const HgTree& tree_;
        const HgManifest::Range range_;
        const std::string folder_;
        const TreeTaker& take_;
        Patience& patience_;
        HgSizeParser parser_;
        HgManifest::Position next_;
        std::string last_; // the path that was given last
        std::size_t given_ = 0;
        std::size_t toSkip_ = 0;
    };

    void ListAll(const HgEntry& folder, const TreeTaker& take, Patience& patience)
    {
        Walk walk(*this, folder, take, patience);
        const auto [begin, end] = manifest_.Below(folder.path);
        bool isEnough = false;
        if (std::any_of(begin, end, HasContent))
        {
            const auto read = [&](std::string_view bytes) {
                isEnough = !walk.Take(bytes);
                return !isEnough;
            };
            const std::string pattern = folder.path.empty() ? "" : HgPathPattern(folder.path);
            ThrowIfHgFailed(server_.Run(
                                SizesCommand(pattern), read, [&] { walk.Restart(); }, patience),
                            server_.Item());
        }
        if (!isEnough)
            walk.End();
    }

    [[noreturn]] void ThrowNoPath(const std::u16string& name) const
    {
        ThrowStrictFailure(strictHg.source, noTreePath, name, server_.Item().RevisionText());
    }
    [[noreturn]] void ThrowWrongKind(const StrictFailure& failure, const std::u16string& name) const
    {
        ThrowStrictFailure(strictHg.source, failure, name.empty() ? server_.Item().address : name);
    }
    [[noreturn]] void ThrowBadAnswer() const
    {
        ThrowStrictFailure(strictHg.source, badAnswer, server_.Item().address);
    }

    HgServer server_;
    HgManifest manifest_;
    std::string id_;  // of the revision
    std::string top_; // from the root of the repository on
    std::u16string revisionId_;
    std::uint64_t time_ = 0;
};

} // namespace

std::unique_ptr<TreeReader> OpenHgTree(const std::u16string& path,
                                       const std::optional<std::u16string>& revision,
                                       Patience& patience)
{
    auto tree = std::make_unique<HgTree>(HgItemOf(path, revision));
    tree->Start(patience);
    return tree;
}

} // namespace tarnwell
