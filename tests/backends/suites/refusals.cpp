// What a file system can't do it refuses in its own words, and asks nobody for it.
#include "backends/suites/backendtest.h"
#include "support/environmentvalue.h"

#include <limits>

namespace tarnwell::test
{
namespace
{

using testing::IsEmpty;

std::u16string Text(const Outcome& outcome)
{
    return outcome.error ? WithLineFeeds(outcome.error->text) : u"(none)";
}

MATCHER_P(Begins, start, "")
{
    return arg.starts_with(std::u16string_view(start));
}

class Refusals : public BackendTest
{
};

TEST_P(Refusals, OfAddressesThatAreOthers)
{
    for (const RefusedAddress& row : Row().refused)
    {
        const std::u16string address(row.address);
        ComPtr<IFile> file;
        ComPtr<IFolder> folder;
        const Outcome outcome =
            OutcomeOf([&] { return system->GetFile(Ole(address), VARIANT_FALSE, file.Out()); });
        EXPECT_EQ(outcome.status, E_INVALIDARG);
        EXPECT_THAT(Text(outcome), Begins(row.message));
        if (Row().folders)
        {
            EXPECT_EQ(system->GetFolder(Ole(address), VARIANT_FALSE, folder.Out()), E_INVALIDARG);
        }
    }
}

TEST_P(Refusals, OfWaysToOpen)
{
    std::vector<std::pair<std::uint32_t, std::uint32_t>> ways = {
        {readAccess | writeAccess, openExisting},
        {readAccess, openAlways},
        {readAccess, createAlways},
        {0, openExisting},
        {0, 0}};
    if (!Row().writes)
        ways.emplace_back(writeAccess, openExisting);
    const std::u16string address = Address(u"text.txt");
    const auto file = File(address);
    for (const auto& way : ways)
    {
        ComPtr<IFileStream> stream;
        const Outcome outcome =
            OutcomeOf([&] { return file->Open(way.first, way.second, stream.Out()); });
        EXPECT_EQ(outcome.status, E_INVALIDARG);
        EXPECT_EQ(WithoutLine(Text(outcome)),
                  u"Failed to open \"" + address + u"\" for reading or writing." + Position());
    }
}

TEST_P(Refusals, OfAttributesAndTemporaryFiles)
{
    const auto item = File(Address(u"text.txt")).As<IFileSystemItem>();
    EXPECT_THAT(OutcomeOf([&] { return item->SetAttributes(0); }), FailedBare(E_NOTIMPL));
    Bstr path;
    for (BSTR* const out : {path.Out(), static_cast<BSTR*>(nullptr)})
        EXPECT_THAT(OutcomeOf([&] { return system->CreateTempFile(Ole(Address({})), out); }),
                    FailedBare(E_NOTIMPL));
}

class ReadOnly : public BackendTest
{
protected:
    template <class Call> static void ExpectRefused(Call&& call)
    {
        EXPECT_THAT(OutcomeOf(std::forward<Call>(call)), FailedBare(E_NOTIMPL));
    }
};

// Nor is anybody asked, as a client that isn't there would show.
TEST_P(ReadOnly, NothingIsEverWritten)
{
    const EnvironmentValue path("PATH", "nowhere");
    const std::u16string address = Address(u"text.txt");
    if (Row().folders)
    {
        const auto folder = Folder(Address(u"sub"));
        ExpectRefused([&] { return folder->Create(VARIANT_TRUE); });
        ExpectRefused(
            [&] { return folder.As<IFileSystemItem>()->Delete(VARIANT_TRUE, VARIANT_TRUE); });
    }
    const auto file = File(address).As<IFileSystemItem>();
    ExpectRefused([&] { return file->Delete(VARIANT_TRUE, VARIANT_FALSE); });
    ExpectRefused([&] { return system->CopyItem(Ole(address), Ole(Address(u"copy")), nullptr); });
    ExpectRefused([&] { return system->DeleteItems(nullptr, VARIANT_TRUE, VARIANT_FALSE); });
}

class WithoutFolders : public BackendTest
{
};

TEST_P(WithoutFolders, TellsNoFacts)
{
    ComPtr<IFolder> folder;
    const Outcome outcome = OutcomeOf(
        [&] { return system->GetFolder(Ole(Address(u"sub")), VARIANT_FALSE, folder.Out()); });
    EXPECT_EQ(outcome.status, E_NOTIMPL);
    EXPECT_THAT(Text(outcome), Begins(u"Failed to create a support object. "));
    const auto file = File(Address(u"text.txt"));
    std::uint32_t number = 0;
    std::uint64_t time = 0;
    EXPECT_EQ(file.As<IFileSystemItem>()->GetAttributes(&number), E_NOTIMPL);
    EXPECT_EQ(file.As<IFileSystemItem>()->GetModifiedTime(&time), E_NOTIMPL);
    EXPECT_EQ(file->GetSizeLow(&number), E_NOTIMPL);
    EXPECT_EQ(file->GetSizeHigh(&number), E_NOTIMPL);
    ComPtr<IFile> looked;
    EXPECT_EQ(system->GetFile(Ole(Address(u"text.txt")), VARIANT_TRUE, looked.Out()), E_NOTIMPL);
}

class MissingClient : public BackendTest
{
};

TEST_P(MissingClient, IsNamed)
{
    const EnvironmentValue path("PATH", "nowhere");
    std::vector<Outcome> outcomes = {FailedOpen(Address(u"text.txt"))};
    if (Row().folders)
        outcomes.push_back(FailedList(Address(u"sub")));
    for (const Outcome& outcome : outcomes)
        EXPECT_THAT(outcome, Failed(Win32Status(2), std::u16string(Row().clientMissing)));
    if (Row().revisions)
    {
        EXPECT_FALSE(HasRevisions(Address(u"text.txt")));
        EXPECT_THAT(Revisions(Address(u"text.txt")), IsEmpty());
    }
}

class Credentials : public BackendTest
{
protected:
    // How a listing fails where there is no answer.
    void ExpectFailure() const
    {
        const Outcome outcome = FailedList(std::u16string(Row().guarded));
        if (Row().credentialsKind == 1)
            return;
        EXPECT_EQ(outcome.status, E_ACCESSDENIED);
        EXPECT_THAT(Text(outcome), Begins(u"User name and password credentials might be"));
    }
};

TEST_P(Credentials, AreAskedForAndMissed)
{
    host_->credentials.status = E_FAIL;
    ExpectFailure();
    const std::u16string kind = Row().credentialsKind == 1 ? u"1" : u"0";
    const auto calls = host_->Calls();
    ASSERT_GE(calls.size(), 2U);
    EXPECT_EQ(calls[0], u"GetCredentials|" + kind + u"|127.0.0.1|");
    EXPECT_EQ(calls[1], u"ReportMissingCredentials|" + kind + u"|127.0.0.1|");
    EXPECT_TRUE(!Row().revisions || !HasRevisions(std::u16string(Row().guarded)))
        << "where all failures are hidden";
}

TEST_P(Credentials, AreNotThereWithoutAHost)
{
    host_->hasCredentials = false;
    ExpectFailure();
    EXPECT_THAT(host_->Calls(), IsEmpty());
    system.As<IFileSystemInit>()->SetHost(nullptr);
    ExpectFailure();
}

// ---- What every system answers, able or not ----

class Abilities : public BackendTest
{
protected:
    std::u16string Combined(const std::u16string& base, const std::u16string& relative) const
    {
        Bstr result;
        EXPECT_EQ(system->CombinePath(Ole(base), Ole(relative), result.Out()), S_OK);
        return std::u16string(result.View());
    }
};

TEST_P(Abilities, AreOfferedByKind)
{
    const std::uint32_t files = IsLocal() ? 7 : 5;
    for (const auto& [kind, expected] : {std::pair{0U, files},
                                         {1U, files},
                                         {2U, 65535U},
                                         {std::numeric_limits<std::uint32_t>::max(), 65535U}})
    {
        std::uint32_t mask = 1;
        EXPECT_EQ(system->GetOperationMask(kind, host_->Unknown(), &mask), S_OK);
        EXPECT_EQ(mask, expected) << kind;
        EXPECT_EQ(system->GetOperationMask(kind, nullptr, &mask), S_OK);
        EXPECT_EQ(mask, expected) << kind;
    }
    EXPECT_EQ(host_->References(), 2U);
}

TEST_P(Abilities, PathsAreCombinedAsText)
{
    const std::u16string own = IsLocal() ? separator : u"/";
    EXPECT_EQ(Combined(u"a", u"b"), u"a" + own + u"b");
    EXPECT_EQ(Combined(u"a", u""), u"a" + own);
    EXPECT_EQ(Combined(u"a/", u"b"), u"a/b");
    EXPECT_EQ(Combined(u"/", u"b"), u"/b");
    EXPECT_EQ(Combined(u"x://h", u"b"), u"x://h" + own + u"b");
    EXPECT_EQ(Combined(u"no address\n/", u"b"), u"no address\n/b") << "nothing is parsed";
    // Locally nothing is looked into.
    EXPECT_EQ(Combined(u"a", u"/b"), IsLocal() ? u"a" + own + u"/b" : u"a/b");
    EXPECT_EQ(Combined(u"a", u"//b"), IsLocal() ? u"a" + own + u"//b" : u"a//b");
    EXPECT_EQ(Combined(u"a//", u"/b"), IsLocal() ? u"a///b" : u"a//b");
    EXPECT_TRUE(IsLocal() || Combined(u"a\\", u"\\b") == u"a\\/\\b");
    EXPECT_EQ(Combined(u"", u"b"), IsLocal() ? u"b" : u"/b");
    Bstr result;
    EXPECT_EQ(system->CombinePath(nullptr, nullptr, result.Out()), S_OK);
    ASSERT_TRUE(result);
    EXPECT_EQ(result.View(), IsLocal() ? u"" : u"/");
}

bool IsAddressed(const Backend& backend)
{
    return backend.family == Family::Addressed;
}

TARNWELL_OVER_BACKENDS(Refusals, BackendsThat(IsAddressed));
TARNWELL_OVER_BACKENDS(ReadOnly, BackendsThat([](const Backend& b) { return !b.writes; }));
TARNWELL_OVER_BACKENDS(WithoutFolders, BackendsThat([](const Backend& b) { return !b.folders; }));
TARNWELL_OVER_BACKENDS(MissingClient,
                       BackendsThat([](const Backend& b) { return !b.clientMissing.empty(); }));
TARNWELL_OVER_BACKENDS(Credentials,
                       BackendsThat([](const Backend& b) { return !b.guarded.empty(); }));
TARNWELL_OVER_BACKENDS(Abilities, Backends());

} // namespace
} // namespace tarnwell::test
