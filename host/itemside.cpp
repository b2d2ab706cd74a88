#include "side.h"

#include "items.h"
#include "system.h"
#include "text16.h"
#include "words.h"

#include <tarnwell/constants.h>

#include <algorithm>
#include <system_error>

namespace tarnwell::host
{

namespace
{

// What can be read for ever without an end, or waited for: a pipe, a socket or a device.
bool IsEndless(const std::u16string& path)
{
    std::error_code ignored;
    const std::filesystem::file_status status = std::filesystem::status(FilePath(path), ignored);
    return is_fifo(status) || is_socket(status) || is_character_file(status) ||
           is_block_file(status);
}

class ItemSide final : public Side
{
public:
    ItemSide(const ComPtr<IFileSystemItem>& item, bool isNamed)
        : item_(item), file_(item.As<IFile>()), folder_(item.As<IFolder>()), isNamed_(isNamed)
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
        // A pipe that the user has named is meant.
        if (!isNamed_ && IsEndless(Path()))
            throw Failure{E_FAIL, Say(Word::Endless, {Path()})};
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
            folder_,
            [&](const ComPtr<IFileSystemItem>& item) {
                inside.push_back(std::make_unique<ItemSide>(item, false));
            },
            fail);
        return inside;
    }

private:
    ComPtr<IFileSystemItem> item_;
    ComPtr<IFile> file_;
    ComPtr<IFolder> folder_;
    bool isNamed_; // and not found in a folder
};

} // namespace

std::unique_ptr<Side> MakeSide(const ComPtr<IFileSystemItem>& item)
{
    return std::make_unique<ItemSide>(item, true);
}

} // namespace tarnwell::host
