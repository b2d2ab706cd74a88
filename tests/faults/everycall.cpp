// Every platform call of what only local files do, or do in their own way, fails in turn. Each time
// the operation fails, with a text where that is promised, or the failure is one that it is meant
// to hide; and nothing is leaked and nothing is lost.
#include "faults/failinturn.h"

#include "local/filesystem.h"
#include "support/historysink.h"
#include "support/snapshotserver.h"
#include "support/snapshotshare.h"
#include "support/treesink.h"

#include "support/fakeprogress.h"
#include "support/posix/trash.h"

#include <tarnwell/items.h>

#include <functional>
#include <memory>
#include <optional>
#include <set>

namespace tarnwell::test
{

namespace
{

constexpr bool on = true;
constexpr bool off = false;

struct Action
{
    const char* name;
    // Gets ready, without faults, and gives what is to be run with them.
    std::function<std::function<HRESULT()>(const Local&)> prepare;
    // Operations whose failures the action hides on purpose.
    std::set<std::string> hidden;
    bool leavesText = on;
    // Whether "a.txt" is what the action changes, so that its content may be another after it.
    bool changesFile = off;
};

void PrintTo(const Action& action, std::ostream* out)
{
    *out << action.name;
}

Action LookupOfFolder()
{
    return {"LookupOfFolder",
            [](const Local& local) {
                return [&local] {
                    ComPtr<IFolder> found;
                    const HRESULT status = local.system->GetFolder(Wide(local.Path(u"sub")),
                                                                   VARIANT_TRUE, found.Out());
                    EXPECT_EQ(status == S_OK, static_cast<bool>(found));
                    return status;
                };
            },
            {"CreateFileW", "SetFilePointer", "GetFileTime", "CloseHandle"}};
}

Action LookupOfMissing()
{
    return {"LookupOfMissing",
            [](const Local& local) {
                return [&local] {
                    ComPtr<IFile> file;
                    return local.system->GetFile(Wide(local.Path(u"new")), VARIANT_FALSE,
                                                 file.Out());
                };
            },
            {"GetFileAttributesW", "CoFileTimeNow"}};
}

Action ArchiveReading()
{
    return {"ArchiveReading",
            [](const Local& local) {
                return [archive = local.Open().As<ILib7zInStream>()] {
                    char buffer[16];
                    std::uint32_t processed = 77;
                    const HRESULT status = archive->Read(buffer, sizeof buffer, &processed);
                    EXPECT_EQ(processed, FAILED(status) ? 0 : content.size());
                    return status;
                };
            },
            {}};
}

Action Seeking()
{
    return {"Seeking",
            [](const Local& local) {
                return [archive = local.Open().As<ILib7zInStream>()] {
                    return archive->Seek(0, FILE_BEGIN, nullptr);
                };
            },
            {},
            off};
}

Action Writing()
{
    return {"Writing",
            [](const Local& local) {
                return [file = local.File()] {
                    ComPtr<IFileStream> stream;
                    HRESULT status = file->Open(GENERIC_WRITE, CREATE_ALWAYS, stream.Out());
                    if (FAILED(status))
                        return status;
                    ULONG written = 0;
                    status = stream.As<ISequentialStream>()->Write("new", 3, &written);
                    return status;
                };
            },
            // The end is set once more for data streams only; nobody sees the last Release fail.
            {"SetEndOfFile", "CloseHandle"},
            on,
            on};
}

Action DeletionOfFile()
{
    return {"DeletionOfFile",
            [](const Local& local) {
                return [item = local.Item()] {
                    return item->Delete(VARIANT_TRUE, VARIANT_FALSE);
                };
            },
            {},
            on,
            on};
}

Action DeletionByShell()
{
    return {"DeletionByShell",
            [](const Local& local) {
                return [item = local.Folder().As<IFileSystemItem>()] {
                    return item->Delete(VARIANT_TRUE, VARIANT_TRUE);
                };
            },
            {}};
}

Action FolderCreation()
{
    return {"FolderCreation",
            [](const Local& local) {
                return [made = local.Folder(u"new")] {
                    return made->Create(VARIANT_FALSE);
                };
            },
            {}};
}

Action FolderPathCreation()
{
    return {"FolderPathCreation",
            [](const Local& local) {
                return [made = local.Folder(u"sub/c/d")] {
                    return made->Create(VARIANT_TRUE);
                };
            },
            // A level whose attributes can't be had isn't known to be a file.
            {"GetFileAttributesW"}};
}

Action AttributeChange()
{
    return {"AttributeChange",
            [](const Local& local) {
                return [item = local.Item()] {
                    const HRESULT status = item->SetAttributes(FILE_ATTRIBUTE_READONLY);
                    std::uint32_t attributes = 0;
                    EXPECT_EQ(item->GetAttributes(&attributes), S_OK);
                    EXPECT_EQ(attributes == FILE_ATTRIBUTE_READONLY, status == S_OK);
                    return status;
                };
            },
            {}};
}

Action TimeChange()
{
    return {"TimeChange",
            [](const Local& local) {
                return [item = local.File().As<IFileSystemItemExt>()] {
                    return item->SetModifiedTime(126256395061234500);
                };
            },
            {"CloseHandle"}};
}

Action Copying()
{
    return {"Copying",
            [](const Local& local) {
                return [&local, progress = std::make_shared<FakeProgress>()] {
                    const HRESULT status = local.system->CopyItem(
                        Wide(local.Path(u"a.txt")), Wide(local.Path(u"copy")), progress.get());
                    EXPECT_EQ(local.Has(u"copy"), SUCCEEDED(status));
                    return status;
                };
            },
            // The plain copy comes to its help.
            {"FindExtendedCopy"}};
}

Action TempFileCreation()
{
    return {"TempFileCreation",
            [](const Local& local) {
                return [&local] {
                    Bstr made;
                    const HRESULT status =
                        local.system->CreateTempFile(Wide(local.Path(u"a.txt")), made.Out());
                    EXPECT_EQ(SUCCEEDED(status), static_cast<bool>(made));
                    return status;
                };
            },
            {}};
}

Action DeletionOfList()
{
    return {"DeletionOfList",
            [](const Local& local) {
                return [&local, trash = std::make_shared<Trash>()] {
                    FakeItemList list({local.Path(u"a.txt"), local.Path(u"sub")});
                    return local.system->DeleteItems(&list, VARIANT_TRUE, VARIANT_TRUE);
                };
            },
            // The list's texts are the test's own.
            {"SysAllocStringLen"},
            on,
            on};
}

// A volume whose one snapshot has the file "a.txt", with its file server.
struct Volume
{
    Volume()
    {
        server.Hold({u"@GMT-2024.05.01-10.30.00"});
        share.Put(u"@GMT-2024.05.01-10.30.00\\a.txt", "old");
    }

    SnapshotShare share;
    SnapshotServer server;
};

// Everything on the way to the snapshots may fail unseen.
const std::set<std::string> hiddenBySnapshots = {"CreateEventW",         "CreateFileW",
                                                 "CloseHandle",          "GetFileTime",
                                                 "SystemTimeToFileTime", "FindUserName"};

Action QuestionForRevisions()
{
    return {"QuestionForRevisions",
            [](const Local& local) {
                return [revisions = local.system.As<IFileSystemRevisions>(),
                        volume = std::make_shared<Volume>()] {
                    VARIANT_BOOL has = VARIANT_FALSE;
                    return revisions->HasRevisions(u"C:\\a.txt", 0, &has);
                };
            },
            hiddenBySnapshots, off};
}

Action ListOfRevisions()
{
    return {"ListOfRevisions",
            [](const Local& local) {
                return [revisions = local.system.As<IFileSystemRevisions>(),
                        volume = std::make_shared<Volume>()] {
                    ComPtr<IRevisions> list;
                    const HRESULT status = revisions->GetRevisions(u"C:\\a.txt", 0, list.Out());
                    EXPECT_EQ(status == S_OK, static_cast<bool>(list));
                    return status;
                };
            },
            // The last two are on the way to the name of the live file's record.
            [] {
                std::set<std::string> hidden = hiddenBySnapshots;
                hidden.insert({"LoadModuleText", "FillInserts"});
                return hidden;
            }()};
}

// In full, so that nothing is hidden but what tells when the snapshot was taken.
Action HistoryOfSnapshots()
{
    return {"HistoryOfSnapshots",
            [](const Local& local) {
                return [histories = local.system.As<IFileSystemHistory>(),
                        volume = std::make_shared<Volume>()] {
                    HistorySink sink;
                    const HRESULT status =
                        histories->ReadHistory(u"C:\\a.txt", nullptr, nullptr, &sink);
                    EXPECT_EQ(sink.entries.size(), status == S_OK ? 1U : 0U);
                    return status;
                };
            },
            {"CloseHandle", "SystemTimeToFileTime"}};
}

Action TreeOfASnapshot()
{
    return {"TreeOfASnapshot",
            [](const Local& local) {
                const auto volume = std::make_shared<Volume>();
                volume->share.Put(u"@GMT-2024.05.01-10.30.00\\tree/sub/b.txt", "b");
                return [trees = local.system.As<IFileSystemTrees>(), volume] {
                    ComPtr<ITree> tree;
                    HRESULT status = trees->OpenTree(u"C:\\tree", nullptr, nullptr, tree.Out());
                    TreeSink sink;
                    if (SUCCEEDED(status))
                        status = tree->List(nullptr, VARIANT_TRUE, &sink);
                    ComPtr<IFileStream> stream;
                    if (SUCCEEDED(status))
                        status = tree->Open(u"sub/b.txt", nullptr, stream.Out());
                    EXPECT_EQ(status == S_OK, static_cast<bool>(stream));
                    EXPECT_TRUE(status != S_OK || sink.entries.size() == 2);
                    return status;
                };
            },
            {"CloseHandle", "FindClose", "SystemTimeToFileTime"}};
}

class EveryLocalCall : public testing::TestWithParam<Action>, protected FailingAction
{
protected:
    void Renew() override
    {
        local_.emplace();
    }
    std::function<HRESULT()> Prepare() override
    {
        return GetParam().prepare(*local_);
    }
    void ExpectWhole(const Result& result) override
    {
        EXPECT_EQ(result.status, S_OK);
    }
    void Expect(const std::string& operation, const Result& result) override
    {
        const Action& action = GetParam();
        if (action.hidden.contains(operation))
        {
            EXPECT_EQ(result.status, S_OK);
        }
        else
        {
            EXPECT_LT(result.status, 0);
            // A result that can't be allocated is short of memory and says no more.
            EXPECT_EQ(result.text != u"(none)",
                      action.leavesText && operation != "SysAllocStringLen");
        }
        if (!action.changesFile)
        {
            EXPECT_EQ(local_->Content(), content);
        }
        if (FAILED(result.status))
        {
            EXPECT_TRUE(local_->Has(u"a.txt"));
            EXPECT_TRUE(local_->Has(u"sub/b.txt"));
        }
    }

private:
    std::optional<Local> local_;
};

TEST_P(EveryLocalCall, FailsInTurn)
{
    FailInTurn(*this);
}

INSTANTIATE_TEST_SUITE_P(
    Local, EveryLocalCall,
    testing::Values(LookupOfFolder(), LookupOfMissing(), ArchiveReading(), Seeking(), Writing(),
                    DeletionOfFile(), DeletionByShell(), FolderCreation(), FolderPathCreation(),
                    AttributeChange(), TimeChange(), Copying(), TempFileCreation(),
                    DeletionOfList(), QuestionForRevisions(), ListOfRevisions(),
                    HistoryOfSnapshots(), TreeOfASnapshot()),
    [](const testing::TestParamInfo<Action>& info) { return std::string(info.param.name); });

} // namespace

} // namespace tarnwell::test
