#include "perforce/p4tree.h"

#include "frame/unixtime.h"
#include "perforce/p4historyparser.h"
#include "perforce/p4names.h"
#include "perforce/p4strict.h"
#include "perforce/p4treeparser.h"
#include "runner/contentfile.h"

#include <tarnwell/text.h>

#include <set>

namespace tarnwell
{

namespace
{

constexpr std::u16string_view fileFacts =
    u"fstat -Ol -T depotFile,headAction,headType,fileSize,digest";

constexpr std::size_t longestLink = std::size_t{64} * 1024; // bytes

// An item of the revision. A folder has no file.
struct Found
{
    std::string path; // in the depot, as the client takes it
    std::optional<P4File> file;
};

std::string Joined(const std::string& folder, std::string_view name)
{
    return folder + (folder.ends_with('/') ? "" : "/") + std::string(name);
}

TreeRecord RecordOf(const std::u16string& name, const P4File& file)
{
    TreeRecord record;
    record.name = name;
    record.contentId = P4Text(file.digest);
    record.kind = file.type.isLink ? TreeLink : TreeFile;
    record.isExecutable = file.type.isExecutable && !file.type.isLink;
    record.hasKeywords = file.type.hasKeywords;
    record.hasOtherLineEnds = file.type.isText;
    record.size = file.size;
    return record;
}

TreeRecord RecordOfFolder(const std::u16string& name)
{
    TreeRecord record;
    record.name = name;
    return record;
}

class P4Tree final : public TreeReader
{
public:
    P4Tree(const HostUIUser& host, P4Item item) : item_(std::move(item))
    {
        host_.SetHostObject(host.HostObject());
    }

    void Start(Patience& patience)
    {
        login_ = P4LoginOf(host_, item_);
        if (IsP4Moment(item_.revision))
            FixMoment(patience);
        const std::optional<Found> top =
            item_.isFolder ? FolderAt(item_.path, patience) : ItemAt(item_.path, patience);
        if (!top)
            ThrowNoTop(patience);
        top_ = *top;
        if (revisionId_.empty())
            ReadLatestOfSet(patience);
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
        const Found found = FindBelow(name, patience);
        return found.file ? RecordOf(name, *found.file) : RecordOfFolder(name);
    }

    void List(const std::u16string& name, bool recursive, const TreeTaker& take,
              Patience& patience) override
    {
        const Found folder = FindBelow(name, patience);
        if (folder.file)
            ThrowP4Failure(noFolder, name.empty() ? item_.address : name);
        const std::u16string before = name.empty() ? name : name + u"/";
        if (recursive)
            ListAll(folder.path, before, take, patience);
        else if (ListFiles(folder.path, before, take, patience))
            ListFolders(folder.path, before, take, patience);
    }

    ComPtr<IFileStream> Open(const std::u16string& name, Patience& patience) override
    {
        const Found found = FindBelow(name, patience);
        if (!found.file)
            ThrowP4Failure(noFile, name.empty() ? item_.address : name);
        const P4Type& type = found.file->type;
        P4Question question(Asker(), type.hasKeywords ? u"print -q -k" : u"print -q",
                            found.path + revision_, patience);
        ContentFile content(strictP4, item_.address, patience);
        if (!type.isLink)
            content.Expect(found.file->size);
        std::string link;
        std::uint64_t size = 0;
        while (const std::optional<P4Record> record = question.Next())
        {
            if (record->Code() != "text" && record->Code() != "binary")
                continue;
            const std::string& bytes = record->Text("data");
            size += bytes.size();
            if (!type.isLink)
                content.Take(bytes);
            else if (link.size() + bytes.size() <= longestLink)
                link += bytes;
            else
                ThrowBadAnswer();
        }
        // What can't be printed any more, or not to its end, is only warned of. Without a warning
        // it may have become shorter on its way into the client's character set.
        const bool isShort = size < found.file->size;
        if (isShort && (size == 0 || !question.Warning().empty()))
            ThrowP4Failure(badAnswer, item_.address);
        // Some servers end a link's path with a line feed, which isn't of it.
        if (link.ends_with('\n'))
            link.pop_back();
        content.Take(link);
        return content.Stream();
    }

private:
    P4Asker Asker() const
    {
        return {host_, item_, login_};
    }

    // The changes up to then are what there is from now on, whatever is submitted meanwhile.
    void FixMoment(Patience& patience)
    {
        const std::string moment = item_.revision == "#head" ? "" : item_.revision;
        const std::optional<P4Change> change = LatestChange("//..." + moment, patience);
        const bool isNumber =
            moment.starts_with('@') && P4Number(std::string_view(moment).substr(1)).has_value();
        if (!change || (isNumber && moment.substr(1) != change->id))
            ThrowNoRevision();
        Keep(*change);
        revision_ = "@" + change->id;
    }

    void ReadLatestOfSet(Patience& patience)
    {
        const std::string all = top_.file ? top_.path : Joined(top_.path, "...");
        const std::optional<P4Change> change = LatestChange(all + revision_, patience);
        if (!change)
            ThrowNoRevision();
        Keep(*change);
    }

    void Keep(const P4Change& change)
    {
        revisionId_ = P4Text(change.id);
        time_ = change.time;
    }

    std::optional<P4Change> LatestChange(const std::string& path, Patience& patience) const
    {
        P4Question question(Asker(), u"changes -s submitted -m 1", path, patience);
        std::optional<P4Change> latest;
        while (const std::optional<P4Record> record = question.Next())
        {
            latest = ReadP4Change(*record);
            if (!latest)
                ThrowBadAnswer();
        }
        return latest;
    }

    // A file comes before a folder of its name.
    std::optional<Found> ItemAt(const std::string& path, Patience& patience) const
    {
        std::optional<Found> found;
        if (path != "//")
        {
            EachFile(path, patience, [&](const P4File& file) {
                // A server that doesn't look at the case of letters finds others, too.
                if (file.path == path)
                    found = Found{path, file};
                return true;
            });
        }
        return found ? found : FolderAt(path, patience);
    }

    std::optional<Found> FolderAt(const std::string& path, Patience& patience) const
    {
        if (path == "//")
            return Found{path, std::nullopt};
        bool isThere = false;
        EachFolder(path, patience, [&](const std::string& folder) {
            isThere = isThere || folder == path;
            return true;
        });
        return isThere ? std::optional(Found{path, std::nullopt}) : std::nullopt;
    }

    Found FindBelow(const std::u16string& name, Patience& patience) const
    {
        if (name.empty())
        {
            patience.Ask();
            return top_;
        }
        const std::optional<std::string> bytes = EncodeName(name);
        const std::string path = bytes ? Joined(top_.path, P4Encoded(*bytes)) : std::string();
        const bool canBe = bytes && !top_.file && IsP4Path(path) && !bytes->ends_with('/');
        std::optional<Found> found;
        if (canBe)
            found = ItemAt(path, patience);
        if (!found)
            ThrowP4Failure(noTreePath, name, item_.RevisionText());
        return *found;
    }

    // Calls `take`, until it wants no more, with what there is at `path`, which may be a pattern.
    // False if it wanted no more.
    template <class F> bool EachFile(const std::string& path, Patience& patience, F take) const
    {
        P4Question question(Asker(), fileFacts, path + revision_, patience);
        while (const std::optional<P4Record> record = question.Next())
        {
            const std::optional<P4File> file = ReadP4File(*record);
            if (!file)
                ThrowBadAnswer();
            if (file->isThere && !take(*file))
                return false;
        }
        return true;
    }
    template <class F> bool EachFolder(const std::string& path, Patience& patience, F take) const
    {
        P4Question question(Asker(), u"dirs", path + revision_, patience);
        while (const std::optional<P4Record> record = question.Next())
        {
            const std::optional<std::string> folder = ReadP4Folder(*record);
            if (!folder)
                ThrowBadAnswer();
            if (!take(*folder))
                return false;
        }
        return true;
    }

    std::u16string NameBelow(const std::string& path, const std::string& folder) const
    {
        const std::optional<std::string_view> below = BelowP4Folder(path, folder);
        if (!below)
            ThrowBadAnswer();
        return DecodeName(P4Decoded(*below));
    }

    bool ListFiles(const std::string& folder, const std::u16string& before, const TreeTaker& take,
                   Patience& patience) const
    {
        if (folder == "//")
            return true;
        return EachFile(Joined(folder, "*"), patience, [&](const P4File& file) {
            return take(RecordOf(before + NameBelow(file.path, folder), file));
        });
    }

    void ListFolders(const std::string& folder, const std::u16string& before, const TreeTaker& take,
                     Patience& patience) const
    {
        EachFolder(Joined(folder, "*"), patience, [&](const std::string& path) {
            return take(RecordOfFolder(before + NameBelow(path, folder)));
        });
    }

    // The client lists files only.
    void ListAll(const std::string& folder, const std::u16string& before, const TreeTaker& take,
                 Patience& patience) const
    {
        std::set<std::u16string> given;
        EachFile(Joined(folder, "..."), patience, [&](const P4File& file) {
            const std::u16string name = NameBelow(file.path, folder);
            for (std::size_t slash = name.find(u'/'); slash != std::u16string::npos;
                 slash = name.find(u'/', slash + 1))
            {
                const std::u16string around = name.substr(0, slash);
                if (given.insert(around).second && !take(RecordOfFolder(before + around)))
                    return false;
            }
            return take(RecordOf(before + name, file));
        });
    }

    // The file may be there in another revision.
    [[noreturn]] void ThrowNoTop(Patience& patience)
    {
        const bool isNumber = item_.revision.starts_with('#') && item_.revision != "#head" &&
                              item_.revision != "#have";
        revision_.clear();
        if (isNumber && ItemAt(item_.path, patience))
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

    class User : public HostUIUser
    {
    };

    const P4Item item_;
    User host_; // the host's object stays as long as the tree
    P4Login login_;
    std::string revision_ = item_.revision; // as the client takes it
    Found top_;
    std::u16string revisionId_;
    std::uint64_t time_ = 0;
};

} // namespace

std::unique_ptr<TreeReader> OpenP4Tree(const HostUIUser& host, P4Item item, Patience& patience)
{
    auto tree = std::make_unique<P4Tree>(host, std::move(item));
    tree->Start(patience);
    return tree;
}

} // namespace tarnwell
