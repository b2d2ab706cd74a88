/// @file
/// Files, folders and what folders hold.
#pragma once

#include <tarnwell/client/answers.hpp>
#include <tarnwell/client/list.hpp>
#include <tarnwell/client/streams.hpp>
#include <tarnwell/items.h>

#include <functional>
#include <optional>
#include <vector>

namespace tarnwell::client
{

/// Asked in place of the module's own question before something is deleted, with its address; true
/// lets it go.
using Confirm = std::function<bool(const std::string& address)>;

class File;
class Folder;

/// A file or a folder. Facts are those found when they were first asked for.
class Item
{
public:
    /// Takes a reference of its own.
    explicit Item(const ComPtr<IFileSystemItem>& item) : item_(item) {}

    /// The last component.
    std::string Name() const
    {
        return detail::TextOf([&](BSTR* text) { return item_->GetName(text); });
    }
    /// The full address, a password in it included.
    std::string Path() const
    {
        return detail::TextOf([&](BSTR* text) { return item_->GetPath(text); });
    }
    /// The address of the containing folder.
    std::string ParentPath() const
    {
        return detail::TextOf([&](BSTR* text) { return item_->GetParentPath(text); });
    }
    /// In 100-nanosecond intervals since 1 January 1601 UTC; 0 if unknown.
    std::uint64_t ModifiedTime() const
    {
        return detail::NumberOf<std::uint64_t>(
            [&](std::uint64_t* time) { return item_->GetModifiedTime(time); });
    }
    /// `Attribute` bits.
    std::uint32_t Attributes() const
    {
        return detail::NumberOf<std::uint32_t>(
            [&](std::uint32_t* bits) { return item_->GetAttributes(bits); });
    }
    /// Local only; on Linux only the read-only bit reaches the disk.
    void SetAttributes(std::uint32_t attributes)
    {
        Check([&] { return item_->SetAttributes(attributes); });
    }
    /// What the object is; nothing is looked up.
    bool IsFolder() const
    {
        return static_cast<bool>(item_.As<IFolder>());
    }

    /// Failure for a folder.
    File AsFile() const;
    /// Failure for a file.
    Folder AsFolder() const;

    /// Deletes it for good, without a question of the module's. `confirm`, if given, is asked
    /// before; the answer is whether the item went. With `recursive` a folder goes with all that is
    /// in it; without it a local item must be a file.
    bool Delete(bool recursive = false, const Confirm& confirm = nullptr)
    {
        if (confirm && !confirm(Path()))
            return false;
        Check([&] { return item_->Delete(VARIANT_TRUE, detail::Truth(recursive)); });
        return true;
    }

    /// The interface behind it.
    const ComPtr<IFileSystemItem>& Get() const
    {
        return item_;
    }

private:
    ComPtr<IFileSystemItem> item_;
};

/// A file.
class File : public Item
{
public:
    /// Takes a reference of its own.
    explicit File(const ComPtr<IFile>& file)
        : Item(detail::Need<IFileSystemItem>(file)), file_(file)
    {
    }

    /// In bytes.
    std::uint64_t Size() const
    {
        const auto low = detail::NumberOf<std::uint32_t>(
            [&](std::uint32_t* half) { return file_->GetSizeLow(half); });
        const auto high = detail::NumberOf<std::uint32_t>(
            [&](std::uint32_t* half) { return file_->GetSizeHigh(half); });
        return std::uint64_t{high} << 32 | low;
    }

    /// The content, from its beginning.
    Reader Open() const
    {
        return Reader(Open(AccessRead, OpenExisting));
    }
    /// Made, or emptied first.
    Writer Create(Disposition disposition = CreateAlways)
    {
        return Writer(Open(AccessWrite, disposition));
    }

    /// All of it.
    std::string Read() const
    {
        return Open().ReadAll();
    }
    /// All of it: text, or anything that has `data()` and `size()`. Returns when it is closed.
    template <class Buffer> void Write(const Buffer& buffer)
    {
        Writer writer = Create();
        writer.Write(buffer);
        writer.Close();
    }

    /// Local files only; the object goes on telling the old one.
    void SetModifiedTime(std::uint64_t time)
    {
        const auto item = detail::Need<IFileSystemItemExt>(file_);
        Check([&] { return item->SetModifiedTime(time); });
    }

    /// The interface behind it.
    const ComPtr<IFile>& GetFile() const
    {
        return file_;
    }

private:
    ComPtr<IFileStream> Open(Access access, Disposition disposition) const
    {
        ComPtr<IFileStream> stream;
        Check([&] { return file_->Open(access, disposition, stream.Out()); });
        return stream;
    }

    ComPtr<IFile> file_;
};

/// What a folder held when it was asked.
using Contents = List<IFolderContents, IFileSystemItem, Item>;

/// A folder.
class Folder : public Item
{
public:
    /// Takes a reference of its own.
    explicit Folder(const ComPtr<IFolder>& folder)
        : Item(detail::Need<IFileSystemItem>(folder)), folder_(folder)
    {
    }

    /// Reads it now: `for (const Item& item : folder.Contents())`.
    client::Contents Contents() const
    {
        ComPtr<IFolderContents> contents;
        Check([&] { return folder_->GetContents(contents.Out()); });
        return client::Contents(contents);
    }

    /// With `recursive` its missing ancestors, too, and then it may be there already.
    void Create(bool recursive = false)
    {
        Check([&] { return folder_->Create(detail::Truth(recursive)); });
    }

    /// The interface behind it.
    const ComPtr<IFolder>& GetFolder() const
    {
        return folder_;
    }

private:
    ComPtr<IFolder> folder_;
};

/// Copies the content of a file into one of any other file system: a download, an upload, or both.
/// `progress` is asked before the first piece and after each, and hears how far it is, of the size
/// that the source tells. The answer is whether the copy was made; one that is cancelled, or fails,
/// leaves what has arrived.
inline bool CopyContent(const File& source, File& target, const Progress& progress = nullptr)
{
    Amounts amounts;
    try
    {
        amounts.total = progress.WantsAmounts() ? std::optional(source.Size()) : std::nullopt;
    }
    catch (const Failure&)
    {
        // Git and Mercurial don't tell.
    }
    Reader reader = source.Open();
    Writer writer = target.Create();
    std::vector<char> piece(0x10000);
    for (;;)
    {
        if (progress && !progress(amounts))
            return false;
        const std::size_t read = reader.Read(piece);
        if (read == 0)
            break;
        writer.Write(piece.data(), read);
        amounts.done += read;
    }
    writer.Close();
    return true;
}

inline File Item::AsFile() const
{
    return File(detail::Need<IFile>(item_));
}

inline Folder Item::AsFolder() const
{
    return Folder(detail::Need<IFolder>(item_));
}

} // namespace tarnwell::client
