#include "git/gittree.h"

#include "git/gitbatch.h"
#include "git/gitworkfiles.h"
#include "platform/wide.h"
#include "runner/commandline.h"

#include <tarnwell/text.h>

#include <algorithm>

namespace tarnwell
{

namespace
{

TreeItemKind KindOfMode(std::uint32_t mode)
{
    switch (mode)
    {
    case gitFolderMode:
        return TreeFolder;
    case gitLinkMode:
        return TreeLink;
    case gitRepositoryMode:
        return TreeRepository;
    default:
        return TreeFile;
    }
}

bool HasContent(std::uint32_t mode)
{
    const TreeItemKind kind = KindOfMode(mode);
    return kind == TreeFile || kind == TreeLink;
}

TreeRecord RecordOfEntry(const GitEntry& entry, const std::u16string& folder)
{
    TreeRecord record;
    record.name = folder.empty() ? DecodeName(entry.name) : folder + u"/" + DecodeName(entry.name);
    record.contentId = StrictText(strictGit, entry.id);
    record.kind = KindOfMode(entry.mode);
    record.isExecutable = record.kind == TreeFile && entry.mode == gitProgramMode;
    record.size = HasContent(entry.mode) ? entry.size : 0;
    return record;
}

class GitTree final : public TreeReader
{
public:
    explicit GitTree(PlacedItem item) : item_(std::move(item)), batch_(item_), workFiles_(item_) {}

    void Start(Patience& patience)
    {
        const std::optional<std::string> name = EncodeName(CommitArgument(item_.revision));
        if (!name || name->find('\n') != std::string::npos)
            ThrowNoRevision();
        std::string object;
        const GitObject commit = batch_.Content(*name, object, patience);
        if (commit.type.empty())
            ThrowNoRevision();
        const auto facts = ReadGitCommit(object);
        if (commit.type != "commit" || !facts)
            ThrowBadAnswer();
        revisionId_ = StrictText(strictGit, commit.id);
        time_ = facts->time;
        top_ = FindBelow({gitFolderMode, {}, facts->tree, 0}, item_.place.path, patience);
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
        GitEntry entry = FindBelow(top_, name, patience);
        if (HasContent(entry.mode))
            entry.size = FactsOf({entry}, patience)[0].size;
        TreeRecord record = RecordOfEntry(entry, {});
        record.name = name;
        return record;
    }

    void List(const std::u16string& name, bool recursive, const TreeTaker& take,
              Patience& patience) override
    {
        const GitEntry folder = FindBelow(top_, name, patience);
        if (folder.mode != gitFolderMode)
            ThrowWrongKind(noFolder, name);
        recursive ? ListAll(folder, name, take, patience)
                  : ListChildren(folder, name, take, patience);
    }

    ComPtr<IFileStream> Open(const std::u16string& name, Patience& patience) override
    {
        const GitEntry entry = FindBelow(top_, name, patience);
        if (!HasContent(entry.mode))
            ThrowWrongKind(noFile, name);
        ContentFile file(strictGit, item_.address, patience);
        const GitObject content = batch_.Content(entry.id, file, patience);
        if (content.type.empty())
            ThrowIncomplete();
        if (content.type != "blob")
            ThrowBadAnswer();
        return file.Stream();
    }

    std::u16string RecordedId(const std::u16string& path, Patience& patience) override
    {
        return workFiles_.IdOf(path, patience);
    }

private:
    // The folder read last, as one after the other is asked for what is in it.
    const std::vector<GitEntry>& EntriesOf(const std::string& id, Patience& patience)
    {
        if (id == readId_)
            return readEntries_;
        std::string object;
        const GitObject tree = batch_.Content(id, object, patience);
        if (tree.type.empty())
            ThrowIncomplete();
        auto entries = ReadGitTree(object, id.size() / 2);
        if (tree.type != "tree" || !entries)
            ThrowBadAnswer();
        readEntries_ = std::move(*entries);
        readId_ = id;
        return readEntries_;
    }

    GitEntry FindBelow(GitEntry entry, const std::u16string& path, Patience& patience)
    {
        const std::optional<std::string> bytes = EncodeName(path);
        if (!bytes || bytes->ends_with('/'))
            ThrowNoPath(path);
        std::string_view rest = *bytes;
        while (!rest.empty())
        {
            const std::string_view name = rest.substr(0, rest.find('/'));
            rest.remove_prefix(std::min(rest.size(), name.size() + 1));
            if (entry.mode != gitFolderMode || name.empty())
                ThrowNoPath(path);
            const std::vector<GitEntry>& entries = EntriesOf(entry.id, patience);
            const auto found = std::find_if(entries.begin(), entries.end(),
                                            [&](const GitEntry& e) { return e.name == name; });
            if (found == entries.end())
                ThrowNoPath(path);
            entry = *found;
        }
        return entry;
    }

    // Those of contents, with their sizes.
    std::vector<GitObject> FactsOf(const std::vector<GitEntry>& entries, Patience& patience)
    {
        std::vector<std::string> names;
        for (const GitEntry& entry : entries)
        {
            if (HasContent(entry.mode))
                names.push_back(entry.id);
        }
        std::vector<GitObject> facts = batch_.Facts(names, patience);
        for (const GitObject& object : facts)
        {
            if (object.type.empty())
                ThrowIncomplete();
        }
        return facts;
    }

    void ListChildren(const GitEntry& folder, const std::u16string& name, const TreeTaker& take,
                      Patience& patience)
    {
        std::vector<GitEntry> entries = EntriesOf(folder.id, patience);
        const std::vector<GitObject> facts = FactsOf(entries, patience);
        auto next = facts.begin();
        for (GitEntry& entry : entries)
        {
            if (HasContent(entry.mode))
                entry.size = next++->size;
            patience.Ask();
            if (!take(RecordOfEntry(entry, name)))
                return;
        }
    }

    // The client lists faster than it answers one question after the other.
    void ListAll(const GitEntry& folder, const std::u16string& name, const TreeTaker& take,
                 Patience& patience)
    {
        patience.Ask();
        RunningClient client(strictGit,
                             StrictGitCall(item_.place, u"ls-tree -r -t -l -z --full-tree " +
                                                            StrictText(strictGit, folder.id)));
        GitListingParser parser;
        for (std::string bytes = client.ReadMuch(patience); !bytes.empty();
             bytes = client.ReadMuch(patience))
        {
            parser.Feed(bytes);
            while (const std::optional<GitEntry> entry = parser.Next())
            {
                patience.Ask();
                if (entry->isMissing)
                    ThrowIncomplete();
                if (!take(RecordOfEntry(*entry, name)))
                    return;
            }
        }
        ThrowIfGitFailed(client.Finish(patience), item_);
        if (!parser.IsComplete())
            ThrowBadAnswer();
    }

    [[noreturn]] void ThrowNoRevision() const
    {
        ThrowStrictFailure(strictGit.source, noRevision, GitRevisionText(item_));
    }
    [[noreturn]] void ThrowNoPath(const std::u16string& name) const
    {
        ThrowStrictFailure(strictGit.source, noTreePath, name, GitRevisionText(item_));
    }
    [[noreturn]] void ThrowWrongKind(const StrictFailure& failure, const std::u16string& name) const
    {
        ThrowStrictFailure(strictGit.source, failure, name.empty() ? item_.address : name);
    }
    [[noreturn]] void ThrowIncomplete() const
    {
        ThrowStrictFailure(strictGit.source, incomplete, item_.address);
    }
    [[noreturn]] void ThrowBadAnswer() const
    {
        ThrowStrictFailure(strictGit.source, badAnswer, item_.address);
    }

    const PlacedItem item_;
    GitBatch batch_;
    GitWorkFiles workFiles_;
    GitEntry top_;
    std::u16string revisionId_;
    std::uint64_t time_ = 0;
    std::string readId_;
    std::vector<GitEntry> readEntries_;
};

} // namespace

std::unique_ptr<TreeReader> OpenGitTree(const std::u16string& path,
                                        const std::optional<std::u16string>& revision,
                                        Patience& patience)
{
    auto tree = std::make_unique<GitTree>(GitItemOf(path, revision, patience));
    tree->Start(patience);
    return tree;
}

} // namespace tarnwell
