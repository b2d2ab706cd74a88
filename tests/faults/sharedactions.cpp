#include "faults/sharedactions.h"

#include "support/fakeprogress.h"
#include "support/historysink.h"
#include "support/treesink.h"

namespace tarnwell::test
{
namespace
{

std::function<HRESULT()> PrepareForCreation(const BackendHere& row, Seen&)
{
    return [factory = row.Factory()] {
        ComPtr<IFileSystem> made;
        const HRESULT status = factory->CreateInstance(nullptr, IID_IFileSystem, made.OutVoid());
        EXPECT_EQ(status == S_OK, static_cast<bool>(made));
        return status;
    };
}

std::function<HRESULT()> PrepareForTexts(const BackendHere& row, Seen& seen)
{
    return [item = row.File().As<IFileSystemItem>(), system = row.system, &seen] {
        Bstr text;
        for (const auto get : {&IFileSystemItem::GetName, &IFileSystemItem::GetPath})
        {
            const HRESULT status = (item.Get()->*get)(text.Out());
            EXPECT_EQ(status == S_OK, static_cast<bool>(text));
            if (FAILED(status))
                return status;
            seen.Add(text);
        }
        return system->CombinePath(u"a", u"b", text.Out());
    };
}

// To its end, in one piece.
HRESULT ReadOnce(const ComPtr<IFileStream>& stream, Seen& seen)
{
    char buffer[32];
    ULONG count = 77;
    const HRESULT status = stream.As<::ISequentialStream>()->Read(buffer, sizeof buffer, &count);
    // A call that fails by order leaves the count as it was.
    if (SUCCEEDED(status))
        seen.text.assign(buffer, count);
    return status;
}

std::function<HRESULT()> PrepareForReading(const BackendHere& row, Seen& seen)
{
    return [file = row.File(), &row, &seen] {
        ComPtr<IFileStream> stream;
        HRESULT status = file->Open(GENERIC_READ, OPEN_EXISTING, stream.Out());
        EXPECT_EQ(status == S_OK, static_cast<bool>(stream));
        if (FAILED(status))
            return status;
        status = ReadOnce(stream, seen);
        // A client's output is read from a file that nobody knows of.
        seen.failsBare = FAILED(status) && !row.Row().client.empty();
        const HRESULT closing = stream->Close();
        return FAILED(status) ? status : closing;
    };
}

std::function<HRESULT()> PrepareForListing(const BackendHere& row, Seen& seen)
{
    return [folder = row.Folder(u"sub"), &seen] {
        ComPtr<IFolderContents> contents;
        HRESULT status = folder->GetContents(contents.Out());
        EXPECT_EQ(status == S_OK, static_cast<bool>(contents));
        ComPtr<IFileSystemItem> item;
        if (FAILED(status) || FAILED(status = contents->GetItem(0, item.Out())))
            return status;
        Bstr name;
        status = item->GetName(name.Out());
        seen.Add(name);
        seen.failsBare = FAILED(status);
        return status;
    };
}

std::function<HRESULT()> PrepareForFacts(const BackendHere& row, Seen& seen)
{
    return [&row, &seen] {
        ComPtr<IFile> file;
        std::uint32_t attributes = 0;
        HRESULT status = row.system->GetFile(Wide(row.Address(u"a.txt")), VARIANT_TRUE, file.Out());
        EXPECT_EQ(status == S_OK, static_cast<bool>(file));
        if (SUCCEEDED(status))
            status = file.As<IFileSystemItem>()->GetAttributes(&attributes);
        seen.text = std::to_string(attributes);
        return status;
    };
}

std::function<HRESULT()> PrepareForRevisions(const BackendHere& row, Seen& seen)
{
    return [system = row.system.As<IFileSystemRevisions>(), &row, &seen] {
        ComPtr<IRevisions> list;
        const HRESULT status = system->GetRevisions(Wide(row.Address(u"a.txt")), 0, list.Out());
        EXPECT_EQ(status == S_OK, static_cast<bool>(list));
        std::uint32_t count = 0;
        if (list)
            list->GetCount(&count);
        seen.text = std::to_string(count);
        return status;
    };
}

std::function<HRESULT()> PrepareForHasRevisions(const BackendHere& row, Seen& seen)
{
    return [system = row.system.As<IFileSystemRevisions>(), &row, &seen] {
        VARIANT_BOOL has = 77;
        const HRESULT status = system->HasRevisions(Wide(row.Address(u"a.txt")), 0, &has);
        seen.text = has == VARIANT_FALSE ? "0" : "1";
        return status;
    };
}

std::function<HRESULT()> PrepareForWriting(const BackendHere& row, Seen& seen)
{
    const std::u16string name = row.NewName();
    return [file = row.File(name), name, &row, &seen] {
        ComPtr<IFileStream> stream;
        HRESULT status = file->Open(GENERIC_WRITE, CREATE_ALWAYS, stream.Out());
        EXPECT_EQ(status == S_OK, static_cast<bool>(stream));
        if (FAILED(status))
            return status;
        ULONG written = 0;
        status = stream.As<::ISequentialStream>()->Write("bytes", 5, &written);
        EXPECT_EQ(written, SUCCEEDED(status) ? 5U : 0U);
        const HRESULT closing = stream->Close();
        if (SUCCEEDED(status) && SUCCEEDED(closing))
            seen.text = row.Data().Held(name);
        return FAILED(status) ? status : closing;
    };
}

std::function<HRESULT()> PrepareForFolderCreation(const BackendHere& row, Seen& seen)
{
    const std::u16string name = row.NewName() + u"/inner";
    return [folder = row.Folder(name), name, &row, &seen] {
        const HRESULT status = folder->Create(VARIANT_TRUE);
        seen.text = row.Data().HasFolder(name) ? "made" : "missing";
        return status;
    };
}

std::function<HRESULT()> PrepareForTreeDeletion(const BackendHere& row, Seen& seen)
{
    const std::u16string name = row.NewName();
    for (const char16_t* const folder : {u"", u"/inner", u"/empty"})
        row.Data().MakeFolder(name + folder);
    for (const char16_t* const file : {u"/a", u"/inner/b"})
        row.Data().Put(name + file, "x");
    return [item = row.Folder(name).As<IFileSystemItem>(), name, &row, &seen] {
        const HRESULT status = item->Delete(VARIANT_TRUE, VARIANT_TRUE);
        seen.text = row.Data().Has(name) ? "there" : "gone";
        return status;
    };
}

std::function<HRESULT()> PrepareForCopying(const BackendHere& row, Seen& seen)
{
    const std::u16string name = row.NewName();
    return [target = row.Address(name), name, &row, &seen] {
        FakeProgress progress;
        const HRESULT status =
            row.system->CopyItem(Wide(row.Address(u"a.txt")), Wide(target), &progress);
        if (SUCCEEDED(status))
            seen.text = row.Data().Held(name);
        return status;
    };
}

// In full, so that nothing is hidden.
std::function<HRESULT()> PrepareForHistory(const BackendHere& row, Seen& seen)
{
    return [system = row.system.As<IFileSystemHistory>(), &row, &seen] {
        HistorySink sink;
        const HistoryOptions options = Wanted(HistoryFollow);
        const HRESULT status =
            system->ReadHistory(Wide(row.Address(u"a.txt")), nullptr, &options, &sink);
        for (const HistoryEntry& entry : sink.entries)
            seen.text += EncodeName(entry.id + u" " + entry.path + u"\n").value_or("?");
        return status;
    };
}

// All that a tree is asked for, one thing after the other.
std::function<HRESULT()> PrepareForTree(const BackendHere& row, Seen& seen)
{
    return [system = row.system.As<IFileSystemTrees>(), &row, &seen] {
        ComPtr<ITree> tree;
        HRESULT status = system->OpenTree(Wide(row.Address(u"")), nullptr, nullptr, tree.Out());
        EXPECT_EQ(status == S_OK, static_cast<bool>(tree));
        TreeSink sink;
        if (SUCCEEDED(status))
            status = tree->List(u"", VARIANT_TRUE, &sink);
        if (SUCCEEDED(status))
            status = tree->Find(u"a.txt", &sink);
        ComPtr<IFileStream> stream;
        if (SUCCEEDED(status))
            status = tree->Open(u"a.txt", nullptr, stream.Out());
        if (FAILED(status))
            return status;
        for (const TreeEntry& entry : sink.entries)
            seen.text += EncodeName(entry.name + u"\n").value_or("?");
        char block[100];
        ULONG count = 0;
        status = stream.As<::ISequentialStream>()->Read(block, sizeof block, &count);
        seen.failsBare = FAILED(status);
        seen.text.append(block, SUCCEEDED(status) ? count : 0);
        return status;
    };
}

constexpr bool Always(const Backend&)
{
    return true;
}
constexpr bool WithFolders(const Backend& backend)
{
    return backend.folders;
}
constexpr bool WithHistories(const Backend& backend)
{
    return backend.strict.histories;
}
constexpr bool WithTrees(const Backend& backend)
{
    return backend.strict.trees;
}
constexpr bool WithHistory(const Backend& backend)
{
    return backend.history;
}

// What the local file system changes has tests of its own (everycall.cpp).
constexpr bool WithWritingOverConnections(const Backend& backend)
{
    return HoldsConnections(backend) && backend.writes;
}

constexpr SharedAction actions[] = {
    {"Creation", Always, PrepareForCreation, false},
    {"Texts", Always, PrepareForTexts, false},
    {"Reading", Always, PrepareForReading},
    {"Listing", WithFolders, PrepareForListing},
    {"Facts", WithFolders, PrepareForFacts},
    {"Revisions", WithHistory, PrepareForRevisions, true, true},
    {"HasRevisions", WithHistory, PrepareForHasRevisions, true, true},
    {"History", WithHistories, PrepareForHistory},
    {"Tree", WithTrees, PrepareForTree},
    {"Writing", WithWritingOverConnections, PrepareForWriting},
    {"FolderCreation", WithWritingOverConnections, PrepareForFolderCreation},
    {"TreeDeletion", WithWritingOverConnections, PrepareForTreeDeletion},
    {"Copying", WithWritingOverConnections, PrepareForCopying},
};

} // namespace

std::span<const SharedAction> SharedActions()
{
    return actions;
}

} // namespace tarnwell::test
