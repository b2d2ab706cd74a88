// Every platform call of what all file systems do fails in turn, for each row of the backends. What
// comes out is whole or there is a failure, which has its text.
#include "faults/failinturn.h"

#include "backends/backend.h"
#include "module/lifecycle.h"
#include "support/fakeprogress.h"
#include "support/posix/standinclient.h"

#include <tarnwell/items.h>
#include <tarnwell/text.h>

#include <optional>
#include <set>

namespace tarnwell::test
{
namespace
{

using Operations = std::set<std::string>;

// Does what the real client does, and where it did it before, says again what that said, which is
// a hundred times faster.
const std::string replayingClient = R"(set -f
name() { IFS=/; set -- $*; IFS=_; said=${0%/*}/said-"$*"; unset IFS; }
name "$@"
if [ ! -f "$said.code" ]; then
    "$REAL" "$@" >"$said" 2>"$said.err"
    echo $? >"$said.code"
fi
cat "$said"
[ ! -s "$said.err" ] || cat "$said.err" >&2
read code <"$said.code"
exit $code)";

// One row's file system on data of its own: the file "a.txt" and, where there are folders, "sub"
// with "b.txt".
class BackendHere
{
public:
    explicit BackendHere(const Backend& backend) : backend_(backend), data_(backend.makeData())
    {
        data_->Put(u"a.txt", content);
        if (backend.folders)
        {
            data_->MakeFolder(u"sub");
            data_->Put(u"sub/b.txt", "b");
        }
        if (!backend.client.empty())
            client_.emplace(std::string(backend.client), replayingClient);
        host_->credentials = data_->Credentials();
        system = Make<IFileSystem>();
        system.As<IFileSystemInit>()->SetHost(host_->Unknown());
    }

    const Backend& Row() const
    {
        return backend_;
    }
    std::u16string Address(std::u16string_view name) const
    {
        return data_->Address(name);
    }
    BackendData& Data() const
    {
        return *data_;
    }
    ComPtr<IFile> File(std::u16string_view name = u"a.txt") const
    {
        ComPtr<IFile> file;
        EXPECT_EQ(system->GetFile(Wide(Address(name)), VARIANT_FALSE, file.Out()), S_OK);
        return file;
    }
    ComPtr<IFolder> Folder(std::u16string_view name) const
    {
        ComPtr<IFolder> folder;
        EXPECT_EQ(system->GetFolder(Wide(Address(name)), VARIANT_FALSE, folder.Out()), S_OK);
        return folder;
    }
    // A name that nothing has had yet.
    std::u16string NewName() const
    {
        return u"new" + DecodeName(std::to_string(++names_));
    }
    ComPtr<::IClassFactory> Factory() const
    {
        ComPtr<::IClassFactory> factory;
        StartModule();
        EXPECT_EQ(
            DllGetClassObject(backend_.systemClass, IidOf<::IClassFactory>(), factory.OutVoid()),
            S_OK);
        StopModule();
        return factory;
    }
    template <class I> ComPtr<I> Make() const
    {
        ComPtr<I> made;
        EXPECT_EQ(Factory()->CreateInstance(nullptr, IidOf<I>(), made.OutVoid()), S_OK);
        return made;
    }

private:
    const Backend& backend_;
    const std::unique_ptr<BackendData> data_;
    std::optional<StandInClient> client_;
    const ComPtr<FakeHost> host_ = FakeHost::Make();
    mutable int names_ = 0;

public:
    ComPtr<IFileSystem> system;
};

// What a run gave, as text, in the order in which it was asked for.
struct Seen
{
    std::string text;
    bool failsBare = false; // by design

    void Add(const Bstr& value)
    {
        text += EncodeName(value.View()).value_or("?") + "\n";
    }
};

struct SharedAction
{
    const char* name;
    bool (*applies)(const Backend&);
    std::function<HRESULT()> (*prepare)(const BackendHere&, Seen&);
    // What never fails, or not with a text, whatever the row.
    bool leavesText = true;
    bool hidesAll = false;
};

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

constexpr bool Always(const Backend&)
{
    return true;
}
constexpr bool WithFolders(const Backend& backend)
{
    return backend.folders;
}
constexpr bool WithHistory(const Backend& backend)
{
    return backend.history;
}

// Over connections that the module holds itself. What the local file system changes has tests of
// its own (everycall.cpp).
constexpr bool WithConnections(const Backend& backend)
{
    return backend.family == Family::Addressed && backend.client.empty();
}
constexpr bool WithWritingOverConnections(const Backend& backend)
{
    return WithConnections(backend) && backend.writes;
}

constexpr SharedAction sharedActions[] = {
    {"Creation", Always, PrepareForCreation, false},
    {"Texts", Always, PrepareForTexts, false},
    {"Reading", Always, PrepareForReading},
    {"Listing", WithFolders, PrepareForListing},
    {"Facts", WithFolders, PrepareForFacts},
    {"Revisions", WithHistory, PrepareForRevisions, true, true},
    {"HasRevisions", WithHistory, PrepareForHasRevisions, true, true},
    {"Writing", WithWritingOverConnections, PrepareForWriting},
    {"FolderCreation", WithWritingOverConnections, PrepareForFolderCreation},
    {"TreeDeletion", WithWritingOverConnections, PrepareForTreeDeletion},
    {"Copying", WithWritingOverConnections, PrepareForCopying},
};

// Operations without which everything works, or is in another place, or is told as unknown.
Operations HiddenIn(const Backend& backend, std::string_view action)
{
    if (backend.family == Family::Local)
    {
        return action == "Facts"
                   ? Operations{"CreateFileW", "SetFilePointer", "GetFileTime", "CloseHandle"}
                   : Operations{"FindClose"};
    }
    // Without settings there are the usual ones, an unknown time is old, and a listing is read
    // whole before its first entry comes.
    if (WithConnections(backend))
    {
        return {"CoFileTimeNow", "InternetCloseHandle", "InternetFindNextFileW",
                "LocalFileTimeToFileTime", "RegOpenKeyExW"};
    }
    return {"CloseHandle",         "GetExitCodeProcess",   "_beginthreadex",
            "WaitForSingleObject", "SystemTimeToFileTime", "GetEnvironmentStringsW",
            "FindClient"};
}

// Those that are hidden at some of their calls: what a client complains of ends where its pipe
// can't be read, and a listing ends at the entry that isn't given, as designed. Where nothing
// printed means that there is nothing, what a client prints ends likewise.
Operations AmbiguousIn(const Backend& backend)
{
    if (WithConnections(backend))
        return {"InternetFindNextFileW"};
    if (backend.client.empty())
        return {};
    return backend.missingFoldersFail ? Operations{"ReadFile"}
                                      : Operations{"ReadFile", "_beginthreadex"};
}

struct Case
{
    const Backend* backend;
    const SharedAction* action;
};

void PrintTo(const Case& each, std::ostream* out)
{
    *out << each.backend->name << each.action->name;
}

class EveryCall : public testing::TestWithParam<Case>, protected FailingAction
{
protected:
    std::function<HRESULT()> Prepare() override
    {
        seen_ = {};
        return Act().prepare(row_, seen_);
    }
    void ExpectWhole(const Result& result) override
    {
        EXPECT_EQ(result.status, S_OK);
        whole_ = seen_.text;
    }
    void Expect(const std::string& operation, const Result& result) override
    {
        if (SUCCEEDED(result.status))
        {
            EXPECT_EQ(result.text, u"(none)");
            EXPECT_TRUE(seen_.text == whole_ || (Act().hidesAll && seen_.text == "0") ||
                        IsLess(operation))
                << seen_.text;
        }
        else
        {
            EXPECT_EQ(result.text != u"(none)", Act().leavesText && !seen_.failsBare);
        }
        (SUCCEEDED(result.status) ? succeeded_ : failed_).insert(operation);
    }

    const SharedAction& Act() const
    {
        return *GetParam().action;
    }
    // Of a list of which one part is printed by another run: that part is missing.
    bool IsLess(const std::string& operation) const
    {
        const Backend& backend = row_.Row();
        return Act().hidesAll && !backend.missingFoldersFail && seen_.text < whole_ &&
               AmbiguousIn(backend).contains(operation);
    }

    const BackendHere row_{*GetParam().backend};
    Seen seen_;
    std::string whole_;
    Operations succeeded_;
    Operations failed_;
};

TEST_P(EveryCall, FailsInTurn)
{
    FailInTurn(*this);
    const Operations hidden = HiddenIn(*GetParam().backend, Act().name);
    for (const std::string& operation : AmbiguousIn(*GetParam().backend))
    {
        succeeded_.erase(operation);
        failed_.erase(operation);
    }
    for (const std::string& operation : succeeded_)
        EXPECT_TRUE(Act().hidesAll || hidden.contains(operation)) << operation << " was not needed";
    for (const std::string& operation : failed_)
        EXPECT_FALSE(hidden.contains(operation)) << operation << " was needed";
}

std::vector<Case> Cases()
{
    std::vector<Case> cases;
    for (const Backend* const backend : Backends())
    {
        for (const SharedAction& action : sharedActions)
        {
            if (action.applies(*backend))
                cases.push_back({backend, &action});
        }
    }
    return cases;
}

INSTANTIATE_TEST_SUITE_P(Backends, EveryCall, testing::ValuesIn(Cases()),
                         testing::PrintToStringParamName());

} // namespace
} // namespace tarnwell::test
