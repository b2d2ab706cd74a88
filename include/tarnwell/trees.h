/// @file
/// Trees: what a folder, or a file, was in one revision, with all that is below it.
///
/// A tree is held by the host. Where the system's client can stay, one process waits for its
/// questions, so that many small ones cost little, and ends with the tree's last reference. One
/// that dies in between is started again, once a question. Nothing is written to the disk but
/// contents, which go to files without a name or that go with their streams.
///
/// The rules of history.h hold here, too: every failure is one, with its `HistoryStatus` and a
/// text, and no setting changes anything. docs/history-and-trees.md says which file systems answer.
#pragma once

#include <tarnwell/constants.h>
#include <tarnwell/host.h>
#include <tarnwell/streams.h>

namespace tarnwell
{

/// An item of a tree, as it is given to `ITreeSink::Take`. The texts end with that call.
struct TreeItem
{
    /// From the top of the tree on, with "/" in between; empty for the top. Whatever else is in a
    /// name is a part of it, on Windows also a backslash or a colon, which no path of the disk
    /// could have: "a\b" and "a/b" are two items, each found and opened by its own name.
    const OLECHAR* name;
    /// The system's own name for the content: equal names are equal contents; empty where it has
    /// none, as in Subversion and on local disks. For a repository inside the revision of it.
    const OLECHAR* contentId;
    /// One of `TreeItemKind`.
    std::uint32_t kind;
    /// `TreeItemFlag` bits. Where the flags, or whether a file is a link, would be a question to a
    /// server for each item, `List` doesn't tell, and `Find` does: that is so on Subversion's
    /// servers.
    std::uint32_t flags;
    /// In bytes, of files and links; 0 for others.
    std::uint64_t size;
    /// When the tree's revision was recorded, as a `FILETIME` value.
    std::uint64_t modifiedTime;
};

/// What takes items; implemented by the host. It is used for the time of the call that it is given
/// to, on the thread of that call. `QueryContinue` is asked as that of `IHistorySink` is.
struct ITreeSink : ICopyProgress
{
    /// Takes the next item.
    /// @param item  The module's; it ends with this call.
    /// @return S_OK; S_FALSE for "enough", which makes the listing a success; a failure, which is
    ///         the status of the whole call.
    virtual HRESULT STDMETHODCALLTYPE Take(const TreeItem* item) = 0;

protected:
    ~ITreeSink() = default;
};

/// What there was in one revision. One thread at a time uses it. Names are those of `TreeItem`.
struct ITree : ::IUnknown
{
    /// The revision's full name.
    /// @param[out] id  The caller's to free.
    /// @return S_OK; E_POINTER; E_OUTOFMEMORY.
    virtual HRESULT STDMETHODCALLTYPE GetRevisionId(BSTR* id) = 0;

    /// When it was recorded.
    /// @param[out] fileTime  A `FILETIME` value.
    /// @return S_OK; E_POINTER.
    virtual HRESULT STDMETHODCALLTYPE GetRevisionTime(std::uint64_t* fileTime) = 0;

    /// Gives one item.
    /// @param name  Empty for the top.
    /// @param sink  Takes it.
    /// @return S_OK; as the last of `List`, but for `HistoryWrongKind`.
    virtual HRESULT STDMETHODCALLTYPE Find(const OLECHAR* name, ITreeSink* sink) = 0;

    /// Gives the items of a folder, in the system's order. A folder comes before what is in it.
    /// @param name       Empty for the top.
    /// @param recursive  With it all that is below the folder comes, to any depth, but for what is
    ///                   in repositories inside.
    /// @param sink       Takes them. What it was given before a failure is a part of an answer that
    ///                   there is none of.
    /// @return S_OK; with a text E_POINTER for a null `sink`; E_ABORT after an answer of
    ///         `QueryContinue`; `HistoryNoPath`; `HistoryWrongKind` for what is no folder;
    ///         `HistoryNoClient`, `HistoryIncomplete`, `HistoryServerSilent`, `HistoryBadSettings`,
    ///         `HistoryClientFailed`, `HistoryBadAnswer`, also where an item's name can't be one;
    ///         E_ACCESSDENIED; the status of a failed call of the platform; what `Take` returned,
    ///         bare.
    virtual HRESULT STDMETHODCALLTYPE List(const OLECHAR* name, VARIANT_BOOL recursive,
                                           ITreeSink* sink) = 0;

    /// The content of a file, or of a link the path that it leads to, byte for byte as it was
    /// recorded. All of it has come from the client when this returns, so that reading it fails
    /// only where the disk does.
    /// @param      name      Empty for the top, where that is a file.
    /// @param      progress  Asked whether to go on; null asks nobody. Its `ICopyAmounts`, where it
    ///                       answers that, hears how many bytes have come: at the beginning, with
    ///                       each piece and at the end. Not for local files, which are only opened.
    /// @param[out] stream    The caller's to release; null on failure. It doesn't need the tree.
    /// @return S_OK; as `List`, with `HistoryWrongKind` for what is no file and no link.
    virtual HRESULT STDMETHODCALLTYPE Open(const OLECHAR* name, ICopyProgress* progress,
                                           IFileStream** stream) = 0;

protected:
    ~ITree() = default;
};

/// Answered by trees: what the files of work trees would be recorded as. One thread at a time uses
/// it together with its tree.
struct ITreeWorkFiles : ::IUnknown
{
    /// The `TreeItem::contentId` that a file of a work tree would have if it was recorded as it
    /// lies there, with keywords, line ends and encodings turned as the settings and the attributes
    /// that are in force there say. So the file is unchanged, in the eyes of the system, if that is
    /// the item's. No program is run: where a filter has one, the filter counts as not being there.
    /// @param      path       A local path. Links on it are followed.
    /// @param      progress   Asked whether to go on; null asks nobody.
    /// @param[out] contentId  The caller's to free; null on failure. Empty where the file's bytes
    ///                        are all that there is to go by: it is in no work tree of the tree's
    ///                        repository, or in one that isn't known to be, as nobody may open the
    ///                        repository there; or the system isn't one that converts by settings
    ///                        and names contents.
    /// @return S_OK; with a text E_POINTER; E_ABORT after an answer of `QueryContinue`;
    ///         `HistoryNoClient`, `HistoryNoRepository`, `HistoryBadSettings`,
    ///         `HistoryClientFailed` also where there is no such file, or no file but a pipe, say;
    ///         `HistoryBadAnswer`; E_ACCESSDENIED; the status of a failed call of the platform.
    virtual HRESULT STDMETHODCALLTYPE GetRecordedId(const OLECHAR* path, ICopyProgress* progress,
                                                    BSTR* contentId) = 0;

protected:
    ~ITreeWorkFiles() = default;
};

/// Answered by file systems that show what there was in a revision.
struct IFileSystemTrees : ::IUnknown
{
    /// A tree.
    /// @param      path      As for `IFileSystemHistory::ReadHistory`. It becomes the top, and is a
    ///                       folder, a file, or with the path of the repository all of it.
    /// @param      revision  Likewise.
    /// @param      progress  Asked whether to go on; null asks nobody.
    /// @param[out] tree      The caller's to release; null on failure.
    /// @return S_OK; with a text E_POINTER, E_INVALIDARG for an address that can't be,
    ///         `HistoryNoRepository`, `HistoryNoRevision`, and as `ITree::List`.
    virtual HRESULT STDMETHODCALLTYPE OpenTree(const OLECHAR* path, const OLECHAR* revision,
                                               ICopyProgress* progress, ITree** tree) = 0;

protected:
    ~IFileSystemTrees() = default;
};

} // namespace tarnwell

TARNWELL_INTERFACE_ID(IFileSystemTrees, 674B8105)
TARNWELL_INTERFACE_ID(ITree, 674B8128)
TARNWELL_INTERFACE_ID(ITreeSink, 674B8146)
TARNWELL_INTERFACE_ID(ITreeWorkFiles, 674B8129)
