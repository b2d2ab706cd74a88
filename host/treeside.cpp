#include "side.h"

#include "system.h"

#include <map>

namespace tarnwell::host
{

namespace
{

// A tree, and what is in its folders: asked for once, since that takes a fraction of the time of a
// question for each folder.
struct Recorded
{
    RevisionTree tree;
    bool idsTellContents;
    bool listsTellAll;
    // By the name of the folder; empty until they are needed.
    std::map<std::string, std::vector<client::TreeEntry>> folders;
};

std::string FolderOf(const std::string& name)
{
    const std::size_t slash = name.rfind('/');
    return name.substr(0, slash == std::string::npos ? 0 : slash);
}

class TreeSide final : public Side
{
public:
    TreeSide(std::shared_ptr<Recorded> recorded, client::TreeEntry entry, bool isInFull)
        : recorded_(std::move(recorded)), entry_(std::move(entry)), isInFull_(isInFull)
    {
    }

    std::u16string PairingName() const override
    {
        return Name();
    }
    std::u16string Name() const override
    {
        return recorded_->tree.NameOf(entry_);
    }

    bool IsFile() const override
    {
        return entry_.kind == TreeFile || entry_.kind == TreeLink;
    }
    bool IsFolder() const override
    {
        return entry_.kind == TreeFolder;
    }
    bool IsRepository() const override
    {
        return entry_.kind == TreeRepository;
    }
    bool IsLink() const override
    {
        return entry_.kind == TreeLink;
    }
    bool IsInTree() const override
    {
        return true;
    }
    bool HasKeywords() const override
    {
        return entry_.keywords;
    }
    bool HasOtherLineEnds() const override
    {
        return entry_.lineEnds;
    }
    std::unique_ptr<Side> InFull() const override
    {
        if (recorded_->listsTellAll || isInFull_)
            return nullptr;
        return std::make_unique<TreeSide>(recorded_, recorded_->tree.Find(entry_.name), true);
    }

    std::optional<std::uint64_t> Size() const override
    {
        return IsFile() ? std::optional(entry_.size) : std::nullopt;
    }
    std::u16string Path() const override
    {
        return {};
    }
    bool IsRecordOf(const Side& file) const override
    {
        const std::u16string id = ContentId();
        if (id.empty())
            return false;
        const Address address = ParseAddress(file.Path());
        // The module doesn't look for work trees from the present folder on.
        const bool isLocal = address.kind == &FileSystemKinds().front();
        return isLocal && id == recorded_->tree.RecordedId(AbsolutePath(address.text));
    }
    std::u16string ContentId() const override
    {
        return recorded_->idsTellContents || IsRepository() ? client::Utf16(entry_.contentId)
                                                            : std::u16string();
    }
    Reader Open() const override
    {
        return recorded_->tree.Open(entry_.name);
    }
    Reader OpenPath() const override
    {
        return Open();
    }

    std::vector<std::unique_ptr<Side>> Inside(const Fail&) const override
    {
        if (recorded_->folders.empty())
            ListAll();
        std::vector<std::unique_ptr<Side>> inside;
        const auto found = recorded_->folders.find(entry_.name);
        if (found == recorded_->folders.end())
            return inside;
        for (client::TreeEntry& entry : found->second)
            inside.push_back(std::make_unique<TreeSide>(recorded_, std::move(entry), false));
        // Nobody goes through a folder twice.
        found->second.clear();
        return inside;
    }

private:
    void ListAll() const
    {
        // Also where it holds nothing.
        recorded_->folders[{}];
        recorded_->tree.List(true, [&](const client::TreeEntry& entry) {
            recorded_->folders[FolderOf(entry.name)].push_back(entry);
        });
    }

    std::shared_ptr<Recorded> recorded_;
    client::TreeEntry entry_;
    bool isInFull_; // was asked for alone
};

} // namespace

std::unique_ptr<Side> MakeSide(RevisionTree tree, const Address& address)
{
    client::TreeEntry top = tree.Find();
    auto recorded = std::make_shared<Recorded>(
        Recorded{std::move(tree), address.kind->idsTellContents, ListsTellAll(address), {}});
    return std::make_unique<TreeSide>(std::move(recorded), std::move(top), true);
}

} // namespace tarnwell::host
