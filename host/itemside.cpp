#include "side.h"

#include "items.h"
#include "system.h"
#include "text16.h"

#include <tarnwell/constants.h>

#include <algorithm>

namespace tarnwell::host
{

namespace
{

class ItemSide final : public Side
{
public:
    explicit ItemSide(const ComPtr<IFileSystemItem>& item)
        : item_(item), file_(item.As<IFile>()), folder_(item.As<IFolder>())
    {
    }

    std::u16string PairingName() const override
    {
        if (const auto comparable = item_.As<IFileSystemItemComparableUrl>())
            return TextFrom(comparable.Get(), &IFileSystemItemComparableUrl::GetComparableName);
        return Name();
    }
    std::u16string Name() const override
    {
        return TextFrom(item_.Get(), &IFileSystemItem::GetName);
    }

    bool IsFile() const override
    {
        return static_cast<bool>(file_);
    }
    bool IsFolder() const override
    {
        return static_cast<bool>(folder_);
    }
    bool IsRepository() const override
    {
        return false;
    }
    bool IsLink() const override
    {
        std::uint32_t attributes = 0;
        Call([&] { return item_->GetAttributes(&attributes); });
        return (attributes & AttributeLink) != 0;
    }
    bool IsInTree() const override
    {
        return false;
    }
    bool HasKeywords() const override
    {
        return false;
    }
    bool HasOtherLineEnds() const override
    {
        return false;
    }
    std::unique_ptr<Side> InFull() const override
    {
        return nullptr;
    }

    std::optional<std::uint64_t> Size() const override
    {
        if (!file_)
            return std::nullopt;
        return SizeOf(file_);
    }
    std::u16string Path() const override
    {
        return TextFrom(item_.Get(), &IFileSystemItem::GetPath);
    }
    bool IsRecordOf(const Side&) const override
    {
        return false;
    }
    std::u16string ContentId() const override
    {
        return {};
    }
    Reader Open() const override
    {
        return Reader(file_);
    }
    Reader OpenPath() const override
    {
        std::u16string target = FromPath(std::filesystem::read_symlink(FilePath(Path())));
        if (std::filesystem::path::preferred_separator != '/')
            std::replace(target.begin(), target.end(), u'\\', u'/');
        return Reader(ToUtf8(target));
    }

    std::vector<std::unique_ptr<Side>> Inside(const Fail& fail) const override
    {
        std::vector<std::unique_ptr<Side>> inside;
        ForEachItem(
            folder_, [&](const ComPtr<IFileSystemItem>& item) { inside.push_back(MakeSide(item)); },
            fail);
        return inside;
    }

private:
    ComPtr<IFileSystemItem> item_;
    ComPtr<IFile> file_;
    ComPtr<IFolder> folder_;
};

} // namespace

std::unique_ptr<Side> MakeSide(const ComPtr<IFileSystemItem>& item)
{
    return std::make_unique<ItemSide>(item);
}

} // namespace tarnwell::host
