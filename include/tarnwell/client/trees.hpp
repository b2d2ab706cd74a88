/// @file
/// What folders and files were in one revision.
#pragma once

#include <tarnwell/client/sinks.hpp>
#include <tarnwell/client/streams.hpp>
#include <tarnwell/trees.h>

#include <functional>
#include <string>
#include <vector>

namespace tarnwell::client
{

/// An item of a tree.
struct TreeEntry
{
    /// From the top of the tree on, with "/" in between; empty for the top.
    std::string name;
    /// The system's own name for the content, equal for equal contents.
    std::string contentId;
    /// File, folder, link, or another repository.
    TreeItemKind kind = TreeFile;
    /// Whether a file is a program.
    bool executable = false;
    /// Whether work trees have keywords filled in, where that is known.
    bool keywords = false;
    /// Whether lines may end otherwise in work trees, where that is known.
    bool lineEnds = false;
    /// In bytes, of files and links.
    std::uint64_t size = 0;
    /// When the tree's revision was recorded.
    std::uint64_t modifiedTime = 0;
};

/// Takes the next item; false for "enough".
using TakeItem = std::function<bool(const TreeEntry& entry)>;

/// What there was in one revision. One thread at a time uses it and its copies; a client process
/// waits for its questions until the last copy has gone.
class Tree
{
public:
    /// Takes a reference of its own.
    explicit Tree(const ComPtr<ITree>& tree) : tree_(tree) {}

    /// The revision's full name.
    std::string RevisionId() const
    {
        return detail::TextOf([&](BSTR* id) { return tree_->GetRevisionId(id); });
    }
    /// When it was recorded.
    std::uint64_t RevisionTime() const
    {
        return detail::NumberOf<std::uint64_t>(
            [&](std::uint64_t* time) { return tree_->GetRevisionTime(time); });
    }

    /// One item; the top without a name. Failure with `HistoryNoPath` if there is none.
    TreeEntry Find(const Text& name = "", const Progress& progress = nullptr) const
    {
        TreeEntry found;
        const auto sink = Sink(
            [&](const TreeEntry& entry) {
                found = entry;
                return true;
            },
            progress);
        Check([&] { return tree_->Find(name.Get(), sink.Get()); });
        return found;
    }

    /// A folder's items, or with `recursive` all that is below it, each as soon as it is there.
    /// `progress` is asked at least ten times a second; if it says no, Failure with E_ABORT comes.
    void List(const Text& name, bool recursive, const TakeItem& take,
              const Progress& progress = nullptr) const
    {
        const auto sink = Sink(take, progress);
        Check([&] { return tree_->List(name.Get(), detail::Truth(recursive), sink.Get()); });
    }

    /// The same, when all are there: `for (const TreeEntry& entry : tree.List())`.
    std::vector<TreeEntry> List(const Text& name = "", bool recursive = false) const
    {
        std::vector<TreeEntry> all;
        List(name, recursive, [&](const TreeEntry& entry) {
            all.push_back(entry);
            return true;
        });
        return all;
    }

    /// The content of a file, or the path that a link leads to. All of it has come when this
    /// returns; the reader doesn't need the tree.
    Reader Open(const Text& name = "", const Progress& progress = nullptr) const
    {
        const auto asked =
            ComPtr<detail::ProgressObject>::Adopt(new detail::ProgressObject(progress));
        ComPtr<IFileStream> stream;
        Check([&] { return tree_->Open(name.Get(), asked.Get(), stream.Out()); });
        return Reader(stream);
    }
    /// All of it.
    std::string Read(const Text& name = "") const
    {
        return Open(name).ReadAll();
    }

    /// The content id that a file of a work tree would be recorded with as it lies there: equal to
    /// an item's where the system calls the file unchanged. Empty where only the bytes tell.
    std::string RecordedId(const Text& path, const Progress& progress = nullptr) const
    {
        const auto files = tree_.As<ITreeWorkFiles>();
        if (!files)
            return {};
        const auto asked =
            ComPtr<detail::ProgressObject>::Adopt(new detail::ProgressObject(progress));
        return detail::TextOf(
            [&](BSTR* id) { return files->GetRecordedId(path.Get(), asked.Get(), id); });
    }

    /// The interface behind it.
    const ComPtr<ITree>& Get() const
    {
        return tree_;
    }

private:
    static ComPtr<ITreeSink> Sink(const TakeItem& take, const Progress& progress)
    {
        return detail::MakeSink<ITreeSink, TreeItem>(
            [take](const TreeItem& item) { return take(EntryOf(item)); }, progress);
    }

    static TreeEntry EntryOf(const TreeItem& item)
    {
        return {detail::Utf8Of(item.name),
                detail::Utf8Of(item.contentId),
                static_cast<TreeItemKind>(item.kind),
                (item.flags & TreeItemExecutable) != 0,
                (item.flags & TreeItemKeywords) != 0,
                (item.flags & TreeItemLineEnds) != 0,
                item.size,
                item.modifiedTime};
    }

    ComPtr<ITree> tree_;
};

} // namespace tarnwell::client
