// No memory for an object: nothing is made, and the host is told so. None for what was only to be
// found out: nothing is found.
#include "faults/local.h"

#include "frame/messages.h"
#include "git/gitobjects.h"
#include "local/copystreams.h"
#include "local/snapshots.h"
#include "module/lifecycle.h"
#include "perforce/p4objects.h"
#include "support/environmentvalue.h"
#include "support/fakeprogress.h"
#include "support/perforcedepot.h"
#include "support/snapshotserver.h"
#include "support/snapshotshare.h"

#include <tarnwell/classes.h>
#include <tarnwell/pointers.h>

#include <gtest/gtest.h>

#include <functional>
#include <new>
#include <utility>

namespace
{
// The next object isn't made.
thread_local bool refuse = false;
// No buffer is, until this is taken back.
thread_local bool refuseBuffers = false;
} // namespace

// What must not throw is made this way: objects, and a buffer of a size that somebody else tells.
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept
{
    if (refuseBuffers || std::exchange(refuse, false))
        return nullptr;
    try
    {
        return ::operator new[](size);
    }
    catch (...)
    {
        return nullptr;
    }
}

// All objects that a host gets are made this way.
void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    if (std::exchange(refuse, false))
        return nullptr;
    try
    {
        return ::operator new(size);
    }
    catch (...)
    {
        return nullptr;
    }
}

namespace tarnwell::test
{
namespace
{

std::u16string NoObject()
{
    return FormatMessageWithStatus(MessageId::SupportObjectFailed, E_OUTOFMEMORY);
}

TEST(NoMemory, MakesNoObject)
{
    ComPtr<::IClassFactory> factory;
    StartModule();
    ASSERT_EQ(DllGetClassObject(CLSID_Win32FileSystem, IidOf<::IClassFactory>(), factory.OutVoid()),
              S_OK);
    void* out = &out;
    refuse = true;
    const HRESULT status = factory->CreateInstance(nullptr, IidOf<::IUnknown>(), &out);
    EXPECT_EQ(status, E_OUTOFMEMORY);
    EXPECT_EQ(out, nullptr);
    StopModule(Ending::OfProcess);
}

TEST(NoMemory, MakesNoClassObject)
{
    StartModule();
    void* out = &out;
    refuse = true;
    const HRESULT status = DllGetClassObject(CLSID_P4FileSystem, IidOf<::IUnknown>(), &out);
    EXPECT_EQ(status, E_OUTOFMEMORY);
    EXPECT_EQ(out, nullptr);
    StopModule(Ending::OfProcess);
}

// What `make` leaves when the object that it makes first is refused.
template <class Make> PublishedError ErrorWithoutMemory(Make&& make)
{
    ClearError();
    refuse = true;
    EXPECT_EQ(std::forward<Make>(make)(), E_OUTOFMEMORY);
    return TakeError().value_or(PublishedError{});
}

TEST(NoMemory, MakesNoItemOfAnAddress)
{
    ComPtr<IFileSystem> system;
    ASSERT_EQ(MakeInstance<GITFileSystemObject>(nullptr, IID_IFileSystem, system.OutVoid()), S_OK);
    auto* file = reinterpret_cast<IFile*>(1);
    const PublishedError error =
        ErrorWithoutMemory([&] { return system->GetFile(u"git:///a", VARIANT_FALSE, &file); });
    EXPECT_EQ(WithoutLine(error.text), NoObject() + u" [interfaceimpl@N]");
    EXPECT_TRUE(error.interfaceId == IID_IFileSystem);
    EXPECT_EQ(file, nullptr);
}

// Of what a client printed; the file that it printed into goes.
TEST(NoMemory, MakesNothingOfADepot)
{
    PerforceDepot depot;
    depot.Submit("a.txt", "1");
    const TempFolder temporary;
    const EnvironmentValue variable("TMPDIR", temporary.Path().c_str());
    ComPtr<IFileSystem> system;
    ComPtr<IFolder> folder;
    ComPtr<IFile> file;
    ComPtr<IFolderContents> contents;
    ASSERT_EQ(MakeInstance<P4FileSystemObject>(nullptr, IID_IFileSystem, system.OutVoid()), S_OK);
    ASSERT_EQ(system->GetFolder(Wide(depot.Address()), VARIANT_FALSE, folder.Out()), S_OK);
    ASSERT_EQ(system->GetFile(Wide(depot.Address("a.txt")), VARIANT_FALSE, file.Out()), S_OK);
    ASSERT_EQ(folder->GetContents(contents.Out()), S_OK);
    auto* noContents = reinterpret_cast<IFolderContents*>(1);
    auto* noItem = reinterpret_cast<IFileSystemItem*>(1);
    auto* noStream = reinterpret_cast<IFileStream*>(1);
    EXPECT_EQ(
        WithoutLine(ErrorWithoutMemory([&] { return folder->GetContents(&noContents); }).text),
        NoObject() + u" [interfaceimpl@N]");
    EXPECT_EQ(WithoutLine(ErrorWithoutMemory([&] { return contents->GetItem(0, &noItem); }).text),
              NoObject() + u" [interfaceimpl@N]");
    EXPECT_EQ(WithoutLine(ErrorWithoutMemory([&] {
                              return file->Open(GENERIC_READ, OPEN_EXISTING, &noStream);
                          }).text),
              NoObject() + u" [p4objects@N]");
    EXPECT_EQ(noContents, nullptr);
    EXPECT_EQ(noItem, nullptr);
    EXPECT_EQ(noStream, nullptr);
    EXPECT_TRUE(std::filesystem::is_empty(temporary.Path()));
}

TEST(NoMemory, MakesNoRevisions)
{
    ComPtr<IFileSystemRevisions> system;
    ASSERT_EQ(
        MakeInstance<GITFileSystemObject>(nullptr, IID_IFileSystemRevisions, system.OutVoid()),
        S_OK);
    auto* revisions = reinterpret_cast<IRevisions*>(1);
    const TempFolder folder; // which has no history, so that no client is run
    const PublishedError error = ErrorWithoutMemory(
        [&] { return system->GetRevisions(Wide(folder.Text()), 0, &revisions); });
    EXPECT_EQ(error.text, NoObject()) << "no position in the source";
    EXPECT_TRUE(error.interfaceId == IID_IFileSystemRevisions);
    EXPECT_EQ(revisions, nullptr);
}

TEST(NoMemory, MakesNoRevision)
{
    ComPtr<IRevisions> revisions;
    ASSERT_EQ(MakeRevisions(std::vector<RevisionRecord>(1), CLSID_GITFileSystem, revisions.Out()),
              S_OK);
    auto* revision = reinterpret_cast<IRevision*>(1);
    const PublishedError error =
        ErrorWithoutMemory([&] { return revisions->GetItem(0, &revision); });
    EXPECT_EQ(error.text, NoObject());
    EXPECT_TRUE(error.interfaceId == IID_IRevisions);
    EXPECT_EQ(revision, nullptr);
}

TEST(NoMemory, GivesNoText)
{
    ComPtr<IFileSystem> system;
    ComPtr<IFile> file;
    ComPtr<IRevisions> revisions;
    ComPtr<IRevision> revision;
    ASSERT_EQ(MakeInstance<GITFileSystemObject>(nullptr, IID_IFileSystem, system.OutVoid()), S_OK);
    ASSERT_EQ(system->GetFile(u"git:///a", VARIANT_FALSE, file.Out()), S_OK);
    ASSERT_EQ(MakeRevisions(std::vector<RevisionRecord>(1), CLSID_GITFileSystem, revisions.Out()),
              S_OK);
    ASSERT_EQ(revisions->GetItem(0, revision.Out()), S_OK);
    const auto item = file.As<IFileSystemItem>();
    const auto comparable = file.As<IFileSystemItemComparableUrl>();
    const std::function<HRESULT(BSTR*)> getters[] = {
        [&](BSTR* out) { return item->GetName(out); },
        [&](BSTR* out) { return item->GetPath(out); },
        [&](BSTR* out) { return item->GetParentPath(out); },
        [&](BSTR* out) { return comparable->GetComparableName(out); },
        [&](BSTR* out) { return comparable->GetComparableUrl(out); },
        [&](BSTR* out) { return system->CombinePath(u"a", u"b", out); },
        [&](BSTR* out) { return revision->GetRevisionId(out); },
        [&](BSTR* out) { return revision->GetDescription(out); },
        [&](BSTR* out) { return revision->GetAuthor(out); },
        [&](BSTR* out) { return revision->GetUri(out); },
    };
    for (const auto& get : getters)
    {
        Faults faults;
        faults.Fail("SysAllocStringLen", 1, ERROR_NOT_ENOUGH_MEMORY);
        auto text = reinterpret_cast<BSTR>(1);
        EXPECT_EQ(get(&text), E_OUTOFMEMORY);
        EXPECT_EQ(text, nullptr);
        EXPECT_EQ(faults.Failures(), 1);
    }
}

TEST(NoMemory, CopiesNothingThroughStreams)
{
    const Local local;
    FakeProgress progress;
    refuseBuffers = true;
    const HRESULT status = CopyThroughStreams(*local.system.Get(), local.Path(u"a.txt"),
                                              local.Path(u"copy"), &progress);
    refuseBuffers = false;
    EXPECT_EQ(status, E_OUTOFMEMORY);
    EXPECT_EQ(progress.Questions(), 0);
}

TEST(NoMemory, ForTheAnswerOfAFileServerMakesNoSnapshots)
{
    const SnapshotShare share;
    SnapshotServer server;
    server.Hold({u"@GMT-2024.05.01-10.30.00"});
    server.start = {SnapshotServer::Header(1, 0, 0xFFFFFFEF)};
    server.onCall = [](const SnapshotServer::Call&) {
        refuse = true;
    };
    const std::size_t count = ListSnapshots(u"C:\\a").size();
    refuse = false;
    EXPECT_EQ(count, 0U);
    EXPECT_EQ(server.calls.size(), 1U) << "there is no second question";
}

} // namespace
} // namespace tarnwell::test
