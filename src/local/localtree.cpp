#include "local/localtree.h"

#include "frame/handle.h"
#include "frame/messages.h"
#include "frame/paths.h"
#include "frame/status.h"
#include "local/filestream.h"
#include "local/findrecord.h"
#include "local/snapshotitem.h"

#include <algorithm>
#include <vector>

namespace tarnwell
{

namespace
{

struct Entry
{
    std::u16string name;
    DWORD attributes = 0;
    std::uint64_t size = 0; // in bytes

    TreeItemKind Kind() const
    {
        // Nothing says where a link leads, and nobody goes there.
        if ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0)
            return TreeLink;
        return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? TreeFolder : TreeFile;
    }
};

Entry EntryOf(const WIN32_FIND_DATAW& record)
{
    return {std::u16string(NameOf(record)), record.dwFileAttributes,
            std::uint64_t{record.nFileSizeHigh} << 32 | record.nFileSizeLow};
}

std::u16string Joined(std::u16string folder, std::u16string_view name)
{
    AppendSeparator(folder);
    return folder.append(name);
}

// Calls `take`, until it wants no more, with the items of a folder. What the server calls an item
// is one part of a path, or it is none. False if it wanted no more.
template <class F>
bool EachEntry(const std::u16string& folder, const std::u16string& address, Patience& patience,
               F take)
{
    const auto throwUnlessEnd = [&] {
        const DWORD error = GetLastError();
        if (error != ERROR_FILE_NOT_FOUND && error != ERROR_NO_MORE_FILES)
            ThrowSnapshotError(error, folder);
    };
    const std::u16string pattern = Joined(folder, u"*");
    WIN32_FIND_DATAW record{};
    const FindHandle find(FindFirstFileW(Wide(pattern), &record));
    if (!find)
    {
        throwUnlessEnd();
        return true;
    }
    do
    {
        patience.Ask();
        const std::u16string_view name = NameOf(record);
        if (name == u"." || name == u"..")
            continue;
        if (name.empty() ||
            std::any_of(name.begin(), name.end(), [](char16_t unit) { return IsSeparator(unit); }))
            ThrowSnapshotFailure(HistoryBadAnswer, MessageId::ClientAnswerInvalid, {address});
        if (!take(EntryOf(record)))
            return false;
    } while (FindNextFileW(find.Get(), &record));
    throwUnlessEnd();
    return true;
}

TreeRecord RecordOf(const Entry& entry, const std::u16string& name)
{
    TreeRecord record;
    record.name = name;
    record.kind = entry.Kind();
    record.size = record.kind == TreeFile ? entry.size : 0;
    return record;
}

class LocalTree final : public TreeReader
{
public:
    LocalTree(const SnapshotEntry& snapshot, std::u16string address)
        : id_(snapshot.token), time_(snapshot.time), address_(std::move(address)),
          topPath_(snapshot.path)
    {
    }

    // The path's own last part says what it is, as links aren't followed.
    void Start()
    {
        top_.attributes = GetFileAttributesW(Wide(topPath_));
        if (top_.attributes == INVALID_FILE_ATTRIBUTES)
            ThrowSnapshotError(GetLastError(), topPath_);
        if (top_.Kind() == TreeFile)
            top_.size = SizeOf(topPath_);
    }

    const std::u16string& RevisionId() const override
    {
        return id_;
    }
    std::uint64_t RevisionTime() const override
    {
        return time_;
    }

    TreeRecord Find(const std::u16string& name, Patience& patience) override
    {
        return RecordOf(FindBelow(name, patience).entry, name);
    }

    void List(const std::u16string& name, bool recursive, const TreeTaker& take,
              Patience& patience) override
    {
        const Found folder = FindBelow(name, patience);
        if (folder.entry.Kind() != TreeFolder)
            ThrowWrongKind(MessageId::TreeItemNotFolder, name);
        // Folders whose items are still to come, with their names; the next one is the last.
        std::vector<std::pair<std::u16string, std::u16string>> left = {{folder.path, name}};
        while (!left.empty())
        {
            const std::u16string path = std::move(left.back().first);
            const std::u16string around = std::move(left.back().second);
            left.pop_back();
            const auto takeOne = [&](const Entry& entry) {
                const std::u16string below =
                    around.empty() ? entry.name : around + u"/" + entry.name;
                if (!take(RecordOf(entry, below)))
                    return false;
                if (recursive && entry.Kind() == TreeFolder)
                    left.emplace_back(Joined(path, entry.name), below);
                return true;
            };
            if (!EachEntry(path, address_, patience, takeOne))
                return;
        }
    }

    ComPtr<IFileStream> Open(const std::u16string& name, Patience& patience) override
    {
        const Found file = FindBelow(name, patience);
        if (file.entry.Kind() != TreeFile)
            ThrowWrongKind(MessageId::TreeItemNotFile, name);
        OsHandle handle = OpenForReading(file.path);
        ComPtr<ComObject<CFileStream>> stream;
        const HRESULT status = MakeObject<CFileStream>(stream);
        if (FAILED(status))
        {
            throw ComException(status,
                               FormatMessageWithStatus(MessageId::SupportObjectFailed, status),
                               At(nullptr));
        }
        stream->Attach(std::move(handle));
        return stream.As<IFileStream>();
    }

private:
    struct Found
    {
        std::u16string path;
        Entry entry;
    };

    // Through folders only, each found by its exact name.
    Found FindBelow(const std::u16string& name, Patience& patience) const
    {
        patience.Ask();
        Found found{topPath_, top_};
        std::u16string_view rest = name;
        if (rest.ends_with(u'/'))
            ThrowNoPath(name);
        while (!rest.empty())
        {
            const std::u16string_view part = rest.substr(0, rest.find(u'/'));
            rest.remove_prefix(std::min(rest.size(), part.size() + 1));
            if (found.entry.Kind() != TreeFolder)
                ThrowNoPath(name);
            std::optional<Entry> entry;
            const auto takeOne = [&](Entry each) {
                if (each.name == part)
                    entry = std::move(each);
                return !entry;
            };
            if (EachEntry(found.path, address_, patience, takeOne))
                ThrowNoPath(name);
            found = {Joined(found.path, part), *entry};
        }
        return found;
    }

    static OsHandle OpenForReading(const std::u16string& path)
    {
        OsHandle file(CreateFileW(Wide(path), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                  nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
        if (!file)
            ThrowSnapshotError(GetLastError(), path);
        return file;
    }

    static std::uint64_t SizeOf(const std::u16string& path)
    {
        const OsHandle file = OpenForReading(path);
        LONG high = 0;
        const DWORD low = SetFilePointer(file.Get(), 0, &high, FILE_END);
        if (low == INVALID_SET_FILE_POINTER && GetLastError() != ERROR_SUCCESS)
            ThrowSnapshotError(GetLastError(), path);
        return std::uint64_t{static_cast<DWORD>(high)} << 32 | low;
    }

    [[noreturn]] void ThrowNoPath(const std::u16string& name) const
    {
        ThrowSnapshotFailure(HistoryNoPath, MessageId::TreePathNotFound, {name, id_});
    }
    [[noreturn]] void ThrowWrongKind(MessageId message, const std::u16string& name) const
    {
        ThrowSnapshotFailure(HistoryWrongKind, message, {name.empty() ? address_ : name});
    }

    const std::u16string id_;
    const std::uint64_t time_;
    const std::u16string address_;
    const std::u16string topPath_;
    Entry top_;
};

// The named one, or the newest that has the item.
const SnapshotEntry& SnapshotFor(const SnapshotItem& item, Patience& patience)
{
    for (const SnapshotEntry& entry : item.entries)
    {
        patience.Ask();
        if (FactsInSnapshot(entry))
            return entry;
        if (item.isNamed)
            break;
    }
    ThrowSnapshotFailure(HistoryNoPath, MessageId::HistoryPathNotFound, {item.address});
}

} // namespace

std::unique_ptr<TreeReader> OpenLocalTree(const std::u16string& path,
                                          const std::optional<std::u16string>& revision,
                                          Patience& patience)
{
    patience.Ask();
    const SnapshotItem item = SnapshotItemOf(path, revision);
    auto tree = std::make_unique<LocalTree>(SnapshotFor(item, patience), path);
    tree->Start();
    return tree;
}

} // namespace tarnwell
